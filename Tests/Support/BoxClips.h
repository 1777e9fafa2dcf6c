#pragma once

#include "Records/NormalizedRect.h"
#include "Support/Media.h"

/// Clips of a gray picture with white boxes that stand for text, exact to the frame and the pixel.
namespace vantroque::BoxClips {

/// A box that is seen from frame `first` to frame `last`.
struct Box {
    NormalizedRect place;
    int first = 0;
    int last = 0;
};

struct Clip {
    std::string name;
    std::vector<Box> boxes;
    std::string rate = "25";
    int frames = 100;
    int width = 160;
    int height = 90;
};

/// Lossless, or nearly so, as the name's extension can hold it.
inline std::vector<std::string> encoder(const std::filesystem::path& name)
{
    if (name.extension() == ".mkv")
        return {"-c:v", "ffv1"};
    if (name.extension() == ".mov")
        return {"-c:v", "prores_ks", "-profile:v", "2", "-pix_fmt", "yuv422p10le"};
    return {"-c:v", "libx264", "-preset", "ultrafast", "-qp", "0", "-pix_fmt", "yuv420p"};
}

inline std::filesystem::path make(const Clip& clip)
{
    using Media::operator+;
    const auto pixels = [](double fraction, int size) {
        return std::to_string(static_cast<int>(fraction * size + 0.5));
    };
    std::string graph = "color=gray:s=" + std::to_string(clip.width) + "x"
                        + std::to_string(clip.height) + ":r=" + clip.rate;
    for (const Box& box : clip.boxes)
        graph += ",drawbox=x=" + pixels(box.place.x, clip.width) + ":y="
                 + pixels(box.place.y, clip.height) + ":w=" + pixels(box.place.width, clip.width)
                 + ":h=" + pixels(box.place.height, clip.height)
                 + ":color=white:t=fill:enable='between(n," + std::to_string(box.first) + ","
                 + std::to_string(box.last) + ")'";
    return Media::make({clip.name, std::vector<std::string>{"-f", "lavfi", "-i", graph, "-frames:v",
                                                            std::to_string(clip.frames)}
                                       + encoder(clip.name)});
}

/// A box in the middle of the picture.
constexpr NormalizedRect middle{0.25, 0.4, 0.5, 0.2};

/// It stands in frames 30 to 90 of a hundred.
inline std::filesystem::path titled(const std::string& name = "titled.mkv",
                                    const std::string& rate = "25")
{
    return make({name, {{middle, 30, 90}}, rate});
}

} // namespace vantroque::BoxClips

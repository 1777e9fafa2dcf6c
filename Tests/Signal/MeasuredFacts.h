#pragma once

#include "Base/Json.h"
#include "Probe/Probed.h"
#include "Signal/SignalAnalyzer.h"
#include "Support/Media.h"

// Exact clips, and what the decode measures of them. ffmpeg 5.1 is not what its manual says in many
// small ways; the tests that include this hold what was found against real files.

namespace vantroque {

inline void PrintTo(const SignalInfo& info, std::ostream* out)
{
    const auto text = Json::write(info);
    *out << (text ? *text : text.error().description.toUtf8()).toStdString();
}

inline void PrintTo(const CropRect& rectangle, std::ostream* out)
{
    *out << rectangle.width << 'x' << rectangle.height << " at " << rectangle.x << ", "
         << rectangle.y;
}

/// What the decode measures of a file; throws its words when it fails.
inline SignalInfo measured(const std::filesystem::path& file,
                           const SignalAnalyzer::Options& options = {})
{
    const MediaInfo media = probed(file);
    auto info = SignalAnalyzer::analyze(media.url, media, options, nullptr);
    if (!info)
        throw std::runtime_error(info.error().description().toStdString());
    return *std::move(info);
}

/// A lossless clip in Matroska of what a filter graph draws; an empty format keeps the graph's own.
inline std::filesystem::path drawn(const std::string& name, const std::string& graph,
                                   const std::string& pixelFormat = "yuv420p",
                                   const std::vector<std::string>& more = {})
{
    using Media::operator+;
    return Media::make({name + ".mkv", std::vector<std::string>{"-f", "lavfi", "-i", graph, "-c:v",
                                                                "ffv1", "-pix_fmt", pixelFormat}
                                           + more});
}

/// Linear sound of an expression of the time t, 16 bits at 48 kHz.
inline std::filesystem::path sounding(const std::string& name, const std::string& expressions,
                                      const std::string& seconds)
{
    return Media::make(
        {name + ".wav",
         {"-f", "lavfi", "-i", "aevalsrc=exprs='" + expressions + "':s=48000:d=" + seconds, "-c:a",
          "pcm_s16le"}});
}

} // namespace vantroque

#include "Signal/SparseSample.h"

#include "Base/Numbers.h"

#include <algorithm>

namespace vantroque::SparseSample {

using Numbers::wholeText;

namespace {

/// cropdetect passes over the first two frames of all.
constexpr int framesAtEachPlace = 3;
constexpr int mostPlaces = 12;

/// The head, which is there whatever the header claims of the duration, then places spread over the
/// file.
std::vector<double> places(double duration)
{
    const auto count = static_cast<int>(
        std::clamp<std::int64_t>(Numbers::truncatedToInt(duration), 1, mostPlaces));
    std::vector<double> seconds{0};
    for (int i = 1; i < count; ++i)
        seconds.push_back(duration * (i + 0.5) / count);
    return seconds;
}

/// All places behind each other, then the bars and the bits side by side.
std::string graph(const VideoStreamInfo& video, std::size_t count, bool withBits)
{
    std::string chains;
    std::string labels;
    for (int i = 0; i < static_cast<int>(count); ++i) {
        const std::string label = "[p" + wholeText(i) + "]";
        chains += "[" + wholeText(i) + ":" + video.specifier()
                  + "]trim=end_frame=" + wholeText(framesAtEachPlace) + ",setsar=1" + label + ";";
        labels += label;
    }
    // The limit is a share of the range, which holds at any depth: 24 of 255.
    const std::string crop = "cropdetect=limit=0.0941176:round=2:reset=0[cropout]";
    const std::string joined = chains + labels + "concat=n=" + wholeText(static_cast<int>(count));
    if (!withBits)
        return joined + "," + crop;
    return joined + ",split=2[crop][bits];[crop]" + crop
           + ";[bits]extractplanes=y,scale=64:36:flags=neighbor:in_range=full:out_range=full,"
             "format="
           + (video.bitDepth.value_or(8) < 11 ? "gray10le" : "gray12le") + "[bitsout]";
}

} // namespace

std::vector<std::string> arguments(const MediaInfo& media, bool withBits)
{
    std::vector<std::string> list{"-hide_banner", "-nostats", "-y"};
    const auto seconds = places(media.durationSeconds);
    for (const double place : seconds) {
        if (media.video->rotation)
            list.emplace_back("-noautorotate");
        list.insert(list.end(), {"-ss", Numbers::fixed(place, 3).toStdString(), "-t", "1", "-i",
                                 media.url.path().native()});
    }
    list.insert(list.end(), {"-filter_complex", graph(*media.video, seconds.size(), withBits)});
    if (withBits)
        list.insert(list.end(), {"-map", "[bitsout]", "-f", "rawvideo", "pipe:1"});
    list.insert(list.end(), {"-map", "[cropout]", "-f", "null", "-"});
    return list;
}

Result<std::optional<Output>, FFToolError> take(const std::filesystem::path& ffmpeg,
                                                const MediaInfo& media)
{
    for (const bool withBits : {true, false}) {
        auto ran = FFTool::run(ffmpeg, arguments(media, withBits));
        if (ran)
            return Output{std::move(ran->stderr), std::move(ran->stdout)};
        if (ran.error().isShortage())
            return tl::unexpected(std::move(ran.error()));
    }
    return std::nullopt;
}

} // namespace vantroque::SparseSample

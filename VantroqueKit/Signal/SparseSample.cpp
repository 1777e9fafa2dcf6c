#include "Signal/SparseSample.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Signal/SignalLog.h"
#include "Tools/FFmpegCall.h"

#include <algorithm>

namespace vantroque::SparseSample {

using Numbers::wholeText;

namespace {

constexpr int framesAtEachPlace = 3;
constexpr int mostPlaces = 12;
/// Each thread of a decoder holds pictures of its own.
constexpr int decodingThreads = 4;

/// The bars, and the bits beside them.
std::string graph(const VideoStreamInfo& video, bool withBits)
{
    const std::string input =
        "[0:" + video.specifier() + "]trim=end_frame=" + wholeText(framesAtEachPlace);
    // The limit is a share of the range, which holds at any depth: 24 of 255.
    const std::string crop = "cropdetect=limit=0.0941176:round=2:reset=0:skip=0[cropout]";
    if (!withBits)
        return input + "," + crop;
    return input + ",split=2[crop][bits];[crop]" + crop
           + ";[bits]format=" + video.formatWithoutAlpha().toStdString()
           + ",extractplanes=y,scale=64:36:flags=neighbor:in_range=full:out_range=full,format="
           + (video.sampleBits() < 11 ? "gray10le" : "gray12le") + "[bitsout]";
}

/// The picture as all places so far show it: a dark scene shows less of it. The size that was found
/// at most places counts.
class Votes {
public:
    void add(const CropRect& found)
    {
        m_seen = m_seen ? united(*m_seen, found) : found;
        const auto known = std::ranges::find(m_counts, *m_seen, &Count::picture);
        if (known == m_counts.end())
            m_counts.push_back({*m_seen, 1});
        else
            ++known->places;
    }

    std::optional<CropRect> winner() const
    {
        const auto most = std::ranges::max_element(m_counts, {}, &Count::places);
        return most == m_counts.end() ? std::nullopt : std::optional(most->picture);
    }

private:
    struct Count {
        CropRect picture;
        int places = 0;
    };

    static CropRect united(const CropRect& a, const CropRect& b)
    {
        const int x = std::min(a.x, b.x);
        const int y = std::min(a.y, b.y);
        return {std::max(a.x + a.width, b.x + b.width) - x,
                std::max(a.y + a.height, b.y + b.height) - y, x, y};
    }

    std::optional<CropRect> m_seen;
    std::vector<Count> m_counts;
};

} // namespace

std::vector<double> places(double duration)
{
    const auto count = static_cast<int>(
        std::clamp<std::int64_t>(Numbers::truncatedToInt(duration), 1, mostPlaces));
    std::vector<double> seconds{0};
    for (int i = 1; i < count; ++i)
        seconds.push_back(duration * (i + 0.5) / count);
    return seconds;
}

std::vector<std::string> arguments(const MediaInfo& media, double place, bool withBits)
{
    FFmpegCall call(FFmpegCall::Log::filters);
    call.overwriting().asStored(*media.video).add({"-threads", wholeText(decodingThreads)});
    call.from(place, 3).lasting(1, 0).input(media.url);
    call.add({"-filter_complex", graph(*media.video, withBits)});
    if (withBits)
        call.add({"-map", "[bitsout]", "-f", "rawvideo", "pipe:1"});
    return call.add({"-map", "[cropout]"}).nowhere().words();
}

Result<std::optional<Output>, FFToolError> take(const std::filesystem::path& ffmpeg,
                                                const MediaInfo& media)
{
    std::optional<Output> sample;
    Votes votes;
    bool withBits = !media.video->isRgb();
    const FFTool::RunOptions options{.reads = {media.url.path()}};
    for (const double place : places(media.durationSeconds)) {
        auto ran = FFTool::run(ffmpeg, arguments(media, place, withBits), options);
        // Where it cannot take a plane of luma out, ffmpeg refuses the whole graph.
        if (!ran && !ran.error().isShortage() && withBits && !sample) {
            withBits = false;
            ran = FFTool::run(ffmpeg, arguments(media, place, withBits), options);
        }
        if (!ran && ran.error().isShortage())
            return tl::unexpected(std::move(ran.error()));
        if (!ran)
            continue;
        if (!sample)
            sample.emplace();
        sample->bits += ran->output;
        if (const auto picture = SignalLog(Text::view(ran->words)).activePicture())
            votes.add(*picture);
    }
    if (sample)
        sample->activePicture = votes.winner();
    return sample;
}

} // namespace vantroque::SparseSample

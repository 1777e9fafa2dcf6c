#include "Base/Numbers.h"
#include "Signal/AudioTracks.h"
#include "Signal/LogHeaders.h"
#include "Signal/SignalAnalyzer.h"
#include "Signal/SignalMatches.h"
#include "Tools/FFmpegCall.h"

#include <algorithm>

namespace vantroque::SignalAnalyzer {

using namespace Qt::StringLiterals;

namespace {

/// Of several streams ffmpeg would take the one with most channels.
std::vector<std::string> filtered(const std::optional<AudioStreamInfo>& audio,
                                  const std::string& filters)
{
    if (!audio || !audio->tracks)
        return {"-af", filters};
    return {"-filter_complex",
            AudioTracks::source(*audio, audio->trackGroups().front()) + filters + "[pop]", "-map",
            "[pop]"};
}

/// What ffmpeg prints about the passage, standard output first.
std::optional<QString> printed(const FileUrl& url, double start, double duration,
                               const std::optional<AudioStreamInfo>& audio,
                               const std::string& spectrum)
{
    const auto ffmpeg = FFTool::find("ffmpeg");
    if (!ffmpeg)
        return std::nullopt;
    FFmpegCall call(FFmpegCall::Log::filters);
    call.from(std::max(start, 0.0), 3).lasting(duration, 3).input(url);
    call.add(filtered(audio, "volumedetect," + spectrum + ",ametadata=mode=print:file=-"));
    const auto ran =
        FFTool::run(*ffmpeg, call.nowhere().words(), {.reads = {url.path()}, .allowFailure = true});
    if (!ran)
        return std::nullopt;
    return QString::fromUtf8(ran->output) + QString::fromUtf8(LogHeaders::without(ran->words));
}

} // namespace

Pop measurePop(const FileUrl& url, double start, double duration,
               const std::optional<AudioStreamInfo>& audio)
{
    auto text = printed(url, start, duration, audio, "aspectralstats=measure=centroid");
    // Before version 6 the filter measures everything and takes no choice.
    if (text && text->contains(u"Error initializing filter 'aspectralstats'"_s))
        text = printed(url, start, duration, audio, "aspectralstats");
    if (!text)
        return {};
    Pop pop;
    for (const QStringList& groups : matches(uR"(centroid=([\d.]+))"_s, *text))
        if (const auto hertz = Numbers::toDouble(groups.value(0)))
            pop.centroidHz = std::min(pop.centroidHz.value_or(*hertz), *hertz);
    if (const auto peak = firstMatch(uR"(max_volume:\s*(-?[\d.]+) dB)"_s, *text))
        pop.peakDb = Numbers::toDouble(*peak);
    return pop;
}

} // namespace vantroque::SignalAnalyzer

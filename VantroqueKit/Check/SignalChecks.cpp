#include "Check/SignalChecks.h"

#include "Base/Numbers.h"
#include "Signal/ChannelAnalyzer.h"

#include <algorithm>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

QString seconds(double value)
{
    return Numbers::fixed(value, Numbers::below(value, 10) ? 1 : 0) + u" s"_s;
}

QString channelRemark(const AudioStreamInfo& audio)
{
    if (audio.isPair())
        return trackRemark(audio);
    return ChannelNames::areAssumed(audio.channelLayout, audio.channels) ? u", order assumed"_s
                                                                         : QString();
}

QString trackRemark(const AudioStreamInfo& audio)
{
    return audio.isPair() ? u", tracks 1 and 2"_s : QString();
}

QString matrixName(ColorMatrix matrix)
{
    switch (matrix) {
    case ColorMatrix::bt709: return u"Rec.709"_s;
    case ColorMatrix::bt601: return u"Rec.601"_s;
    case ColorMatrix::bt2020: return u"Rec.2020"_s;
    }
    return {};
}

double length(const LevelRun& run)
{
    return std::max(run.end - run.start, 0.0);
}

std::optional<std::int64_t> lastFrame(const MediaInfo& media)
{
    if (!media.video)
        return std::nullopt;
    const bool isSeen = media.signal && media.signal->cadence;
    const std::int64_t count =
        isSeen ? media.signal->cadence->frameCountSeen : media.video->frameCount.value_or(0);
    return count > 0 ? std::optional(count - 1) : std::nullopt;
}

FrameRate countingRate(const MediaInfo& media)
{
    return FrameRate::of(media.video ? media.video->nominalFrameRate : 0)
        .value_or(FrameRate::film());
}

} // namespace vantroque::SignalChecks

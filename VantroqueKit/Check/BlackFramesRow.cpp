#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/SignalChecks.h"

#include <algorithm>
#include <iterator>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;
using Checker::firstOf;

std::vector<TimeSpan> blackAfterLeader(const FrameCadence& cadence, double leaderEnd)
{
    std::vector<TimeSpan> runs = cadence.interiorBlackRuns;
    if (leaderEnd > 0)
        std::erase_if(
            runs, [&](const TimeSpan& run) { return !Numbers::above(run.end, leaderEnd + 0.5); });
    return runs;
}

bool isGap(const TimeSpan& black, FrameRate rate)
{
    return !Numbers::above(black.end - black.start, 3.5 / rate.perSecond());
}

std::int64_t framesIn(const TimeSpan& span, FrameRate rate)
{
    return std::max<std::int64_t>(rate.frameAt(span.duration()), 1);
}

std::optional<CheckResult> blackFramesRow(const MediaInfo& media, double leaderEnd)
{
    if (!media.video || !media.signal || !media.signal->cadence)
        return std::nullopt;
    const CheckRow row{u"black-frames"_s, u"Black frames"_s,
                       u"no black frames inside the picture"_s};
    const FrameRate rate = countingRate(media);
    const auto at = [&](const TimeSpan& run) {
        return Timecode::fromSeconds(run.start, rate).text();
    };

    const auto runs = blackAfterLeader(*media.signal->cadence, leaderEnd);
    if (runs.empty())
        return row.pass(u"none inside the picture"_s);
    std::vector<TimeSpan> gaps;
    std::ranges::copy_if(runs, std::back_inserter(gaps),
                         [&](const TimeSpan& run) { return isGap(run, rate); });
    if (gaps.empty())
        return row.info(u"dips to black at "_s
                        + firstOf(runs, 3, std::ssize(runs), [&](const TimeSpan& dip) {
                              return u"%1 for %2"_s.arg(at(dip), seconds(dip.duration()));
                          }));
    const auto gapText = [&](const TimeSpan& gap) {
        const std::int64_t frames = framesIn(gap, rate);
        return u"%1 frame%2 at %3"_s.arg(QString::number(frames), Text::plural(frames), at(gap));
    };
    return row.warn(firstOf(gaps, 4, std::ssize(gaps), gapText),
                    u"A frame or two of black between shots is a gap on the timeline or a missing "
                    u"media frame. Step to each and close it."_s);
}

} // namespace vantroque::SignalChecks

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/Checker.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

QString givenSeconds(double limit)
{
    return Numbers::given(limit, 0);
}

/// A booked length is whole seconds, at the whole rate that a timecode counts in.
CheckResult frameAccuracyRow(std::int64_t frames, std::int64_t perSecond)
{
    const CheckRow row{u"frame-accuracy"_s, u"Frame accuracy"_s, u"a whole number of seconds"_s};
    const QString count = QString::number(frames);
    const QString whole = QString::number(frames / perSecond);
    const std::int64_t extra = frames % perSecond;
    if (extra == 0)
        return row.pass(u"exactly %1 s (%2 frames)"_s.arg(whole, count));
    return row
        .expecting(u"a whole number of seconds (%1 frames per second at this rate)"_s.arg(
            QString::number(perSecond)))
        .fail(u"%1 frames = %2 s + %3 extra frame%4"_s.arg(count, whole, QString::number(extra),
                                                           Text::plural(extra)),
              u"Trim %1 frame%2 (or add %3) so the spot is frame-accurate to its booked length."_s
                  .arg(QString::number(extra), Text::plural(extra),
                       QString::number(perSecond - extra)));
}

} // namespace

void checkDuration(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.duration)
        return;
    const DurationRule& rule = *profile.duration;
    const double length = media.durationSeconds;
    const QString measured = Numbers::fixed(length, 2) + u" s"_s;
    const CheckRow row{u"duration"_s, u"Duration"_s, {}};
    if (rule.minSeconds && Numbers::below(length, *rule.minSeconds))
        rows.push_back(
            row.expecting(u"≥ %1 s"_s.arg(givenSeconds(*rule.minSeconds))).fail(measured));
    if (rule.maxSeconds && Numbers::above(length, *rule.maxSeconds)) {
        const QString limit = givenSeconds(*rule.maxSeconds);
        rows.push_back(row.expecting(u"≤ %1 s"_s.arg(limit))
                           .fail(measured, u"Trim to %1 seconds or shorter."_s.arg(limit)));
    }
    const auto& video = media.video;
    if (rule.frameAccurateSeconds.value_or(false) && video && !video->isVFR
        && video->nominalFrameRate > 1.0 && video->frameCount)
        rows.push_back(
            frameAccuracyRow(*video->frameCount, Numbers::roundedToInt(video->nominalFrameRate)));
}

} // namespace vantroque::Checker

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/Checker.h"

#include <algorithm>
#include <cmath>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

QString givenSeconds(double limit)
{
    return Numbers::given(limit, 0);
}

/// Whole seconds by the count of drop-frame time code.
struct DropFrameSeconds {
    std::int64_t seconds = 0;
    std::int64_t frames = 0;       ///< That make up these seconds.
    std::int64_t framesToNext = 0; ///< That lack for one second more.
};

/// Drop-frame time code leaves out two labels, at 59.94 four, in each minute but every tenth (SMPTE
/// ST 12-1).
std::int64_t framesOf(std::int64_t seconds, std::int64_t perSecond)
{
    const std::int64_t minutes = seconds / 60;
    return seconds * perSecond - perSecond / 15 * (minutes - minutes / 10);
}

/// The most that fit into so many frames; nothing at rates without drop-frame time code.
std::optional<DropFrameSeconds> dropFrameSeconds(std::int64_t frames, double rate)
{
    const std::int64_t perSecond = Numbers::roundedToInt(rate);
    const double dropRate = static_cast<double>(perSecond) / 1.001;
    if ((perSecond != 30 && perSecond != 60) || std::abs(rate - dropRate) >= 0.01)
        return std::nullopt;
    constexpr std::int64_t tenMinutes = 600;
    const std::int64_t framesOfTenMinutes = framesOf(tenMinutes, perSecond);
    const std::int64_t rest = frames % framesOfTenMinutes;
    std::int64_t seconds = rest / perSecond;
    while (framesOf(seconds + 1, perSecond) <= rest)
        ++seconds;
    const std::int64_t before = frames - rest;
    return DropFrameSeconds{frames / framesOfTenMinutes * tenMinutes + seconds,
                            before + framesOf(seconds, perSecond),
                            framesOf(seconds + 1, perSecond) - rest};
}

const CheckRow frameAccuracy{u"frame-accuracy"_s, u"Frame accuracy"_s,
                             u"a whole number of seconds"_s};

CheckResult extraFramesRow(std::int64_t perSecond, const QString& measured, std::int64_t extra,
                           std::int64_t missing)
{
    return frameAccuracy
        .expecting(u"a whole number of seconds (%1 frames per second at this rate)"_s.arg(
            QString::number(perSecond)))
        .fail(measured,
              u"Trim %1 frame%2 (or add %3) so the spot is frame-accurate to its booked length."_s
                  .arg(QString::number(extra), Text::plural(extra), QString::number(missing)));
}

QString countText(std::int64_t frames, std::int64_t seconds, std::int64_t extra)
{
    return u"%1 frames = %2 s + %3 extra frame%4"_s.arg(
        QString::number(frames), QString::number(seconds), QString::number(extra),
        Text::plural(extra));
}

/// A booked length is whole seconds, at the whole rate that a timecode counts in or by drop-frame
/// time code. To trim a length that is right by the one so that it is right by the other would
/// break it.
CheckResult frameAccuracyRow(std::int64_t frames, double rate)
{
    const std::int64_t perSecond = Numbers::roundedToInt(rate);
    const std::int64_t extra = frames % perSecond;
    const std::int64_t missing = perSecond - extra;
    const auto drop = dropFrameSeconds(frames, rate);
    if (extra == 0)
        return frameAccuracy.pass(u"exactly %1 s (%2 frames)"_s.arg(
            QString::number(frames / perSecond), QString::number(frames)));
    if (!drop || drop->frames <= frames - extra)
        return extraFramesRow(perSecond, countText(frames, frames / perSecond, extra), extra,
                              missing);
    if (drop->frames == frames)
        return frameAccuracy.pass(u"exactly %1 s (%2 frames, drop frame)"_s.arg(
            QString::number(drop->seconds), QString::number(frames)));
    return extraFramesRow(
        perSecond, countText(frames, drop->seconds, frames - drop->frames) + u" (drop frame)"_s,
        frames - drop->frames, std::min(drop->framesToNext, missing));
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
        rows.push_back(frameAccuracyRow(*video->frameCount, video->nominalFrameRate));
}

} // namespace vantroque::Checker

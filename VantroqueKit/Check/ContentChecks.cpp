#include "Base/Numbers.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Check/SlateLayout.h"

#include <QStringList>

#include <algorithm>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

CheckResult letterboxRow(const VideoStreamInfo& video, const std::optional<CropRect>& active)
{
    constexpr int allowance = 8;
    const CheckRow row{u"letterbox"_s, u"Letterboxing"_s, u"picture fills the frame"_s};
    const bool fullWidth = !active || active->width >= video.width - allowance;
    const bool fullHeight = !active || active->height >= video.height - allowance;
    if (fullWidth && fullHeight)
        return row.pass(u"picture fills the frame"_s);
    return row.fail(u"active picture is %1 inside a %2 frame (%3 bars)"_s.arg(
                        frameSize(active->width, active->height),
                        frameSize(video.width, video.height),
                        fullHeight ? u"pillarbox"_s : u"letterbox"_s),
                    u"Deliver the full-frame master instead of a letterboxed one. If the source is "
                    u"a different aspect, reframe it rather than padding."_s);
}

/// The profile says where slate and black lie, and the file's frames can be counted.
bool isLayoutReady(const ContentRule& rule, const MediaInfo& media)
{
    return rule.slateSeconds && rule.slateBlackSeconds && media.signal->blackRuns && media.video
           && !media.video->isVFR && media.video->nominalFrameRate > 1;
}

/// A held frame, or black where the usual leader of five and two seconds has it.
bool looksSlated(const SignalInfo& signal)
{
    const auto isBetween = [](double value, double low, double high) {
        return Numbers::above(value, low) && Numbers::below(value, high);
    };
    if (!Numbers::below(signal.headFreezeSeconds, 4))
        return true;
    return signal.blackRuns && std::ranges::any_of(*signal.blackRuns, [&](const TimeSpan& run) {
               return isBetween(run.start, 4, 6) && isBetween(run.end, 6, 8);
           });
}

void checkLayoutOf(const ContentRule& rule, const MediaInfo& media, Rows& rows)
{
    checkSlateLayout(
        {.rule = rule,
         .slateLen = *rule.slateSeconds,
         .gapLen = *rule.slateBlackSeconds,
         .runs = *media.signal->blackRuns,
         .signal = *media.signal,
         .video = *media.video,
         .hasAudio = media.audio.has_value(),
         .fileName = media.url.stem(),
         .totalSeconds = media.durationSeconds - media.signal->pictureStart.value_or(0)},
        rows);
}

/// The required leader of a file in which it cannot be counted in frames.
CheckResult leaderRow(const ContentRule& rule, const SignalInfo& signal)
{
    const CheckRow row{
        u"slate"_s, u"Slate and leader"_s,
        rule.slateLayout.value_or(u"a slate and black leader before the programme"_s)};
    if (Numbers::above(signal.headBlackSeconds, 0.5) || Numbers::above(signal.headFreezeSeconds, 2))
        return row.pass(u"leader material detected at the head"_s);
    return row.warn(u"program appears to start immediately"_s,
                    u"Add the leader the destination requires: %1."_s.arg(
                        rule.slateLayout.value_or(u"slate, then black, then the ad"_s)));
}

/// What surrounds the ad, as sentences: what is padding for certain, and what may be a fade.
struct PaddingFindings {
    QStringList hard;
    QStringList soft;

    void note(double seconds, double softAbove, double hardAbove, const QString& what,
              const QString& softWhat)
    {
        const QString length = Numbers::fixed(seconds, 1);
        if (Numbers::above(seconds, hardAbove))
            hard << u"%1 s %2"_s.arg(length, what);
        else if (Numbers::above(seconds, softAbove))
            soft << u"%1 s %2"_s.arg(length, softWhat);
    }
};

CheckResult paddingRow(const SignalInfo& signal)
{
    PaddingFindings found;
    found.note(signal.headBlackSeconds, 0.15, 1, u"of black at the head"_s,
               u"of black at the head (fade-in, or padding?)"_s);
    found.note(signal.tailBlackSeconds, 0.25, 1, u"of black at the tail"_s,
               u"of black at the tail (fade-out, or padding?)"_s);
    found.note(signal.headFreezeSeconds, 1, 3, u"frozen frame at the head (slate?)"_s,
               u"held frame at the head"_s);

    const CheckRow row{u"padding"_s, u"Slates and padding"_s,
                       u"commercial only; no slate, black, or freezes"_s};
    const QString measured = (found.hard + found.soft).join(u"; "_s);
    if (!found.hard.isEmpty() && looksSlated(signal))
        return row.fail(measured,
                        u"This looks like a slated broadcast master. Digital serving takes the "
                        u"bare ad with no leader. Deliver a clean version here, and check the "
                        u"slated master against Extreme Reach Broadcast, which verifies the slate "
                        u"layout."_s);
    if (!found.hard.isEmpty())
        return row.fail(measured, u"Trim the file to first-frame-of-picture through "
                                  u"last-frame-of-picture."_s);
    if (!found.soft.isEmpty())
        return row.warn(measured, u"Scrub the head and tail in the preview. A creative fade is "
                                  u"fine. Black padding is not."_s);
    return row.pass(u"starts and ends on content"_s);
}

void checkUnmeasured(const ContentRule& rule, Rows& rows)
{
    if (rule.letterboxForbidden.value_or(false) || rule.headTailBlackForbidden.value_or(false)
        || rule.slate) {
        const CheckRow row{u"content"_s, u"Content checks"_s,
                           u"letterbox/slate/black-padding analysis"_s};
        rows.push_back(row.info(u"signal pass skipped"_s));
    }
}

} // namespace

void checkContent(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.content)
        return;
    const ContentRule& rule = *profile.content;
    if (!media.signal) {
        checkUnmeasured(rule, rows);
        return;
    }
    if (rule.letterboxForbidden.value_or(false) && media.video)
        rows.push_back(letterboxRow(*media.video, media.signal->activePicture));

    const bool ready = isLayoutReady(rule, media);
    const bool required = rule.slate == SlatePolicy::required;
    const bool slated = rule.slate == SlatePolicy::optional && looksSlated(*media.signal);
    if (ready && (required || slated))
        checkLayoutOf(rule, media, rows);
    else if (required)
        rows.push_back(leaderRow(rule, *media.signal));
    else if (rule.slate == SlatePolicy::forbidden || rule.headTailBlackForbidden.value_or(false))
        rows.push_back(paddingRow(*media.signal));
}

} // namespace vantroque::Checker

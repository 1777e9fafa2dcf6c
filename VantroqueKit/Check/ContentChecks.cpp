#include "Base/Numbers.h"
#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Check/SignalChecks.h"
#include "Check/SlateLayout.h"
#include "Signal/Leader.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

CheckResult letterboxRow(const VideoStreamInfo& video, const std::optional<CropRect>& active)
{
    constexpr int allowance = 8;
    const CheckRow row{u"letterbox"_s, u"Letterboxing"_s, u"picture fills the frame"_s};
    const auto picture = active ? std::optional(video.shown(*active)) : std::nullopt;
    const bool fullWidth = !picture || picture->width >= video.shownWidth() - allowance;
    const bool fullHeight = !picture || picture->height >= video.shownHeight() - allowance;
    if (fullWidth && fullHeight)
        return row.pass(u"picture fills the frame"_s);
    return row.fail(u"active picture is %1 inside a %2 frame (%3 bars)"_s.arg(
                        frameSize(picture->width, picture->height),
                        frameSize(video.shownWidth(), video.shownHeight()),
                        fullHeight ? u"pillarbox"_s : u"letterbox"_s),
                    u"Deliver the full-frame master instead of a letterboxed one. If the source is "
                    u"a different aspect, reframe it rather than padding."_s);
}

/// From the first frame to the end of the file.
double pictureSeconds(const MediaInfo& media)
{
    return media.durationSeconds - media.signal->pictureStart.value_or(0);
}

/// The profile says where slate and black lie, and the file's frames can be counted.
bool isLayoutReady(const ContentRule& rule, const MediaInfo& media)
{
    return rule.slateSeconds && rule.slateBlackSeconds && media.signal->blackRuns && media.video
           && !media.video->isVFR && media.video->nominalFrameRate > 1;
}

bool isAbout(const TimeSpan& run, const Leader::Layout& layout, double allowance)
{
    const auto isNear = [allowance](double value, double expected) {
        return Numbers::below(std::abs(value - expected), allowance);
    };
    return isNear(run.start, layout.slate) && isNear(run.end, layout.end());
}

/// A held frame, or black where the usual leader of five and two seconds has it, or where the
/// profile's own has.
bool looksSlated(const ContentRule& rule, const SignalInfo& signal)
{
    constexpr double allowance = 1;
    if (!Numbers::below(signal.headFreezeSeconds, 4))
        return true;
    return signal.blackRuns && std::ranges::any_of(*signal.blackRuns, [&](const TimeSpan& run) {
               const Leader::Layout own{rule.slateSeconds.value_or(0),
                                        rule.slateBlackSeconds.value_or(0)};
               if (!rule.slateSeconds || !rule.slateBlackSeconds)
                   return isAbout(run, {5, 2}, allowance);
               return Leader::partsSlateFromAd(run, own)
                      && (isAbout(run, {5, 2}, allowance) || isAbout(run, own, allowance));
           });
}

/// The black that ends a leader of some layout in use, also one with a moving clock, which no test
/// for held frames sees.
std::optional<TimeSpan> leaderBlack(const ContentRule& rule, const MediaInfo& media)
{
    constexpr double allowance = 0.5 + 1e-6;
    constexpr double tailEdge = 0.1;
    auto layouts = Leader::layoutsInUse();
    layouts.insert(layouts.end(), rule.installedLeaders.begin(), rule.installedLeaders.end());
    if (rule.slateSeconds && rule.slateBlackSeconds)
        layouts.push_back({*rule.slateSeconds, *rule.slateBlackSeconds});
    const double tail = pictureSeconds(media) - tailEdge;
    for (const TimeSpan& run : media.signal->blackRuns.value_or(std::vector<TimeSpan>()))
        if (Numbers::below(run.end, tail)
            && std::ranges::any_of(layouts, [&](const Leader::Layout& layout) {
                   return isAbout(run, layout, allowance) && Leader::partsSlateFromAd(run, layout);
               }))
            return run;
    return std::nullopt;
}

void checkLayoutOf(const ContentRule& rule, const MediaInfo& media, Rows& rows)
{
    checkSlateLayout({.rule = rule,
                      .slateLen = *rule.slateSeconds,
                      .gapLen = *rule.slateBlackSeconds,
                      .runs = *media.signal->blackRuns,
                      .signal = *media.signal,
                      .video = *media.video,
                      .hasAudio = media.audio.has_value(),
                      .fileName = media.url.stem(),
                      .totalSeconds = pictureSeconds(media)},
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

CheckResult paddingRow(const ContentRule& rule, const MediaInfo& media)
{
    const SignalInfo& signal = *media.signal;
    PaddingFindings found;
    found.note(signal.headBlackSeconds, 0.15, 1, u"of black at the head"_s,
               u"of black at the head (fade-in, or padding?)"_s);
    found.note(signal.tailBlackSeconds, 0.25, 1, u"of black at the tail"_s,
               u"of black at the tail (fade-out, or padding?)"_s);
    found.note(signal.headFreezeSeconds, 1, 3, u"frozen frame at the head (slate?)"_s,
               u"held frame at the head"_s);

    const bool isAsked = rule.slate == SlatePolicy::forbidden && found.hard.isEmpty();
    const auto leader = isAsked ? leaderBlack(rule, media) : std::nullopt;
    if (leader) {
        const FrameRate rate = SignalChecks::countingRate(media);
        found.soft << u"picture, then black from %1 to %2: a leader?"_s.arg(
            Timecode::fromSeconds(leader->start, rate).text(),
            Timecode::fromSeconds(leader->end, rate).text());
    }

    const CheckRow row{u"padding"_s, u"Slates and padding"_s,
                       u"commercial only; no slate, black, or freezes"_s};
    const QString measured = (found.hard + found.soft).join(u"; "_s);
    if (!found.hard.isEmpty() && looksSlated(rule, signal))
        return row.fail(measured,
                        u"This looks like a slated broadcast master. Digital serving takes the "
                        u"bare ad with no leader. Deliver a clean version here, and check the "
                        u"slated master against Extreme Reach Broadcast, which verifies the slate "
                        u"layout."_s);
    if (!found.hard.isEmpty())
        return row.fail(measured, u"Trim the file to first-frame-of-picture through "
                                  u"last-frame-of-picture."_s);
    if (leader)
        return row.warn(measured, u"If the picture before the black is a slate or a clock, deliver "
                                  u"the bare ad without it. A creative dip to black is fine."_s);
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
    const bool slated = rule.slate == SlatePolicy::optional && looksSlated(rule, *media.signal);
    if (ready && (required || slated))
        checkLayoutOf(rule, media, rows);
    else if (required)
        rows.push_back(leaderRow(rule, *media.signal));
    else if (rule.slate == SlatePolicy::forbidden || rule.headTailBlackForbidden.value_or(false))
        rows.push_back(paddingRow(rule, media));
}

} // namespace vantroque::Checker

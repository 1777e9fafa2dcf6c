#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

const char* const withTelecine = "no duplicate frames, no telecine cadence";

MediaInfo measured(const FrameCadence& cadence)
{
    MediaInfo media = hdSpot();
    media.signal = SignalInfo{};
    media.signal->cadence = cadence;
    return media;
}

CheckResult graded(const FrameCadence& cadence, const std::optional<FrameRateRule>& rule = {},
                   bool gate = false)
{
    return duplicatesRow(measured(cadence), rule, gate).value();
}

CheckResult duplicates(Verdict verdict, const char* measured, const char* expected = withTelecine,
                       const char* fix = nullptr)
{
    return row("duplicate-frames", "Duplicate frames", verdict, measured, expected, fix);
}

FrameCadence repeating(const std::vector<std::int64_t>& frames)
{
    FrameCadence cadence;
    cadence.duplicateFrames = frames;
    cadence.duplicateCount = std::ssize(frames);
    cadence.frameCountSeen = 750;
    if (!frames.empty())
        cadence.duplicateSpan = {frames.front(), frames.back()};
    cadence.duplicateCause = DuplicateCause::scattered;
    return cadence;
}

FrameCadence converted(int period)
{
    FrameCadence cadence = repeating({30, 35, 40});
    cadence.duplicateCount = 150;
    cadence.duplicatePeriod = period;
    cadence.duplicateCause = DuplicateCause::conversion;
    return cadence;
}

FrameCadence retimed()
{
    FrameCadence cadence = repeating({100, 102, 104, 150});
    cadence.duplicatePeriod = 2;
    cadence.duplicateCause = DuplicateCause::retimedShot;
    return cadence;
}

FrameCadence telecined(std::int64_t top, std::int64_t bottom, std::int64_t neither)
{
    FrameCadence cadence = repeating({});
    cadence.repeatedFieldsTop = top;
    cadence.repeatedFieldsBottom = bottom;
    cadence.repeatedFieldsNeither = neither;
    return cadence;
}

FrameRateRule forbidding(bool duplicateFrames, bool telecine)
{
    FrameRateRule rule;
    rule.duplicateFramesForbidden = duplicateFrames;
    rule.telecineForbidden = telecine;
    return rule;
}

const char* const conformFix =
    "Export at the content's native rate, or conform in the NLE from the original master. A "
    "delivery file that was converted by repeating frames stutters on every platform.";
const char* const pulldownFix =
    "Remove the pulldown (inverse telecine) and deliver progressive at the native rate.";
const char* const retimeFix =
    "If the slow motion is intended, the file is fine, though the shot will judder. Optical-flow "
    "retiming, or higher-rate source footage, gives new frames instead of repeats.";
const char* const holdFix =
    "A frame repeated inside motion is usually a dropped render frame or a hold left on the "
    "timeline. Step to each one and check the edit.";

} // namespace

TEST(DuplicatesRow, WithoutPictureThereIsNoRow)
{
    MediaInfo media = measured({});
    media.video.reset();
    EXPECT_EQ(duplicatesRow(media, {}, false), std::nullopt);
}

TEST(DuplicatesRow, AnUnmeasuredFileIsInfo)
{
    MediaInfo media = hdSpot();
    EXPECT_EQ(duplicatesRow(media, {}, false), duplicates(Verdict::info, "signal pass skipped"));
    media.signal = SignalInfo{};
    EXPECT_EQ(duplicatesRow(media, {}, false), duplicates(Verdict::info, "not measured"));
}

TEST(DuplicatesRow, AConversionWarnsInGeneralAndFailsWhereAPlatformGates)
{
    const char* const text = "150 duplicated frames, every 5th frame: 24 or 23.976 fps content "
                             "delivered at 30 or 29.97; first at 00:00:01:05";
    EXPECT_EQ(graded(converted(5)), duplicates(Verdict::warn, text, withTelecine, conformFix));
    EXPECT_EQ(graded(converted(5), forbidding(true, false), true),
              duplicates(Verdict::fail, text, "no duplicate frames", conformFix));
}

TEST(DuplicatesRow, AConversionWithoutAListBeginsAtZero)
{
    FrameCadence cadence = converted(2);
    cadence.duplicateFrames.clear();
    EXPECT_EQ(graded(cadence).measured, u"150 duplicated frames, every 2nd frame: the frame rate "
                                        u"was doubled; first at 00:00:00:00"_s);
}

TEST(DuplicatesRow, AFifthOfRepeatedFieldsIsATelecine)
{
    EXPECT_EQ(graded(telecined(1, 1, 8)),
              duplicates(Verdict::warn, "repeated fields on 20% of frames (telecine cadence)",
                         withTelecine, pulldownFix));
    EXPECT_EQ(graded(telecined(2, 2, 6), forbidding(false, true), true),
              duplicates(Verdict::fail, "repeated fields on 40% of frames (telecine cadence)",
                         withTelecine, pulldownFix));
    EXPECT_EQ(graded(telecined(1, 0, 9)).verdict, Verdict::pass);
}

TEST(DuplicatesRow, ATelecineNeedsTenFrames)
{
    FrameCadence cadence = telecined(4, 4, 2);
    cadence.frameCountSeen = 9;
    EXPECT_EQ(graded(cadence).verdict, Verdict::pass);
    cadence.frameCountSeen = 10;
    EXPECT_EQ(graded(cadence).verdict, Verdict::warn);
}

TEST(DuplicatesRow, ATelecineIsLeftAloneWhereTheRuleDoesNotForbidIt)
{
    EXPECT_EQ(graded(telecined(4, 4, 2), forbidding(true, false), true),
              duplicates(Verdict::pass, "no duplicate frames", "no duplicate frames"));
}

TEST(DuplicatesRow, ARetimedShotOnlyWarns)
{
    EXPECT_EQ(graded(retimed(), forbidding(true, true), true),
              duplicates(Verdict::warn,
                         "4 duplicated frames between 00:00:04:00 and 00:00:06:00: a shot slowed "
                         "to about 50% by repeating every 2nd frame",
                         withTelecine, retimeFix));
}

TEST(DuplicatesRow, ConversionComesBeforeTelecineAndTelecineBeforeARetimedShot)
{
    FrameCadence cadence = converted(5);
    cadence.repeatedFieldsTop = 10;
    EXPECT_EQ(graded(cadence).fix, QString::fromUtf8(conformFix));
    cadence.duplicateCause = DuplicateCause::retimedShot;
    EXPECT_EQ(graded(cadence).fix, QString::fromUtf8(pulldownFix));
    cadence.repeatedFieldsTop = 0;
    EXPECT_EQ(graded(cadence).fix, QString::fromUtf8(retimeFix));
}

TEST(DuplicatesRow, ACleanFilePasses)
{
    EXPECT_EQ(graded(repeating({})),
              duplicates(Verdict::pass, "no duplicate frames, no repeated fields"));
}

TEST(DuplicatesRow, ScatteredFramesAreListed)
{
    EXPECT_EQ(
        graded(repeating({25}), forbidding(true, true), true),
        duplicates(Verdict::warn, "1 duplicated frame at 00:00:01:00", withTelecine, holdFix));
    EXPECT_EQ(graded(repeating({25, 30, 90000, 90001})).measured,
              u"4 duplicated frames at 00:00:01:00, 00:00:01:05, 01:00:00:00, 01:00:00:01"_s);
    EXPECT_EQ(graded(repeating({25, 30, 35, 41, 60, 61})).measured,
              u"6 duplicated frames at 00:00:01:00, 00:00:01:05, 00:00:01:10, 00:00:01:16 and 2 "
              u"more"_s);
}

TEST(DuplicatesRow, ARetimedShotWithoutASpanIsListed)
{
    FrameCadence cadence = retimed();
    cadence.duplicateSpan.reset();
    EXPECT_EQ(graded(cadence).fix, QString::fromUtf8(holdFix));
}

TEST(DuplicatesRow, WithoutAFrameRateTimecodesCountTwentyFour)
{
    MediaInfo media = measured(repeating({25}));
    media.video->nominalFrameRate = 0;
    EXPECT_EQ(duplicatesRow(media, {}, false)->measured, u"1 duplicated frame at 00:00:01:01"_s);
}

TEST(FlashFramesRow, WithoutPictureOrMeasurementThereIsNoRow)
{
    EXPECT_EQ(flashFramesRow(hdSpot()), std::nullopt);
    EXPECT_EQ(flashFramesRow(measuredSpot()), std::nullopt);
    MediaInfo media = measured({});
    media.video.reset();
    EXPECT_EQ(flashFramesRow(media), std::nullopt);
}

TEST(FlashFramesRow, AFileWithoutFlashesPasses)
{
    EXPECT_EQ(flashFramesRow(measured({})),
              row("flash-frames", "Flash frames", Verdict::pass, "none",
                  "no single frame that matches neither the one before it nor the one after"));
}

TEST(FlashFramesRow, FourFlashesAreListedAndTheRestCounted)
{
    FrameCadence cadence;
    cadence.flashFrames = {{25, 12.5}, {50, 8}};
    EXPECT_EQ(flashFramesRow(measured(cadence)),
              row("flash-frames", "Flash frames", Verdict::info,
                  "00:00:01:00 (13×), 00:00:02:00 (8×), against the motion around them. A stray "
                  "frame from another shot or a render glitch reads this way. A fast cut on a "
                  "bright frame reads the same way, so look before acting",
                  "no single frame that matches neither the one before it nor the one after"));
    cadence.flashFrames = {{1, 9}, {2, 9}, {3, 9}, {4, 9}};
    const QString four =
        u"00:00:00:01 (9×), 00:00:00:02 (9×), 00:00:00:03 (9×), 00:00:00:04 (9×)"_s;
    EXPECT_TRUE(flashFramesRow(measured(cadence))->measured.startsWith(four + u", against"_s));
    cadence.flashFrames.push_back({5, 9});
    EXPECT_TRUE(
        flashFramesRow(measured(cadence))->measured.startsWith(four + u" and 1 more, against"_s));
}

} // namespace vantroque::SignalChecks

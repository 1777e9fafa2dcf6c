#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

const char* const general = "luma and RGB within 0–100% (EBU R 103 rejects beyond 5% on more than "
                            "1% of the image for 4.0 s)";

PictureLevels legal()
{
    PictureLevels levels;
    levels.yMinPercent = -0.4;
    levels.yMaxPercent = 99.6;
    return levels;
}

MediaInfo measured(const PictureLevels& levels)
{
    MediaInfo media = hdSpot();
    media.signal = SignalInfo{};
    media.signal->levels = levels;
    return media;
}

CheckResult graded(const PictureLevels& levels, const std::optional<LevelsRule>& rule = {},
                   bool gate = false)
{
    return levelsRow(measured(levels), rule, gate).value();
}

CheckResult videoLevels(Verdict verdict, const char* measured, const char* expected = general,
                        const char* fix = nullptr)
{
    return row("video-levels", "Video levels", verdict, measured, expected, fix);
}

const char* const shorter = "Shorter than the 4.0 s rejection window, but the same fix applies: a "
                            "legaliser or a corrected graphic.";

QString legalise(const QString& timecode)
{
    return u"Legalise the picture: a broadcast-safe limiter on the timeline, or bring the "
           u"offending "
           u"graphic (usually a white card or a saturated brand colour) inside 0–100% and "
           u"re-export. The worst moment is at %1."_s.arg(timecode);
}

} // namespace

TEST(LevelsRow, WithoutPictureThereIsNoRow)
{
    MediaInfo media = measured(legal());
    media.video.reset();
    EXPECT_EQ(levelsRow(media, {}, false), std::nullopt);
}

TEST(LevelsRow, AnHdrPictureIsNotGraded)
{
    for (const QString& transfer : {u"smpte2084"_s, u"arib-std-b67"_s}) {
        MediaInfo media = measured(legal());
        media.video->colorTransfer = transfer;
        EXPECT_EQ(levelsRow(media, {}, true),
                  videoLevels(Verdict::info,
                              "HDR picture; EBU R 103 limits apply to SDR and are not applied",
                              "an SDR picture within EBU R 103"));
    }
}

TEST(LevelsRow, AnUnmeasuredPictureIsInfo)
{
    MediaInfo media = hdSpot();
    EXPECT_EQ(levelsRow(media, {}, true),
              videoLevels(Verdict::info, "signal pass skipped", "picture levels within EBU R 103"));
    media.signal = SignalInfo{};
    EXPECT_EQ(levelsRow(media, {}, true),
              videoLevels(Verdict::info, "not measured", "picture levels within EBU R 103"));
}

TEST(LevelsRow, ALegalPicturePasses)
{
    EXPECT_EQ(graded(legal()), videoLevels(Verdict::pass, "luma 0–100% of range, RGB legal"));
    PictureLevels levels = legal();
    levels.matrixAssumed = true;
    levels.matrix = ColorMatrix::bt601;
    EXPECT_EQ(graded(levels),
              videoLevels(Verdict::pass, "luma 0–100% of range, RGB legal (assuming Rec.601)"));
}

TEST(LevelsRow, ALongExcursionWarnsInGeneralAndFailsWhereAPlatformGates)
{
    PictureLevels levels = legal();
    levels.yRejectRuns = {{2, 3, 0.5}, {10, 15, 0.123}};
    CheckResult expected = videoLevels(
        Verdict::warn, "luma beyond ±5% on 12.3% of the picture at 00:00:10:00 for 5.0 s");
    expected.fix = legalise(u"00:00:10:00"_s);
    EXPECT_EQ(graded(levels), expected);

    expected.verdict = Verdict::fail;
    expected.measured = u"luma beyond ±3% on 12.3% of the picture at 00:00:10:00 for 5.0 s"_s;
    expected.expected = u"luma and RGB within 0–100% (rejected beyond 3% on more than 2% of the "
                        u"image for 5.0 s)"_s;
    EXPECT_EQ(graded(levels, LevelsRule{u"EBU R 103"_s, 3, 2, 5}, true), expected);
}

TEST(LevelsRow, AThreeSecondExcursionIsTooShortToReject)
{
    PictureLevels levels = legal();
    levels.yRejectRuns = {{1, 4, 0.02}};
    EXPECT_EQ(graded(levels, {}, true),
              videoLevels(Verdict::warn,
                          "luma beyond ±5% on 2.0% of the picture at 00:00:01:00 for 3.0 s",
                          "luma and RGB within 0–100% (rejected beyond 5% on more than 1% of the "
                          "image for 4.0 s)",
                          shorter));
}

TEST(LevelsRow, AnExcursionOfExactlyTheWindowIsRejected)
{
    PictureLevels levels = legal();
    levels.yRejectRuns = {{0.1, 4.1, 0.02}};
    EXPECT_EQ(graded(levels, {}, true).verdict, Verdict::fail);
}

TEST(LevelsRow, OnlyRejectedNotesAreShownOnceThereAreAny)
{
    PictureLevels levels = legal();
    levels.yRejectRuns = {{1, 2, 0.02}};
    levels.rgbRejectRuns = {{12, 24, 0.4}};
    const CheckResult rejected = graded(levels);
    EXPECT_EQ(rejected.measured,
              u"RGB beyond ±5% on 40.0% of the picture at 00:00:12:00 for 12 s"_s);
    // The luma's moment is named even so.
    EXPECT_EQ(rejected.fix, legalise(u"00:00:01:00"_s));

    levels.yRejectRuns = {{1, 8, 0.02}};
    EXPECT_EQ(graded(levels).measured,
              u"luma beyond ±5% on 2.0% of the picture at 00:00:01:00 for 7.0 s; RGB beyond ±5% on "
              u"40.0% of the picture at 00:00:12:00 for 12 s"_s);
}

TEST(LevelsRow, WithoutALumaRunTheWorstMomentIsThatOfRgb)
{
    PictureLevels levels = legal();
    levels.rgbRejectRuns = {{12, 24, 0.4}};
    EXPECT_EQ(graded(levels).fix, legalise(u"00:00:12:00"_s));
}

TEST(LevelsRow, AnAssumedMatrixNeverRejectsOnRgb)
{
    PictureLevels levels = legal();
    levels.matrixAssumed = true;
    levels.rgbRejectRuns = {{12, 24, 0.4}};
    EXPECT_EQ(graded(levels, {}, false),
              videoLevels(Verdict::warn,
                          "RGB beyond ±5% on 40.0% of the picture at 00:00:12:00 for 12 s (RGB "
                          "measured assuming Rec.709: the file carries no matrix tag)",
                          general,
                          "Tag the export with its colour matrix (Rec.709 for HD) so the gamut can "
                          "be judged against what the file was made with, and check the moment at "
                          "00:00:12:00 on a scope."));
}

TEST(LevelsRow, AnAssumedMatrixIsToldBesideARejectedLuma)
{
    PictureLevels levels = legal();
    levels.matrixAssumed = true;
    levels.matrix = ColorMatrix::bt2020;
    levels.yRejectRuns = {{1, 8, 0.02}};
    levels.rgbRejectRuns = {{12, 24, 0.4}};
    EXPECT_EQ(graded(levels).measured,
              u"luma beyond ±5% on 2.0% of the picture at 00:00:01:00 for 7.0 s (RGB measured "
              u"assuming Rec.2020: the file carries no matrix tag)"_s);
}

TEST(LevelsRow, TheLongestOfEqualRunsIsTheFirst)
{
    PictureLevels levels = legal();
    levels.yRejectRuns = {{5, 4, 0.9}, {1.1, 3.1, 0.1}, {8, 10, 0.2}};
    EXPECT_EQ(graded(levels).measured,
              u"luma beyond ±5% on 10.0% of the picture at 00:00:01:03 for 2.0 s"_s);
}

TEST(LevelsRow, BeyondThePreferredRangeWarnsEvenInsideTheTolerance)
{
    PictureLevels levels = legal();
    levels.strictRuns = {{1, 2, 0.1}, {3, 13, 0.25}};
    EXPECT_EQ(graded(levels, {}, false),
              videoLevels(Verdict::warn,
                          "beyond EBU R 103's preferred −1–103% on 25.0% of the picture at "
                          "00:00:03:00 for 10 s, inside its tolerance",
                          general,
                          "Inside the tolerance, so nothing is refused for it. A legaliser or a "
                          "corrected graphic brings it inside the preferred range."));
}

TEST(LevelsRow, OnlyWhatIsShorterThanTheWindowIsCalledShorter)
{
    PictureLevels levels = legal();
    levels.strictRuns = {{3, 6.9, 0.25}};
    EXPECT_EQ(graded(levels).fix, QString::fromUtf8(shorter));
    levels.strictRuns = {{3, 7, 0.25}};
    EXPECT_FALSE(graded(levels).fix->contains(u"Shorter"_s));
}

TEST(LevelsRow, TheRulesNumbersPrintAsTheProfileGivesThem)
{
    PictureLevels levels = legal();
    levels.yRejectRuns = {{1, 2, 0.02}};
    const CheckResult found = graded(levels, LevelsRule{u"EBU R 103"_s, 2.5, 0.5, 12.5}, true);
    EXPECT_TRUE(found.measured.startsWith(u"luma beyond ±2.5% on "_s));
    EXPECT_TRUE(
        found.expected.endsWith(u"beyond 2.5% on more than 0.5% of the image for 12.5 s)"_s));
    EXPECT_TRUE(found.fix->startsWith(u"Shorter than the 12.5 s rejection window"_s));
}

TEST(LevelsRow, APreferredRangeIsNotMentionedBesideAShortExcursion)
{
    PictureLevels levels = legal();
    levels.yRejectRuns = {{1, 2, 0.02}};
    levels.strictRuns = {{3, 13, 0.25}};
    EXPECT_EQ(graded(levels).measured,
              u"luma beyond ±5% on 2.0% of the picture at 00:00:01:00 for 1.0 s"_s);
}

TEST(LevelsRow, WithoutAFrameRateTimecodesCountTwentyFour)
{
    MediaInfo media = measured(legal());
    media.video->nominalFrameRate = 0;
    media.signal->levels->yRejectRuns = {{1.5, 2, 0.02}};
    EXPECT_EQ(levelsRow(media, {}, false)->measured,
              u"luma beyond ±5% on 2.0% of the picture at 00:00:01:12 for 0.5 s"_s);
}

TEST(SignalChecks, SecondsHaveADecimalBelowTen)
{
    EXPECT_EQ(seconds(0), u"0.0 s"_s);
    EXPECT_EQ(seconds(3.25), u"3.3 s"_s);
    EXPECT_EQ(seconds(9.96), u"10.0 s"_s);
    EXPECT_EQ(seconds(10), u"10 s"_s);
    EXPECT_EQ(seconds(12.5), u"13 s"_s);
}

TEST(LevelsRow, WhatTheLeaderDoesIsInfoAtMost)
{
    PictureLevels levels = legal();
    levels.yRejectRuns = {{0, 5, 0.3}};
    const auto rowWith = [&](double leaderEnd) {
        return levelsRow(measured(levels), {}, true, leaderEnd).value();
    };
    EXPECT_EQ(rowWith(0).verdict, Verdict::fail);
    EXPECT_EQ(rowWith(7).verdict, Verdict::info);
    EXPECT_EQ(rowWith(7).measured, u"luma beyond ±5% on 30.0% of the picture at 00:00:00:00 for "
                                   u"5.0 s, in the leader; legal from its end on"_s);
    levels.yRejectRuns.push_back({9, 14, 0.1});
    EXPECT_EQ(rowWith(7).verdict, Verdict::fail);
    EXPECT_EQ(rowWith(7).measured,
              u"luma beyond ±5% on 10.0% of the picture at 00:00:09:00 for 5.0 s"_s);
    levels.yRejectRuns = {{0, 9, 0.3}};
    EXPECT_EQ(rowWith(7).verdict, Verdict::warn) << "two seconds of it are the ad's";
}

} // namespace vantroque::SignalChecks

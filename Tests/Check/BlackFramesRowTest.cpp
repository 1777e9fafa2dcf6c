#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

MediaInfo withBlack(const std::vector<TimeSpan>& runs)
{
    MediaInfo media = measuredSpot();
    media.signal->cadence = FrameCadence{};
    media.signal->cadence->interiorBlackRuns = runs;
    return media;
}

CheckResult graded(const std::vector<TimeSpan>& runs, double leaderEnd = 0)
{
    return blackFramesRow(withBlack(runs), leaderEnd).value();
}

CheckResult blackFrames(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("black-frames", "Black frames", verdict, measured,
               "no black frames inside the picture", fix);
}

const char* const gapFix = "A frame or two of black between shots is a gap on the timeline or a "
                           "missing media frame. Step to each and close it.";

} // namespace

TEST(BlackFramesRow, WithoutPictureOrMeasurementThereIsNoRow)
{
    EXPECT_EQ(blackFramesRow(hdSpot(), 0), std::nullopt);
    EXPECT_EQ(blackFramesRow(measuredSpot(), 0), std::nullopt);
    MediaInfo media = withBlack({});
    media.video.reset();
    EXPECT_EQ(blackFramesRow(media, 0), std::nullopt);
}

TEST(BlackFramesRow, AFileWithoutBlackPasses)
{
    EXPECT_EQ(graded({}), blackFrames(Verdict::pass, "none inside the picture"));
}

TEST(BlackFramesRow, BlackUpToTheLeadersEndDoesNotAppear)
{
    EXPECT_EQ(graded({{5, 7}}, 7), blackFrames(Verdict::pass, "none inside the picture"));
    EXPECT_EQ(graded({{5, 7.5}}, 7), blackFrames(Verdict::pass, "none inside the picture"));
    EXPECT_EQ(graded({{5, 7.52}}, 7),
              blackFrames(Verdict::info, "dips to black at 00:00:05:00 for 2.5 s"));
    EXPECT_EQ(graded({{0.1, 0.4}}).verdict, Verdict::info) << "without a leader";
}

TEST(BlackFramesRow, ThreeFramesAreAGapAndFourADip)
{
    EXPECT_EQ(graded({{2, 2.12}}), blackFrames(Verdict::warn, "3 frames at 00:00:02:00", gapFix));
    EXPECT_EQ(graded({{2, 2.14}}).verdict, Verdict::warn);
    EXPECT_EQ(graded({{2, 2.16}}),
              blackFrames(Verdict::info, "dips to black at 00:00:02:00 for 0.2 s"));
}

TEST(BlackFramesRow, AGapHasOneFrameAtLeast)
{
    EXPECT_EQ(graded({{2, 2.001}}).measured, u"1 frame at 00:00:02:00"_s);
    EXPECT_EQ(graded({{2, 1.5}}).measured, u"1 frame at 00:00:02:00"_s);
}

TEST(BlackFramesRow, DipsAreNotNamedBesideGaps)
{
    EXPECT_EQ(graded({{1, 2}, {3, 3.04}}),
              blackFrames(Verdict::warn, "1 frame at 00:00:03:00", gapFix));
}

TEST(BlackFramesRow, FourGapsAreListedAndTheRestCounted)
{
    std::vector<TimeSpan> runs{{1, 1.04}, {2, 2.08}, {3, 3.04}, {4, 4.04}};
    const QString four = u"1 frame at 00:00:01:00, 2 frames at 00:00:02:00, 1 frame at "
                         u"00:00:03:00, 1 frame at 00:00:04:00"_s;
    EXPECT_EQ(graded(runs).measured, four);
    runs.push_back({5, 5.04});
    runs.push_back({6, 6.04});
    EXPECT_EQ(graded(runs).measured, four + u" and 2 more"_s);
}

TEST(BlackFramesRow, ThreeDipsAreListedAndTheRestCounted)
{
    std::vector<TimeSpan> runs{{1, 2}, {3, 4.5}, {10, 22}};
    const QString three = u"dips to black at 00:00:01:00 for 1.0 s, 00:00:03:00 for 1.5 s, "
                          u"00:00:10:00 for 12 s"_s;
    EXPECT_EQ(graded(runs).measured, three);
    runs.push_back({23, 24});
    EXPECT_EQ(graded(runs).measured, three + u" and 1 more"_s);
}

TEST(BlackFramesRow, WithoutAFrameRateTwentyFourCount)
{
    MediaInfo media = withBlack({{1.5, 1.64}});
    media.video->nominalFrameRate = 0;
    EXPECT_EQ(blackFramesRow(media, 0)->measured, u"3 frames at 00:00:01:12"_s);
}

TEST(BlackFramesRow, PlacesEndAtTheLastFrameThatCanBeCounted)
{
    EXPECT_EQ(graded({{1e9, 1e9 + 1}}).measured, u"dips to black at 115:12:00:00 for 1.0 s"_s);
}

} // namespace vantroque::SignalChecks

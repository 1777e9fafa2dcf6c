#include "Progress/ProgressEstimate.h"

#include <gtest/gtest.h>

using namespace vantroque;
using ProgressEstimate::estimateRemaining;
using ProgressEstimate::refreshed;
using ProgressEstimate::TimePoint;
using ProgressEstimate::Timing;
using Stage = AnalysisStage;

namespace {

TimePoint at(double seconds)
{
    return TimePoint(
        std::chrono::duration_cast<TimePoint::duration>(std::chrono::duration<double>(seconds)));
}

/// A decode that began a second ago in an analysis that began two seconds ago.
Timing decoding(double mediaSeconds, double duration = 100)
{
    Timing timing;
    timing.started = at(0);
    timing.decodeStarted = at(1);
    timing.duration = duration;
    timing.mediaSeconds = mediaSeconds;
    return timing;
}

} // namespace

TEST(ProgressEstimate, ADecodeThatHasHardlyBegunTellsNothing)
{
    EXPECT_FALSE(estimateRemaining(at(2), Stage::decoding, decoding(1)));
    EXPECT_FALSE(estimateRemaining(at(2), Stage::decoding, decoding(2)));
    EXPECT_FALSE(estimateRemaining(at(2), Stage::decoding, decoding(50, 0)));
    EXPECT_FALSE(estimateRemaining(at(2), Stage::decoding, Timing()));
    EXPECT_FALSE(estimateRemaining(at(2), Stage::probing, decoding(50)));
}

TEST(ProgressEstimate, ADecodeGoesOnAsItWent)
{
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(2), Stage::decoding, decoding(25)), 0.4 + 3);
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(2), Stage::decoding, decoding(150)), 0.4);
}

TEST(ProgressEstimate, TheSlowerOfDecodeAndReadingCounts)
{
    Timing timing = decoding(50);
    timing.textExpected = 60;
    timing.textFramesRead = 20;
    timing.textReadSeconds = 4;
    timing.textReads = 20;
    timing.graphicsSeen = 2;
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(2), Stage::decoding, timing), 0.4 + 0.2 * 40 + 0.6);
    timing.textFramesRead = 60;
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(2), Stage::decoding, timing), 0.4 + 1 + 0.6);
}

TEST(ProgressEstimate, ReadingTextCountsWhatIsUnreadAndThenTheEdges)
{
    Timing timing = decoding(100);
    timing.textExpected = 10;
    timing.textFramesExtracted = 12;
    timing.textFramesRead = 4;
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(2), Stage::readingText, timing), 0.4 + 0.3 + 0.15 * 8);

    timing.edgesStarted = at(2);
    timing.edgeUnitsTotal = 24;
    timing.textStep = 12; // 2 * ceil(log2(13)) + 2 = 10 readings a graphic
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(2), Stage::readingText, timing), 0.4 + 2.4 * 0.3);
    timing.edgeUnitsDone = 12;
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(5), Stage::readingText, timing), 0.4 + 3);
}

TEST(ProgressEstimate, ScoringTakesAMoment)
{
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(9), Stage::scoring, decoding(100)), 0.05);
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(9), Stage::readingSlate, decoding(100)), 0.4);
    EXPECT_DOUBLE_EQ(*estimateRemaining(at(9), Stage::done, decoding(100)), 0);
}

TEST(ProgressEstimate, TheFractionNeverFallsWhenAnEstimateJumps)
{
    Timing timing = decoding(90);
    double fraction = 0.04;
    for (double time = 2; time < 12; time += 0.1) {
        // Every second the decode falls back to its beginning and later runs ahead again.
        timing.mediaSeconds = static_cast<int>(time) % 2 == 0 ? 90 : 3;
        const double next = refreshed(fraction, at(time), Stage::decoding, timing);
        EXPECT_GE(next, fraction) << time;
        fraction = next;
    }
    EXPECT_GT(fraction, 0.04);
}

TEST(ProgressEstimate, WithoutAnEstimateTheFractionCreeps)
{
    Timing timing = decoding(1);
    const double next = refreshed(0.05, at(2), Stage::decoding, timing);
    EXPECT_DOUBLE_EQ(next, 0.05 + (0.99 - 0.05) * 0.004);
}

TEST(ProgressEstimate, ProbingRisesTowardsItsShare)
{
    Timing timing;
    timing.started = at(0);
    EXPECT_NEAR(refreshed(0, at(0.4), Stage::probing, timing), 0.0316, 0.0001);
    EXPECT_DOUBLE_EQ(refreshed(0, at(0), Stage::queued, timing), 0);
}

TEST(ProgressEstimate, OnlyTheEndGetsPastTheCeiling)
{
    Timing timing = decoding(100);
    double fraction = 0;
    for (double time = 2; time < 400; time += 0.5)
        fraction = refreshed(fraction, at(time), Stage::scoring, timing);
    EXPECT_LE(fraction, 0.99);
    EXPECT_GT(fraction, 0.98);
    EXPECT_DOUBLE_EQ(refreshed(fraction, at(400), Stage::done, timing), 1);
}

#include "Signal/PhaseAnalyzer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque::PhaseAnalyzer {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Spans = std::vector<TimeSpan>;

/// Ten values a second.
StereoPhase measured(const std::vector<float>& series, const std::optional<Spans>& audible = {},
                     const std::optional<std::vector<ChannelLevel>>& levels = {})
{
    return measure(series, 10, audible, levels).value();
}

std::vector<float> constant(std::size_t count, float value)
{
    return std::vector<float>(count, value);
}

std::vector<float> joined(std::initializer_list<std::vector<float>> parts)
{
    std::vector<float> all;
    for (const auto& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

std::vector<ChannelLevel> levels(double left, double right)
{
    return {{left, {}, {}}, {right, {}, {}}};
}

} // namespace

TEST(PhaseAnalyzer, NeedsASeriesAndARate)
{
    EXPECT_FALSE(measure({}, 10, {}, {}));
    EXPECT_FALSE(measure({1}, 0, {}, {}));
}

TEST(PhaseAnalyzer, ALongSeriesIsThinnedOut)
{
    std::vector<float> series;
    for (int i = 0; i < 5000; ++i)
        series.push_back(static_cast<float>(i % 2));
    const StereoPhase phase = measured(series);
    EXPECT_EQ(phase.series.size(), 2500U);
    EXPECT_EQ(phase.sampleHz, 5);
    EXPECT_EQ(phase.meanCorrelation, 0) << "the first of each two stays";
    EXPECT_EQ(phase.audibleSeconds, 500);
    EXPECT_EQ(measured(constant(3600, 1)).series.size(), 3600U);
    EXPECT_EQ(measured(constant(7201, 1)).series.size(), 1801U);
}

TEST(PhaseAnalyzer, ValuesHaveTwoDecimals)
{
    EXPECT_THAT(measured({0.123F, -0.126F, 0.125F, -0.125F}).series,
                ElementsAre(0.12F, -0.13F, 0.13F, -0.13F));
}

TEST(PhaseAnalyzer, TwoShortDipsWithAGapStayTwoAndNeitherCounts)
{
    const auto dip = constant(4, -0.8F);
    const auto series = joined({constant(10, 1), dip, constant(2, -0.8F), dip, constant(10, 1)});
    EXPECT_THAT(measured(series).outOfPhaseRuns, ElementsAre(TimeSpan{1, 2}));
    EXPECT_THAT(measured(series, Spans{{0, 1.4}, {1.6, 3}}).outOfPhaseRuns, IsEmpty());
}

TEST(PhaseAnalyzer, HalfASecondIsARunAlsoAtTheEnd)
{
    EXPECT_THAT(measured(joined({constant(7, 1), constant(5, -1)})).outOfPhaseRuns,
                ElementsAre(TimeSpan{0.7, 1.2}));
    EXPECT_THAT(measured(joined({constant(7, 1), constant(4, -1)})).outOfPhaseRuns, IsEmpty());
    EXPECT_THAT(measured(joined({constant(3, 1), constant(5, -1), constant(5, 1)})).outOfPhaseRuns,
                ElementsAre(TimeSpan{0.3, 0.8}));
}

TEST(PhaseAnalyzer, MinusThreeTenthsExactlyOpensNoRun)
{
    EXPECT_THAT(measured(constant(20, -0.3F)).outOfPhaseRuns, IsEmpty());
    EXPECT_THAT(measured(constant(20, -0.304F)).outOfPhaseRuns, IsEmpty()) << "as rounded";
    EXPECT_EQ(measured(constant(20, -0.31F)).outOfPhaseRuns.size(), 1U);
}

TEST(PhaseAnalyzer, OnlyWhatIsAudibleIsJudged)
{
    const auto series = joined({constant(10, 1), constant(10, -1)});
    const StereoPhase phase = measured(series, Spans{{0, 1}});
    EXPECT_EQ(phase.meanCorrelation, 1);
    EXPECT_EQ(phase.audibleSeconds, 1);
    EXPECT_THAT(phase.outOfPhaseRuns, IsEmpty());
    EXPECT_EQ(phase.minWindowCorrelation, -0.6) << "a window may reach beyond";
    EXPECT_EQ(measured(series, Spans{{0.1, 0.3}}).audibleSeconds, 0.2) << "the end is not in it";
}

TEST(PhaseAnalyzer, NothingAudibleIsStillAMeasurement)
{
    const StereoPhase phase = measured(constant(20, 1), Spans{});
    EXPECT_EQ(phase.series.size(), 20U);
    EXPECT_EQ(phase.sampleHz, 10);
    EXPECT_EQ(phase.audibleSeconds, 0);
    EXPECT_EQ(phase.meanCorrelation, 0);
    EXPECT_EQ(phase.minWindowCorrelation, 0);
    EXPECT_THAT(phase.outOfPhaseRuns, IsEmpty());
    EXPECT_FALSE(phase.dualMono);
}

TEST(PhaseAnalyzer, AnIdenticalPairIsDualMonoUnlessItsLevelsDiffer)
{
    const auto same = constant(20, 1);
    EXPECT_TRUE(measured(same).dualMono);
    EXPECT_TRUE(measured(same, {}, levels(-20, -20)).dualMono);
    EXPECT_TRUE(measured(same, {}, levels(-20.5, -20)).dualMono) << "half a decibel is no more";
    EXPECT_FALSE(measured(same, {}, levels(-23, -20)).dualMono);
    EXPECT_TRUE(measured(same, {}, std::vector<ChannelLevel>{{-20, {}, {}}}).dualMono);
    EXPECT_TRUE(measured(same, {}, std::vector<ChannelLevel>{{-20, {}, {}}, {}}).dualMono);
}

TEST(PhaseAnalyzer, DualMonoHasAMeanOf98AndNoMomentBelow90Hundredths)
{
    EXPECT_TRUE(measured(constant(20, 0.98F)).dualMono);
    EXPECT_FALSE(measured(constant(20, 0.97F)).dualMono);
    EXPECT_TRUE(measured(joined({constant(95, 1), constant(5, 0.9F)})).dualMono);
    EXPECT_FALSE(measured(joined({constant(95, 1), constant(5, 0.89F)})).dualMono);
}

TEST(PhaseAnalyzer, TheLowestWindowIsHalfASecondLong)
{
    const auto series = joined({constant(10, 1), constant(5, 0.2F), constant(10, 1)});
    EXPECT_EQ(measured(series).minWindowCorrelation, 0.2);
    EXPECT_EQ(measured({0, 0, 0}).minWindowCorrelation, 1) << "no whole window fits";
    EXPECT_EQ(measure({1, 0, 1}, 1, {}, {})->minWindowCorrelation, 0) << "half a value is one";
}

} // namespace vantroque::PhaseAnalyzer

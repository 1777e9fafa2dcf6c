#include "Records/Profile.h"

#include "Support/TestFolder.h"

#include <gtest/gtest.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

BitrateLadderStep stepFrom(const QString& name, int minLines)
{
    BitrateLadderStep step;
    step.name = name;
    step.minLines = minLines;
    step.sdrMbps = 8;
    step.sdrHighMbps = 12;
    return step;
}

BitrateLadderRule ladder()
{
    return {{stepFrom(u"720p"_s, 720), stepFrom(u"1080p"_s, 1080), stepFrom(u"1080p again"_s, 1080),
             stepFrom(u"480p"_s, 480)}};
}

QString stepName(int width, int height)
{
    const auto step = ladder().step(width, height);
    return step ? step->name : u"none"_s;
}

double mbps(double fps, bool hdr, std::optional<double> hdrMbps = {},
            std::optional<double> hdrHighMbps = {})
{
    BitrateLadderRule rule{{stepFrom(u"1080p"_s, 1080)}};
    rule.steps.front().hdrMbps = hdrMbps;
    rule.steps.front().hdrHighMbps = hdrHighMbps;
    return rule.recommendedMbps(1920, 1080, fps, hdr)->mbps;
}

} // namespace

TEST(BitrateLadder, TheHighestStepWithinTheShorterSideCounts)
{
    EXPECT_EQ(stepName(1280, 720), u"720p"_s);
    EXPECT_EQ(stepName(1920, 1079), u"720p"_s);
    EXPECT_EQ(stepName(1080, 1920), u"1080p"_s);
    EXPECT_EQ(stepName(3840, 2160), u"1080p"_s);
    EXPECT_EQ(stepName(640, 479), u"none"_s);
}

TEST(BitrateLadder, AFrameRateIsHighAboveForty)
{
    EXPECT_EQ(mbps(40, false), 8);
    EXPECT_EQ(mbps(40.001, false), 12);
    EXPECT_EQ(mbps(60, false), 12);
}

TEST(BitrateLadder, AnHdrRateThatIsNotGivenIsTheSdrRateOfTheSameSpeed)
{
    EXPECT_EQ(mbps(25, true), 8);
    EXPECT_EQ(mbps(60, true), 12);
    EXPECT_EQ(mbps(25, true, 10, 15), 10);
    EXPECT_EQ(mbps(60, true, 10, 15), 15);
    EXPECT_EQ(mbps(60, true, 10), 12);
    EXPECT_EQ(mbps(25, false, 10, 15), 8);
}

TEST(BitrateLadder, BelowAllStepsThereIsNoRecommendation)
{
    EXPECT_EQ(ladder().recommendedMbps(320, 240, 25, false), std::nullopt);
    EXPECT_EQ(BitrateLadderRule{}.recommendedMbps(1920, 1080, 25, false), std::nullopt);
}

} // namespace vantroque

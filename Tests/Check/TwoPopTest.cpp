#include "Check/TwoPop.h"

#include <gmock/gmock.h>

namespace vantroque::Checker {

namespace {

constexpr double leaderEnd = 7;
constexpr double fps = 25;
constexpr double frame = 1 / fps;

std::optional<TimeSpan> popOf(const std::vector<TimeSpan>& islands, double rate = fps)
{
    SignalInfo signal;
    signal.audioIslands = islands;
    return lonePopIsland(signal, leaderEnd, rate);
}

bool isTwoPopAt(std::optional<double> hertz)
{
    SignalInfo signal;
    signal.leaderToneHz = hertz;
    return isTwoPop(signal);
}

} // namespace

TEST(LonePopIsland, IsTheOnlySoundTwoSecondsBeforeTheAd)
{
    const TimeSpan pop{5, 5 + frame};
    EXPECT_EQ(popOf({pop}), pop);
    EXPECT_EQ(popOf({pop, {7, 37}}), pop);
}

TEST(LonePopIsland, TwoIslandsBeforeTheAdAreNoPop)
{
    EXPECT_EQ(popOf({{5, 5 + frame}, {6, 6.5}}), std::nullopt);
    EXPECT_EQ(popOf({}), std::nullopt);
}

TEST(LonePopIsland, SoundFromTheLeadersLastFrameOnBelongsToTheAd)
{
    const TimeSpan pop{5, 5 + frame};
    EXPECT_EQ(popOf({pop, {leaderEnd - frame, 37}}), pop);
    EXPECT_EQ(popOf({pop, {leaderEnd - frame - 0.001, 37}}), std::nullopt);
}

TEST(LonePopIsland, LastsThreeFramesAtMost)
{
    EXPECT_TRUE(popOf({{5, 5.12}}));
    EXPECT_FALSE(popOf({{5, 5.16}}));
    EXPECT_TRUE(popOf({{5, 5.1201}})) << "the log's times are rounded";
    EXPECT_FALSE(popOf({{5, 5.1202}}));
    EXPECT_TRUE(popOf({{5, 4.9}})) << "a negative length counts as none";
}

TEST(LonePopIsland, SitsWithinThreeFramesOfItsPlace)
{
    EXPECT_TRUE(popOf({{4.88, 5}}));
    EXPECT_TRUE(popOf({{5.12, 5.16}}));
    EXPECT_FALSE(popOf({{4.84, 4.88}}));
    EXPECT_FALSE(popOf({{5.16, 5.2}}));
}

TEST(LonePopIsland, NeedsIslandsAndAFrameRate)
{
    EXPECT_EQ(lonePopIsland({}, leaderEnd, fps), std::nullopt);
    EXPECT_EQ(popOf({{5, 5}}, 1), std::nullopt);
    EXPECT_EQ(popOf({{5, 5}}, 0), std::nullopt);
    EXPECT_TRUE(popOf({{5, 5}}, 1.5));
}

TEST(TwoPop, IsAToneOfAboutAKilohertz)
{
    EXPECT_TRUE(isTwoPopAt(800));
    EXPECT_TRUE(isTwoPopAt(1300));
    EXPECT_FALSE(isTwoPopAt(799.9));
    EXPECT_FALSE(isTwoPopAt(1300.1));
    EXPECT_FALSE(isTwoPopAt(std::nullopt));
}

} // namespace vantroque::Checker

#include "Signal/ChannelAnalyzer.h"

#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<int> dead(const std::vector<std::optional<double>>& rms)
{
    std::vector<ChannelLevel> levels;
    for (const auto& value : rms)
        levels.push_back({value, {}, {}});
    return ChannelAnalyzer::deadChannels(levels);
}

} // namespace

TEST(ChannelNames, FollowTheLayout)
{
    EXPECT_THAT(ChannelNames::names(u"5.1"_s, 6),
                ElementsAre(u"L"_s, u"R"_s, u"C"_s, u"LFE"_s, u"Ls"_s, u"Rs"_s));
    EXPECT_THAT(ChannelNames::names(u"5.1(side)"_s, 6),
                ElementsAre(u"L"_s, u"R"_s, u"C"_s, u"LFE"_s, u"Sl"_s, u"Sr"_s));
    EXPECT_THAT(ChannelNames::names(u"7.1"_s, 8),
                ElementsAre(u"L"_s, u"R"_s, u"C"_s, u"LFE"_s, u"Lb"_s, u"Rb"_s, u"Ls"_s, u"Rs"_s));
    EXPECT_THAT(ChannelNames::names(u"2.1"_s, 3), ElementsAre(u"L"_s, u"R"_s, u"LFE"_s));
    EXPECT_THAT(ChannelNames::names(u"mono"_s, 1), ElementsAre(u"M"_s));
}

TEST(ChannelNames, ALayoutThatDoesNotFitTheCountIsNotBelieved)
{
    EXPECT_THAT(ChannelNames::names(u"5.1"_s, 2), ElementsAre(u"L"_s, u"R"_s));
    EXPECT_THAT(ChannelNames::names(u"stereo"_s, 1), ElementsAre(u"M"_s));
    EXPECT_THAT(ChannelNames::names({}, 2), ElementsAre(u"L"_s, u"R"_s));
}

TEST(ChannelNames, AreNumbersWhereNoLayoutIsKnown)
{
    EXPECT_THAT(ChannelNames::names(u"octagonal"_s, 3), ElementsAre(u"1"_s, u"2"_s, u"3"_s));
    EXPECT_THAT(ChannelNames::names({}, 0), ElementsAre(u"1"_s));
}

TEST(ChannelNames, OfSixAndEightChannelsAreAssumedWithoutALayout)
{
    EXPECT_EQ(ChannelNames::names({}, 6), ChannelNames::names(u"5.1"_s, 6));
    EXPECT_EQ(ChannelNames::names(u"unknown"_s, 8), ChannelNames::names(u"7.1"_s, 8));
    EXPECT_TRUE(ChannelNames::areAssumed({}, 6));
    EXPECT_TRUE(ChannelNames::areAssumed(u""_s, 8));
    EXPECT_FALSE(ChannelNames::areAssumed(u"5.1"_s, 6));
    EXPECT_FALSE(ChannelNames::areAssumed({}, 2));
    EXPECT_FALSE(ChannelNames::areAssumed({}, 7));
}

TEST(DeadChannels, AreSilentWhileOthersPlay)
{
    EXPECT_THAT(dead({-20, -70}), ElementsAre(1));
    EXPECT_THAT(dead({-99, -20, {}}), ElementsAre(0, 2));
    EXPECT_THAT(dead({}), IsEmpty());
}

TEST(DeadChannels, NoneStandsOutInAQuietFile)
{
    EXPECT_THAT(dead({-45, -70}), IsEmpty());
    EXPECT_THAT(dead({-40, -70}), IsEmpty()) << "it has to be above -40";
    EXPECT_THAT(dead({{}, {}}), IsEmpty());
}

TEST(DeadChannels, OneAtMinus60IsNotDead)
{
    EXPECT_THAT(dead({-20, -60, -60.1}), ElementsAre(2));
}

TEST(LostChannels, AreSilentToTheEndWhileOthersGoOn)
{
    std::vector<std::vector<float>> rms{std::vector<float>(100, -20), std::vector<float>(100, -20)};
    EXPECT_THAT(ChannelAnalyzer::lostChannels(rms, 10), IsEmpty());
    std::fill(rms[1].begin() + 25, rms[1].end(), -99.0F);
    EXPECT_THAT(ChannelAnalyzer::lostChannels(rms, 10), ElementsAre(LostChannel{1, 2.5}));
    rms[1][60] = -59;
    EXPECT_THAT(ChannelAnalyzer::lostChannels(rms, 10), ElementsAre(LostChannel{1, 6.1}))
        << "it came back";
    rms[1][99] = -60;
    EXPECT_THAT(ChannelAnalyzer::lostChannels(rms, 10), IsEmpty()) << "at the end too";
}

TEST(LostChannels, StopInsideAWindowByItsEnergy)
{
    std::vector<std::vector<float>> rms{std::vector<float>(100, -20), std::vector<float>(100, -20)};
    std::fill(rms[1].begin() + 25, rms[1].end(), -99.0F);
    rms[1][24] = -26.9897F; // a fifth of the energy
    const auto lost = ChannelAnalyzer::lostChannels(rms, 10);
    ASSERT_EQ(lost.size(), 1U);
    EXPECT_NEAR(lost[0].start, 2.42, 1e-6);
}

TEST(LostChannels, NeedTwoSecondsInWhichAnotherPlays)
{
    std::vector<std::vector<float>> rms{std::vector<float>(30, -39), std::vector<float>(30, -20)};
    std::fill(rms[1].begin() + 10, rms[1].end(), -60.1F);
    EXPECT_THAT(ChannelAnalyzer::lostChannels(rms, 10), ElementsAre(LostChannel{1, 1}));
    rms[0].back() = -40;
    EXPECT_THAT(ChannelAnalyzer::lostChannels(rms, 10), IsEmpty());
}

TEST(LostChannels, AChannelThatNeverPlayedIsNotLost)
{
    EXPECT_THAT(ChannelAnalyzer::lostChannels(
                    {std::vector<float>(100, -20), std::vector<float>(100, -61)}, 10),
                IsEmpty());
    EXPECT_THAT(ChannelAnalyzer::lostChannels({}, 10), IsEmpty());
    EXPECT_THAT(ChannelAnalyzer::lostChannels({{-20}, {}}, 10), IsEmpty());
}

} // namespace vantroque

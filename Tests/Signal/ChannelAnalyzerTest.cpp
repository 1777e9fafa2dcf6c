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

} // namespace vantroque

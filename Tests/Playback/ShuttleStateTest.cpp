#include "Playback/ShuttleState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using Direction = ShuttleState::Direction;

std::vector<double> ratesOfPresses(double from, Direction direction, int presses)
{
    ShuttleState shuttle{from};
    std::vector<double> rates;
    for (int i = 0; i < presses; ++i) {
        shuttle.press(direction, false);
        rates.push_back(shuttle.rate);
    }
    return rates;
}

/// On which ticks of 1/60 second a frame comes.
std::vector<int> ticksWithAFrame(double rate, double frameRate, int ticks)
{
    std::vector<int> found;
    double carry = 0;
    for (int tick = 1; tick <= ticks; ++tick) {
        const auto step = ShuttleState::advance(rate, frameRate, 1.0 / 60, carry);
        carry = step.carry;
        if (step.frames != 0)
            found.push_back(tick);
    }
    return found;
}

} // namespace

TEST(ShuttleState, EachPressIsFasterUpToSixteen)
{
    EXPECT_THAT(ratesOfPresses(0, Direction::forward, 6), ElementsAre(1, 2, 4, 8, 16, 16));
    EXPECT_THAT(ratesOfPresses(0, Direction::backward, 6), ElementsAre(-1, -2, -4, -8, -16, -16));
    EXPECT_THAT(ratesOfPresses(0.25, Direction::forward, 2), ElementsAre(1, 2));
    EXPECT_THAT(ratesOfPresses(100, Direction::forward, 1), ElementsAre(16));
}

TEST(ShuttleState, TheOtherDirectionStartsAnewAtRealTime)
{
    EXPECT_THAT(ratesOfPresses(16, Direction::backward, 2), ElementsAre(-1, -2));
    EXPECT_THAT(ratesOfPresses(-0.25, Direction::forward, 1), ElementsAre(1));
}

TEST(ShuttleState, SlowIsSlowFromAnySpeed)
{
    for (const double from : {-16.0, -0.25, 0.0, 1.0, 8.0}) {
        ShuttleState shuttle{from};
        shuttle.press(Direction::forward, true);
        EXPECT_EQ(shuttle.rate, 0.25);
        EXPECT_TRUE(shuttle.isSlow());
        shuttle.press(Direction::backward, true);
        EXPECT_EQ(shuttle.rate, -0.25);
        EXPECT_TRUE(shuttle.isReverse());
    }
}

TEST(ShuttleState, TogglesBetweenAStopAndRealTime)
{
    ShuttleState shuttle{-8};
    shuttle.toggle();
    EXPECT_TRUE(shuttle.isStopped());
    shuttle.toggle();
    EXPECT_EQ(shuttle.rate, 1);
    shuttle.stop();
    EXPECT_TRUE(shuttle.isStopped());
    EXPECT_FALSE(shuttle.isSlow());
}

TEST(ShuttleState, SaysItsSpeedUnlessItIsRealTime)
{
    const auto label = [](double rate) { return ShuttleState{rate}.label(); };
    EXPECT_EQ(label(0), std::nullopt);
    EXPECT_EQ(label(1), std::nullopt);
    EXPECT_EQ(label(-1), std::nullopt);
    EXPECT_EQ(label(2), u"2x"_s);
    EXPECT_EQ(label(-16), u"16x rev"_s);
    EXPECT_EQ(label(0.25), u"0.25x"_s);
    EXPECT_EQ(label(-0.25), u"0.25x rev"_s);
}

TEST(ShuttleWalk, SlowMotionGivesAFrameEveryTenTicksWithoutDrift)
{
    // Ten ticks sum up to an ulp less than a frame, so that the first comes a tick later.
    EXPECT_THAT(ticksWithAFrame(0.25, 24, 45), ElementsAre(11, 21, 31, 41));
    EXPECT_EQ(ticksWithAFrame(0.25, 24, 60 * 600 + 1).size(), 3600U);
}

TEST(ShuttleWalk, KeepsThePartOfAFrameInBothDirections)
{
    EXPECT_EQ(ShuttleState::advance(2, 25, 0.1, 0), (ShuttleState::Advance{5, 0}));
    EXPECT_EQ(ShuttleState::advance(1, 25, 0.1, 0.25), (ShuttleState::Advance{2, 0.75}));
    EXPECT_EQ(ShuttleState::advance(-1, 25, 0.1, -0.25), (ShuttleState::Advance{-2, -0.75}));
    EXPECT_EQ(ShuttleState::advance(-1, 25, 0.1, 0.75), (ShuttleState::Advance{-1, -0.75}));
}

TEST(ShuttleWalk, WhatNobodyCouldWalkIsNoStep)
{
    const ShuttleState::Advance none{0, 0};
    EXPECT_EQ(ShuttleState::advance(16, 25, 1e9, 0.5), none);
    EXPECT_EQ(ShuttleState::advance(1, 1e6, 1, 0), none);
    EXPECT_EQ(ShuttleState::advance(-1, 1e6, 1, 0), none);
    EXPECT_EQ(ShuttleState::advance(1, 999'999, 1, 0), (ShuttleState::Advance{999'999, 0}));
    EXPECT_EQ(ShuttleState::advance(1, std::numeric_limits<double>::infinity(), 1, 0), none);
    EXPECT_EQ(ShuttleState::advance(1, std::nan(""), 1, 0.5), none);
}

} // namespace vantroque

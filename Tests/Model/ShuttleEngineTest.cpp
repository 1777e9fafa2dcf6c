#include "VantroqueApp/Model/Playback/ShuttleEngine.h"
#include "Model/HandClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// The shuttle by itself, on a clock that stands still until the test lets time pass.

namespace vantroque {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double tick = 1.0 / 30;

class Shuttle : public testing::Test {
protected:
    Shuttle()
    {
        m_shuttle.applyRate = [this](double rate) {
            m_applied.push_back(rate);
            return rate == 0 || m_canRun;
        };
        m_shuttle.stepFrames = [this](std::int64_t frames) {
            m_steps.push_back(frames);
            return m_hasFilm;
        };
        m_shuttle.frameRate = [] { return 24.0; };
        QObject::connect(&m_shuttle, &ShuttleEngine::changed, &m_shuttle,
                         [this] { m_told.push_back(m_shuttle.state().rate); });
    }

    void press(ShuttleState::Direction direction, bool slow = false)
    {
        m_shuttle.press(direction, slow);
    }
    double rate() const { return m_shuttle.state().rate; }

    static constexpr auto forward = ShuttleState::Direction::forward;
    static constexpr auto backward = ShuttleState::Direction::backward;
    HandClock m_clock;
    ShuttleEngine m_shuttle{m_clock};
    bool m_canRun = true;
    bool m_hasFilm = true;
    std::vector<double> m_applied;
    std::vector<std::int64_t> m_steps;
    std::vector<double> m_told;
};

TEST_F(Shuttle, PressingLThreeTimesGivesFourTimesSpeedAndJThenRealTimeBackwards)
{
    for (int i = 0; i < 3; ++i)
        press(forward);
    EXPECT_THAT(m_applied, ElementsAre(1, 2, 4));
    press(backward);
    EXPECT_EQ(rate(), -1);
    EXPECT_THAT(m_applied, ElementsAre(1, 2, 4, -1));
    EXPECT_THAT(m_told, ElementsAre(1, 2, 4, -1));
    EXPECT_FALSE(m_shuttle.isWalking());
    EXPECT_FALSE(m_clock.isTicking()) << "the player runs by itself";
}

TEST_F(Shuttle, ASlowPressIsAQuarterOfRealTimeWhateverItWas)
{
    press(forward);
    press(backward, true);
    press(forward, true);
    EXPECT_THAT(m_applied, ElementsAre(1, -0.25, 0.25));
}

TEST_F(Shuttle, WhatThePlayerCannotRunAtIsWalked)
{
    m_canRun = false;
    press(backward);
    EXPECT_TRUE(m_shuttle.isWalking());
    EXPECT_THAT(m_applied, ElementsAre(-1, 0)) << "the player rests meanwhile";
    m_clock.pass(1);
    EXPECT_THAT(m_steps, Each(-1));
    EXPECT_EQ(m_steps.size(), 24);
}

TEST_F(Shuttle, TheWalkAt16TimesOn24FramesASecondTakes12Or13FramesATick)
{
    m_canRun = false;
    for (int i = 0; i < 5; ++i)
        press(forward);
    ASSERT_EQ(rate(), 16);
    for (int i = 0; i < 5; ++i)
        m_clock.pass(tick);
    EXPECT_THAT(m_steps, ElementsAre(12, 13, 13, 13, 13)) << "12.8 frames each, 64 in all";
}

TEST_F(Shuttle, ASlowWalkKeepsThePartOfAFrame)
{
    m_canRun = false;
    press(forward, true);
    m_clock.pass(10 + tick / 2);
    EXPECT_EQ(m_steps.size(), 60) << "a quarter of 24 frames for ten seconds";
    EXPECT_THAT(m_steps, Each(1));
}

TEST_F(Shuttle, AWalkEndsWhereThereIsNowhereToGo)
{
    m_canRun = false;
    press(forward);
    m_hasFilm = false;
    m_applied.clear();
    m_clock.pass(1);
    EXPECT_EQ(m_steps.size(), 1) << "one step that led nowhere";
    EXPECT_EQ(rate(), 0);
    EXPECT_FALSE(m_shuttle.isWalking());
    EXPECT_FALSE(m_clock.isTicking());
    EXPECT_THAT(m_applied, IsEmpty()) << "the player never ran";
}

TEST_F(Shuttle, APlayerThatStopsByItselfIsNotToldAgain)
{
    press(forward);
    m_applied.clear();
    m_shuttle.playbackEnded();
    EXPECT_EQ(rate(), 0);
    EXPECT_THAT(m_applied, IsEmpty());
    EXPECT_THAT(m_told, ElementsAre(1, 0));
}

TEST_F(Shuttle, ThePlayersRestIsNoEndOfAWalk)
{
    m_canRun = false;
    press(backward);
    m_shuttle.playbackEnded();
    EXPECT_EQ(rate(), -1);
    m_clock.pass(tick * 2);
    EXPECT_THAT(m_steps, ElementsAre(-1));
}

TEST_F(Shuttle, APressWhileItWalksDecidesAnew)
{
    m_canRun = false;
    press(forward);
    m_canRun = true;
    press(forward);
    EXPECT_FALSE(m_shuttle.isWalking());
    EXPECT_FALSE(m_clock.isTicking());
    EXPECT_EQ(m_applied.back(), 2);
    m_canRun = false;
    press(forward);
    EXPECT_TRUE(m_shuttle.isWalking());
    EXPECT_EQ(m_applied.back(), 0);
}

TEST_F(Shuttle, StopsOnceAndSpaceTogglesRealTime)
{
    m_shuttle.stop();
    EXPECT_THAT(m_applied, IsEmpty()) << "it stands";
    m_shuttle.toggle();
    m_shuttle.stop();
    press(forward);
    press(forward);
    m_shuttle.toggle();
    EXPECT_THAT(m_applied, ElementsAre(1, 0, 1, 2, 0));
}

TEST_F(Shuttle, WithNoPlayerAtAllItWalksAndFindsNowhereToGo)
{
    ShuttleEngine bare(m_clock);
    bare.frameRate = [] { return 25.0; };
    bare.press(forward, false);
    EXPECT_TRUE(bare.isWalking());
    m_clock.pass(1);
    EXPECT_TRUE(bare.state().isStopped());
}

TEST_F(Shuttle, AtItsEndNothingTicks)
{
    m_canRun = false;
    press(forward);
    m_shuttle.tearDown();
    EXPECT_FALSE(m_clock.isTicking());
    EXPECT_EQ(rate(), 0);
}

} // namespace
} // namespace vantroque

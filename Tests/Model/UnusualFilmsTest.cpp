#include "Model/PlayerFixture.h"

#include <limits>

// What a player makes of films that say odd things of themselves.

namespace vantroque {
namespace {

class UnusualFilms : public PlayerTest {};

TEST_F(UnusualFilms, MayHoldFewerFramesThanTheyState)
{
    m_film.hasAll = false;
    open();
    player().seek(99);
    m_film.last = 96;
    m_film.arrive(96);
    ASSERT_TRUE(soonOnScreen(96));
    EXPECT_EQ(frame(), 96) << "the number is that of the picture";
    EXPECT_EQ(player().lastFrameIndex(), 96);
    player().seek(98);
    EXPECT_EQ(frame(), 96);
    m_film.hasAll = true;
    player().seek(90);
    player().togglePlay();
    m_clock.pass(1);
    EXPECT_EQ(frame(), 96);
    EXPECT_EQ(rate(), 0);
}

TEST_F(UnusualFilms, ThatAreTurnedAreShownUpright)
{
    m_film.orientation.quarterTurns = 1;
    open();
    ASSERT_TRUE(soonOnScreen(0));
    EXPECT_EQ(player().shown()->picture.size(), QSize(8, 16));
}

TEST_F(UnusualFilms, WithAPictureThatIsNoneKeepTheOneBefore)
{
    open();
    ASSERT_TRUE(soonOnScreen(0));
    m_film.width = 0;
    player().seek(1);
    m_film.width = 16;
    player().seek(2);
    EXPECT_TRUE(soonOnScreen(2));
}

TEST_F(UnusualFilms, WithoutLengthHaveOneFrame)
{
    for (const double seconds : {0.0, -1.0, 0.01, std::numeric_limits<double>::quiet_NaN()}) {
        open(video(25, seconds));
        EXPECT_EQ(player().lastFrameIndex(), 0) << seconds;
        player().seek(20);
        EXPECT_EQ(frame(), 0);
        EXPECT_TRUE(soonOnScreen(0));
        player().togglePlay();
        m_clock.pass(1);
        EXPECT_EQ(rate(), 0);
        EXPECT_EQ(frame(), 0);
    }
}

TEST_F(UnusualFilms, OfAnyRateArePlayedInTheirOwnFrames)
{
    for (const double frameRate : {0.5, 24000.0 / 1001, 60.0, 240.0}) {
        open(video(frameRate, 20));
        player().togglePlay();
        m_clock.pass(10.0001);
        EXPECT_EQ(frame(), static_cast<std::int64_t>(10.0001 * frameRate)) << frameRate;
        EXPECT_NEAR(player().currentSeconds(), static_cast<double>(frame()) / frameRate, 1e-9);
    }
}

TEST_F(UnusualFilms, WithoutARateAreCountedAt25)
{
    for (const double none : {0.0, -3.0, std::numeric_limits<double>::quiet_NaN()}) {
        open(video(none, 2));
        EXPECT_EQ(player().lastFrameIndex(), 49);
        player().togglePlay();
        m_clock.pass(1);
        EXPECT_EQ(frame(), 25);
        EXPECT_EQ(player().timecode().text(), u"00:00:01:00"_s);
        EXPECT_EQ(m_film.opened.back().rate, FrameRate::television());
    }
}

} // namespace
} // namespace vantroque

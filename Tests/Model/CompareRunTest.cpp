#include "Model/CompareFixture.h"

#include <QSignalSpy>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Aim = std::pair<std::int64_t, double>;

class CompareRun : public CompareTest {};

TEST_F(CompareRun, BeginsAfterTheTimeInWhichEveryEngineFetchesAhead)
{
    open({video(4), video(2)});
    compare().togglePlay();
    EXPECT_TRUE(compare().isRunning());
    EXPECT_EQ(aim(0), Aim(0, 1));
    EXPECT_EQ(aim(1), Aim(0, 1));
    m_clock.pass(preRoll);
    EXPECT_EQ(compare().position(), 0);
    m_clock.pass(1);
    EXPECT_NEAR(compare().position(), 1, 0.01);
    EXPECT_EQ(aim(0), Aim(25, 1));
    EXPECT_EQ(aim(1), Aim(25, 1));
}

TEST_F(CompareRun, ALaterStartIsMetToTheFrame)
{
    open({video(30), video(15)});
    compare().setSyncMode(SyncAlignment::fromEnd);
    EXPECT_EQ(compare().position(), 30) << "where they line up";
    compare().seek(5);
    EXPECT_EQ(compare().startsIn(tile(1)), u"Starts in 0:10"_s);
    compare().togglePlay();
    m_clock.pass(preRoll + 9.98);
    EXPECT_EQ(aim(0).first, 374);
    EXPECT_EQ(aim(1), Aim(0, 1)) << "it fetches ahead";
    m_clock.pass(0.07);
    EXPECT_EQ(aim(1), Aim(1, 1));
    EXPECT_EQ(compare().startsIn(tile(1)), std::nullopt);
    m_clock.pass(14.9);
    EXPECT_EQ(aim(0).first, 748);
    EXPECT_EQ(aim(1).first, 373);
    m_clock.pass(0.1);
    EXPECT_FALSE(compare().isRunning()) << "both end together";
    EXPECT_EQ(aim(0), Aim(749, 0));
    EXPECT_EQ(aim(1), Aim(374, 0));
    EXPECT_EQ(rate(), 0);
}

TEST_F(CompareRun, BackwardsAShorterVersionJoinsAtItsLastFrame)
{
    open({video(30), video(15)});
    compare().seek(30);
    pressJ();
    EXPECT_EQ(aim(0), Aim(749, -1));
    m_clock.pass(preRoll + 14.9);
    EXPECT_EQ(aim(1), Aim(374, -1));
    m_clock.pass(1.1);
    EXPECT_NEAR(static_cast<double>(aim(1).first), 350, 1);
    m_clock.pass(14.1);
    EXPECT_FALSE(compare().isRunning());
    EXPECT_EQ(compare().position(), 0);
    EXPECT_EQ(aim(0), Aim(0, 0));
}

TEST_F(CompareRun, AVersionThatHasEndedShowsItsLastFrame)
{
    open({video(4), video(2)});
    compare().seek(3);
    EXPECT_EQ(aim(1), Aim(49, 0));
    compare().togglePlay();
    EXPECT_EQ(aim(0), Aim(75, 1));
    EXPECT_EQ(aim(1), Aim(49, 0)) << "it has no part in the run";
}

TEST_F(CompareRun, OfOneThatCannotRunAtTheRateAllWalkTogether)
{
    open({video(4), video(4), video(4)});
    m_films[1].canPlay = [](double rate) { return rate <= 8; };
    compare().shuttle().press(ShuttleState::Direction::forward, false);
    while (rate() < 16)
        pressL();
    EXPECT_FALSE(compare().isRunning());
    EXPECT_TRUE(compare().shuttle().isWalking());
    m_clock.pass(0.1);
    EXPECT_GT(aim(0).first, 0);
    EXPECT_EQ(aim(0), aim(1));
    EXPECT_EQ(aim(1), aim(2));
    EXPECT_EQ(aim(2).second, 0);
    m_clock.pass(1);
    EXPECT_EQ(rate(), 0) << "nowhere left to go";
    EXPECT_EQ(aim(2), Aim(99, 0));
}

TEST_F(CompareRun, StopsWhereTheClockSays)
{
    open({video(4, 25), video(4, 60000.0 / 1001)});
    compare().togglePlay();
    m_clock.pass(preRoll + 1.01);
    compare().togglePlay();
    EXPECT_NEAR(compare().position(), 1.01, 1e-9);
    EXPECT_EQ(aim(0), Aim(25, 0));
    EXPECT_EQ(aim(1), Aim(60, 0));
    EXPECT_FALSE(m_clock.isTicking());
}

TEST_F(CompareRun, FromTheEndItGoesOnAtTheStartAndBackwardsFromTheStartNowhere)
{
    open({video(2), video(2)});
    compare().seek(2);
    compare().togglePlay();
    EXPECT_EQ(compare().position(), 0);
    EXPECT_TRUE(compare().isRunning());
    compare().seek(0);
    EXPECT_FALSE(compare().isRunning()) << "a jump ends a run";
    EXPECT_EQ(rate(), 0);
    pressJ();
    m_clock.pass(1);
    EXPECT_EQ(compare().position(), 0);
    EXPECT_EQ(rate(), 0);
}

TEST_F(CompareRun, AnEngineThatDiesBecomesStillsAndTheOthersGoOn)
{
    open({video(4), video(4)});
    const QSignalSpy modes(&compare(), &CompareController::modeChanged);
    compare().togglePlay();
    m_clock.pass(preRoll + 0.5);
    m_films[1].become(HandFilm::State::failed);
    EXPECT_TRUE(tile(1).pictures().areStills());
    EXPECT_EQ(modes.size(), 1);
    m_clock.pass(0.5);
    EXPECT_TRUE(compare().isRunning());
    EXPECT_EQ(aim(0), Aim(25, 1));
    EXPECT_EQ(tile(1).aimed(), 25);
}

TEST_F(CompareRun, WaitsForAVersionThatIsBehind)
{
    open({video(4), video(4)});
    HandFilm& slow = m_films[1];
    slow.hasAll = false;
    slow.isDecoding = true;
    slow.arrive(0);
    compare().togglePlay();
    m_clock.pass(preRoll + 0.3);
    EXPECT_EQ(aim(0), Aim(1, 1)) << "nor does the other go on";
    EXPECT_EQ(aim(1), Aim(1, 1));
    slow.arrive(1);
    m_clock.pass(0.05);
    EXPECT_EQ(aim(0), Aim(2, 1)) << "nor does it hurry then";
    slow.hasAll = true;
    m_clock.pass(1);
    EXPECT_NEAR(compare().position(), 1.11, 0.04);
}

TEST_F(CompareRun, WaitsNotLongForAVersionThatAnswersNoMore)
{
    open({video(4), video(4)});
    m_films[1].hasAll = false;
    m_films[1].isDecoding = true;
    compare().togglePlay();
    m_clock.pass(preRoll + 1);
    EXPECT_GT(compare().position(), 0.3);
    EXPECT_EQ(aim(0), aim(1));
    m_clock.pass(4);
    EXPECT_EQ(compare().position(), 4);
    EXPECT_FALSE(compare().isRunning());
}

TEST_F(CompareRun, WalksNoFartherThanTheSlowestVersion)
{
    open({video(4), video(4)});
    for (HandFilm& film : m_films)
        film.canPlay = [](double rate) { return rate > 0; };
    m_films[1].hasAll = false;
    m_films[1].isDecoding = true;
    compare().seek(2);
    pressJ();
    m_clock.pass(1);
    EXPECT_TRUE(compare().shuttle().isWalking());
    EXPECT_EQ(compare().position(), 2);
    m_films[1].arrive(50);
    m_clock.pass(0.2);
    EXPECT_EQ(aim(0), Aim(49, 0));
    EXPECT_EQ(aim(1), Aim(49, 0));
    m_films[1].isDecoding = false;
    m_clock.pass(3);
    EXPECT_EQ(compare().position(), 0) << "what never comes is left out";
}

TEST_F(CompareRun, AnotherSpeedGoesOnFromWhereItIs)
{
    open({video(20), video(20)});
    pressL();
    m_clock.pass(preRoll + 1);
    pressL();
    EXPECT_EQ(aim(0), Aim(25, rate()));
    EXPECT_GT(rate(), 1);
    m_clock.pass(preRoll + 1);
    EXPECT_NEAR(compare().position(), 1 + rate(), 0.03);
}

TEST_F(CompareRun, ALengthOfNothingAndNoVersionsAtAllRest)
{
    open({video(0), video(0.04)});
    EXPECT_EQ(compare().longestDuration(), 0.04);
    compare().togglePlay();
    m_clock.pass(1);
    EXPECT_FALSE(compare().isRunning());
    EXPECT_EQ(rate(), 0);
    open(std::vector<VideoSummary>());
    EXPECT_EQ(compare().longestDuration(), 0);
    EXPECT_EQ(compare().stepInterval(), 0.04);
    compare().togglePlay();
    m_clock.pass(1);
    EXPECT_EQ(rate(), 0);
    EXPECT_FALSE(compare().walk(1));
}

TEST_F(CompareRun, APictureThatEndsSoonerMovesTheEdgeThatTheyAreAlignedOn)
{
    open({video(4), video(2)});
    compare().setSyncMode(SyncAlignment::fromEnd);
    m_films[1].last = 24;
    m_films[1].arrive(24);
    EXPECT_EQ(tile(1).clip().duration, 1);
    compare().seek(3);
    EXPECT_EQ(aim(1), Aim(0, 0));
    compare().seek(4);
    EXPECT_EQ(aim(1), Aim(24, 0));
}

} // namespace
} // namespace vantroque

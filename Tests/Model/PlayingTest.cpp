#include "Model/PlayerFixture.h"

#include <limits>
#include <random>

// A player in motion, on a clock and an engine in the hands of the test.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using State = PlaybackEngine::State;

class Playing : public PlayerTest {
protected:
    /// Lets a frame's time pass and waits for its picture.
    void passFrames(int count, double frameRate = 25)
    {
        for (int i = 0; i < count; ++i) {
            m_clock.pass(1 / frameRate);
            ASSERT_TRUE(soonOnScreen(frame()));
        }
    }
};

TEST_F(Playing, OpensOnTheFirstFrameAndTellsTheEngineWhatItPlays)
{
    VideoSummary summary = video(24, 10);
    summary.frameCount = 240;
    summary.matrix = ColorMatrix::bt2020;
    PlayedFile file = playedFile(summary);
    file.stream = 1;
    open(file, m_film.maker());
    EXPECT_TRUE(soonOnScreen(0));
    EXPECT_FALSE(player().usesFrameStepper());
    EXPECT_TRUE(player().isReady());
    ASSERT_EQ(m_film.opened.size(), 1);
    EXPECT_EQ(m_film.opened[0].url, m_url);
    EXPECT_EQ(m_film.opened[0].stream, 1);
    EXPECT_EQ(m_film.opened[0].rate, FrameRate::film());
    EXPECT_EQ(m_film.opened[0].frames, 240);
    EXPECT_EQ(m_film.opened[0].matrix, ColorMatrix::bt2020);
    EXPECT_TRUE(m_film.opened[0].fullRange);
    EXPECT_EQ(player().lastFrameIndex(), 239);
}

TEST_F(Playing, ShowsEachFrameWhenItIsDue)
{
    open();
    ASSERT_TRUE(soonOnScreen(0));
    player().togglePlay();
    EXPECT_EQ(player().playhead().speed(), 1);
    for (int i = 1; i <= 30; ++i) {
        m_clock.pass(1.0 / 25);
        EXPECT_EQ(frame(), i);
        EXPECT_DOUBLE_EQ(player().currentSeconds(), i / 25.0);
        ASSERT_TRUE(soonOnScreen(i));
    }
    EXPECT_EQ(player().playhead().droppedFrames(), 0);
}

TEST_F(Playing, ThePictureAndTheNumberAgreeAtRest)
{
    open(video(30000.0 / 1001, 60));
    std::mt19937 chance(3);
    std::uniform_int_distribution<int> anywhere(0, 1797);
    for (int i = 0; i < 50; ++i) {
        const int target = anywhere(chance);
        player().seek(target);
        ASSERT_TRUE(soonOnScreen(target));
        EXPECT_EQ(player().timecode().frame(), target);
        player().togglePlay();
        m_clock.pass(i * 0.013);
        player().togglePlay();
        ASSERT_TRUE(soonOnScreen(frame()));
        EXPECT_EQ(player().timecode().frame(), frame());
    }
}

TEST_F(Playing, APauseStaysOnTheFrameThatWasDue)
{
    open();
    player().togglePlay();
    m_clock.pass(0.999);
    player().togglePlay();
    EXPECT_EQ(frame(), 24) << "and is not rounded up";
    m_clock.pass(5);
    EXPECT_EQ(frame(), 24);
    EXPECT_FALSE(m_clock.isTicking());
    EXPECT_THAT(m_film.aims.back(), Pair(24, 0.0));
}

TEST_F(Playing, FasterAndSlowerAreMultiplesOfRealTime)
{
    open(video(25, 100));
    for (const double speed : {2.0, 4.0, 8.0, 16.0}) {
        if (speed == 2)
            pressL();
        const std::int64_t before = frame();
        pressL();
        ASSERT_EQ(player().playhead().speed(), speed);
        m_clock.pass(1);
        EXPECT_EQ(frame() - before, static_cast<std::int64_t>(25 * speed));
    }
    player().shuttle().press(ShuttleState::Direction::backward, true);
    const std::int64_t before = frame();
    m_clock.pass(4);
    EXPECT_NEAR(static_cast<double>(before - frame()), 25, 1);
}

TEST_F(Playing, BackwardsShowsEachFrameAsLongAsForwards)
{
    open();
    player().seek(50);
    ASSERT_TRUE(soonOnScreen(50));
    pressJ();
    m_clock.pass(0.039);
    EXPECT_EQ(frame(), 50);
    m_clock.pass(0.04);
    EXPECT_EQ(frame(), 49);
    m_clock.pass(0.04);
    EXPECT_EQ(frame(), 48);
}

TEST_F(Playing, AtRealTimeThePictureFollowsTheSound)
{
    open();
    player().seek(25);
    player().togglePlay();
    EXPECT_THAT(m_film.soundsFrom, ElementsAre(1.0));
    m_film.heard = 1.0;
    m_clock.pass(0.3); // in which the sound card has begun
    EXPECT_EQ(frame(), 25);
    for (const double heard : {1.05, 1.3, 2.02}) {
        m_film.heard = heard;
        m_clock.pass(1.0 / 60);
        EXPECT_EQ(frame(), static_cast<std::int64_t>(heard * 25));
    }
}

TEST_F(Playing, WithoutSoundTheMachinesClockServes)
{
    open();
    player().togglePlay();
    m_clock.pass(1);
    EXPECT_EQ(frame(), 25);
}

TEST_F(Playing, ASoundCardThatGoesAwayIsNoBreak)
{
    open();
    player().togglePlay();
    m_film.heard = 1.5;
    m_clock.pass(1.0 / 60);
    EXPECT_EQ(frame(), 37);
    m_film.heard.reset();
    m_clock.pass(0.5);
    EXPECT_EQ(frame(), 50);
}

TEST_F(Playing, SoundThatIsBehindNeverTurnsThePictureBack)
{
    open();
    player().togglePlay();
    m_clock.pass(0.4);
    ASSERT_EQ(frame(), 10);
    m_film.heard = 0.1;
    m_clock.pass(0.1);
    EXPECT_EQ(frame(), 10) << "it waits";
    m_film.heard = std::numeric_limits<double>::quiet_NaN();
    m_clock.pass(0.04);
    EXPECT_EQ(frame(), 11) << "and goes on by the machine's clock";
}

TEST_F(Playing, OnlyRealTimeHasSound)
{
    open();
    pressL();
    EXPECT_TRUE(m_film.isSounding);
    pressL();
    EXPECT_FALSE(m_film.isSounding) << "at twice the speed";
    pressJ();
    EXPECT_FALSE(m_film.isSounding) << "backwards";
    player().shuttle().press(ShuttleState::Direction::forward, true);
    EXPECT_FALSE(m_film.isSounding) << "slowly";
    player().shuttle().stop();
    player().togglePlay();
    EXPECT_TRUE(m_film.isSounding);
    player().togglePlay();
    EXPECT_FALSE(m_film.isSounding);
}

TEST_F(Playing, ComesToRestOnTheLastFrame)
{
    open(video(25, 1));
    player().togglePlay();
    m_clock.pass(0.99);
    EXPECT_EQ(frame(), 24);
    EXPECT_EQ(rate(), 1) << "the last frame stands its time";
    m_clock.pass(0.05);
    EXPECT_EQ(frame(), 24);
    EXPECT_EQ(rate(), 0) << "the shuttle knows";
    EXPECT_FALSE(m_film.isSounding);
    EXPECT_FALSE(m_clock.isTicking());
    EXPECT_TRUE(soonOnScreen(24));
}

TEST_F(Playing, PlayOnTheLastFrameStartsOver)
{
    open(video(25, 1));
    player().seek(24);
    player().togglePlay();
    EXPECT_EQ(frame(), 0);
    EXPECT_THAT(m_film.soundsFrom, ElementsAre(0.0));
    m_clock.pass(0.2);
    EXPECT_EQ(frame(), 5);
}

TEST_F(Playing, JOnTheFirstFrameDoesNotStartThePlayer)
{
    open();
    pressJ();
    EXPECT_EQ(player().playhead().speed(), 0);
    m_clock.pass(0.1);
    EXPECT_EQ(rate(), 0) << "a walk leads nowhere either";
    EXPECT_EQ(frame(), 0);
    EXPECT_FALSE(m_clock.isTicking());
}

TEST_F(Playing, BackwardsItComesToRestOnTheFirstFrame)
{
    open();
    player().seek(5);
    pressJ();
    m_clock.pass(1);
    EXPECT_EQ(frame(), 0);
    EXPECT_EQ(rate(), 0);
    EXPECT_TRUE(soonOnScreen(0));
}

TEST_F(Playing, ARateThatTheEngineCannotHoldIsWalked)
{
    m_film.canPlay = [](double rate) { return rate >= -1; };
    open();
    player().seek(90);
    pressJ();
    EXPECT_EQ(player().playhead().speed(), -1);
    pressJ();
    EXPECT_EQ(rate(), -2);
    EXPECT_TRUE(player().shuttle().isWalking());
    EXPECT_EQ(player().playhead().speed(), 0);
    m_clock.pass(1);
    EXPECT_EQ(frame(), 40);
    EXPECT_TRUE(soonOnScreen(40));
}

TEST_F(Playing, BeforeTheEngineIsReadyTheShuttleWalks)
{
    m_film.state = State::opening;
    open();
    EXPECT_FALSE(player().isReady());
    player().togglePlay();
    EXPECT_TRUE(player().shuttle().isWalking());
    m_clock.pass(0.5);
    EXPECT_EQ(frame(), 12);
    m_film.become(State::ready);
    EXPECT_TRUE(player().isReady());
    player().togglePlay();
    player().togglePlay();
    EXPECT_FALSE(player().shuttle().isWalking());
}

TEST_F(Playing, WhileScrubbingTheNearestFrameThatHasComeIsShown)
{
    m_film.hasAll = false;
    open();
    m_film.arrive(0);
    ASSERT_TRUE(soonOnScreen(0));
    player().seek(60);
    m_film.arrive(48);
    ASSERT_TRUE(soonOnScreen(48)) << "the key frame before it";
    player().seek(70);
    EXPECT_EQ(frame(), 70);
    m_film.arrive(60);
    ASSERT_TRUE(soonOnScreen(60));
    m_film.arrive(52);
    m_film.arrive(99);
    m_film.arrive(70);
    ASSERT_TRUE(soonOnScreen(70));
    m_film.arrive(71);
    player().seek(69);
    m_film.arrive(69);
    ASSERT_TRUE(soonOnScreen(69));
    EXPECT_EQ(frame(), 69);
}

TEST_F(Playing, AFrameFartherAwayDoesNotTakeThePlaceOfANearerOne)
{
    m_film.hasAll = false;
    open();
    player().seek(50);
    m_film.arrive(49);
    ASSERT_TRUE(soonOnScreen(49));
    int pictures = 0;
    QObject::connect(m_player.get(), &PlayerController::pictureChanged, m_player.get(),
                     [&] { ++pictures; });
    m_film.arrive(30);
    m_film.arrive(80);
    m_film.arrive(50);
    ASSERT_TRUE(soonOnScreen(50));
    EXPECT_EQ(pictures, 1);
}

TEST_F(Playing, CountsTheFramesThatWereDueAndNeverShown)
{
    m_film.hasAll = false;
    open();
    m_film.arrive(0);
    ASSERT_TRUE(soonOnScreen(0));
    player().togglePlay();
    for (const int number : {1, 2}) {
        m_clock.pass(1.0 / 25);
        m_film.arrive(number);
        ASSERT_TRUE(soonOnScreen(number));
    }
    EXPECT_EQ(player().playhead().droppedFrames(), 0);
    m_clock.pass(4.0 / 25); // 3 to 5 never come
    EXPECT_EQ(numberOnScreen(), 2) << "the last picture stays";
    m_film.arrive(6);
    ASSERT_TRUE(soonOnScreen(6));
    EXPECT_EQ(player().playhead().droppedFrames(), 3);
    m_clock.pass(3.0 / 25); // 7 and 8 neither
    ASSERT_EQ(frame(), 9);
    player().togglePlay();
    EXPECT_EQ(player().playhead().droppedFrames(), 5) << "9 is still to come";
    m_film.arrive(9);
    ASSERT_TRUE(soonOnScreen(9));
    EXPECT_EQ(player().playhead().droppedFrames(), 5);
    player().togglePlay();
    EXPECT_EQ(player().playhead().droppedFrames(), 0) << "of this run";
}

TEST_F(Playing, ALateFrameIsBetterThanNone)
{
    m_film.hasAll = false;
    open();
    m_film.arrive(0);
    player().togglePlay();
    m_clock.pass(3.0 / 25);
    ASSERT_EQ(frame(), 3);
    m_film.arrive(2);
    EXPECT_TRUE(soonOnScreen(2));
    m_film.arrive(4);
    m_film.arrive(1);
    m_clock.pass(1.0 / 25);
    EXPECT_TRUE(soonOnScreen(4)) << "neither early nor back";
}

TEST_F(Playing, FramesThatAreLeftOutOnPurposeAreNoDrops)
{
    m_film.hasAll = false;
    open(video(25, 100));
    for (int key = 0; key <= 2400; key += 12)
        m_film.atHand.insert(key);
    m_film.arrive(0);
    ASSERT_TRUE(soonOnScreen(0));
    for (int i = 0; i < 5; ++i)
        pressL();
    std::int64_t before = 0;
    for (int i = 0; i < 60; ++i) {
        m_clock.pass(1.0 / 60);
        ASSERT_TRUE(soon([&] { return std::abs(player().shown()->frame - frame()) <= 12; }))
            << frame() << " is due and " << player().shown()->frame << " shown";
        EXPECT_GE(player().shown()->frame, before) << "it never goes back";
        before = player().shown()->frame;
    }
    EXPECT_EQ(frame(), 400);
    EXPECT_EQ(player().playhead().droppedFrames(), 0);
}

TEST_F(Playing, ASeekKeepsItRunning)
{
    open();
    player().togglePlay();
    m_clock.pass(0.2);
    player().seek(50);
    EXPECT_EQ(frame(), 50);
    EXPECT_THAT(m_film.soundsFrom, ElementsAre(0.0, 2.0));
    m_clock.pass(0.2);
    EXPECT_EQ(frame(), 55);
    player().seek(10);
    passFrames(5);
    EXPECT_EQ(frame(), 15);
    EXPECT_EQ(rate(), 1);
    EXPECT_EQ(player().playhead().droppedFrames(), 0) << "who seeks drops nothing";
}

TEST_F(Playing, SeeksStayInTheFilm)
{
    open(video(25, 1));
    player().seek(-3);
    EXPECT_EQ(frame(), 0);
    player().seek(1'000'000'000'000);
    EXPECT_EQ(frame(), 24);
    EXPECT_TRUE(soonOnScreen(24));
}

TEST_F(Playing, ArrowsStepFromRest)
{
    open();
    player().togglePlay();
    m_clock.pass(0.4);
    player().step(1);
    EXPECT_EQ(rate(), 0);
    EXPECT_EQ(frame(), 11);
    player().step(-10);
    EXPECT_EQ(frame(), 1);
    player().step(-10);
    EXPECT_EQ(frame(), 0);
    player().jump(true);
    EXPECT_EQ(frame(), 99);
    player().step(1);
    EXPECT_EQ(frame(), 99);
    player().jump(false);
    EXPECT_TRUE(soonOnScreen(0));
}

TEST_F(Playing, AnEngineThatFailsLeavesStillsAndSaysSo)
{
    open();
    ASSERT_TRUE(soonOnScreen(0));
    player().togglePlay();
    passFrames(5);
    int modes = 0;
    QObject::connect(m_player.get(), &PlayerController::modeChanged, m_player.get(),
                     [&] { ++modes; });
    m_film.become(State::failed);
    EXPECT_TRUE(player().usesFrameStepper());
    EXPECT_EQ(modes, 1);
    EXPECT_EQ(rate(), 0);
    EXPECT_EQ(frame(), 5) << "where it stood";
    EXPECT_EQ(numberOnScreen(), 5) << "the last picture stays";
    EXPECT_FALSE(m_film.isSounding);
    EXPECT_FALSE(player().isReady());
    EXPECT_TRUE(soon([&] { return m_film.engines == 0; })) << "it holds much memory";
    EXPECT_EQ(numberOnScreen(), 5);
    EXPECT_EQ(PlayerController::stepperHelp(), u"Playback isn't available for this format"_s);
    EXPECT_EQ(PlayerController::stepperNote(),
              u"This format cannot play here. It steps frame by frame instead. Stills and guides "
              u"work as usual."_s);
    player().togglePlay();
    EXPECT_TRUE(player().shuttle().isWalking());
}

TEST_F(Playing, AnEngineThatFailsAtOnceLeavesStills)
{
    m_film.state = State::opening;
    open();
    m_film.become(State::failed);
    EXPECT_TRUE(player().usesFrameStepper());
    EXPECT_FALSE(player().shown());
}

TEST_F(Playing, ClosingStopsItAll)
{
    open();
    player().togglePlay();
    EXPECT_EQ(m_film.engines, 1);
    close();
    EXPECT_EQ(m_film.engines, 0);
    EXPECT_FALSE(m_film.isSounding);
    EXPECT_FALSE(m_clock.isTicking());
}

TEST_F(Playing, KeysReachThePlayerThroughItsActions)
{
    open();
    const TransportActions actions = player().transportActions();
    actions.togglePlay();
    EXPECT_EQ(rate(), 1);
    actions.shuttle(ShuttleState::Direction::backward, true);
    EXPECT_EQ(rate(), -0.25);
    actions.shuttleStop();
    actions.seek(*Timecode::parse(u"00:00:02:00"_s, 25.0));
    EXPECT_EQ(actions.timecode().text(), u"00:00:02:00"_s);
    actions.step(-10);
    EXPECT_EQ(frame(), 40);
    actions.jump(true);
    EXPECT_EQ(frame(), 99);
    EXPECT_FALSE(actions.isComposing());
    EXPECT_FALSE(actions.undo()) << "there is nothing to undo";
    EXPECT_FALSE(actions.redo());
    player().zoom().setContainerSize({16, 8});
    actions.zoom(ZoomCommand::zoomIn);
    EXPECT_EQ(player().zoom().zoom().scale, 2);
    EXPECT_EQ(actions.escape, nullptr);
}

} // namespace
} // namespace vantroque

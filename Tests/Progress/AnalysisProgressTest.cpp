#include "Progress/AnalysisProgress.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace vantroque;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Stage = AnalysisProgress::Stage;
using LiveEvent = AnalysisProgress::LiveEvent;

namespace {

/// A clock that stands still until it is moved.
class TestClock {
public:
    AnalysisProgress::Options options() const
    {
        AnalysisProgress::Options options;
        options.now = [this] {
            return AnalysisProgress::TimePoint(std::chrono::milliseconds(m_now));
        };
        return options;
    }
    void advance(std::chrono::milliseconds time) { m_now += time.count(); }

private:
    std::atomic<std::int64_t> m_now = 1'000'000;
};

bool becomesTrue(const std::function<bool()>& condition)
{
    for (int i = 0; i < 1000 && !condition(); ++i)
        std::this_thread::sleep_for(10ms);
    return condition();
}

} // namespace

TEST(AnalysisProgress, StagesHaveWordsForPeople)
{
    EXPECT_EQ(AnalysisProgress::label(Stage::queued), u"Waiting"_s);
    EXPECT_EQ(AnalysisProgress::label(Stage::probing), u"Reading the file"_s);
    EXPECT_EQ(AnalysisProgress::label(Stage::decoding), u"Measuring picture and sound"_s);
    EXPECT_EQ(AnalysisProgress::label(Stage::readingText), u"Reading on-screen text"_s);
    EXPECT_EQ(AnalysisProgress::label(Stage::readingSlate), u"Reading the slate"_s);
    EXPECT_EQ(AnalysisProgress::label(Stage::measuringPop), u"Measuring the 2-pop"_s);
    EXPECT_EQ(AnalysisProgress::label(Stage::scoring), u"Checking against the platforms"_s);
    EXPECT_EQ(AnalysisProgress::label(Stage::done), u"Done"_s);
}

TEST(AnalysisProgress, EachChangeOfStageReachesTheListenerAtOnce)
{
    std::vector<Stage> seen;
    AnalysisProgress progress([&](const auto& snapshot) { seen.push_back(snapshot.stage); });
    for (const Stage stage : {Stage::decoding, Stage::decoding, Stage::scoring, Stage::done})
        progress.set(stage);
    EXPECT_THAT(seen, testing::ElementsAre(Stage::decoding, Stage::scoring, Stage::done));
}

TEST(AnalysisProgress, TwoForcedNotificationsAtTheSameTimeBothReachTheListener)
{
    const TestClock clock;
    int calls = 0;
    AnalysisProgress progress([&](const auto&) { ++calls; }, clock.options());
    progress.append(LiveEvent{LiveEvent::Kind::blackStart, 1});
    progress.append(LiveEvent{LiveEvent::Kind::blackEnd, 2});
    EXPECT_EQ(calls, 2);
    EXPECT_THAT(progress.snapshot().events,
                testing::ElementsAre(LiveEvent{LiveEvent::Kind::blackStart, 1},
                                     LiveEvent{LiveEvent::Kind::blackEnd, 2}));
}

TEST(AnalysisProgress, AFloodOfSamplesIsThrottledAndItsLastStateStillArrives)
{
    std::atomic<int> calls = 0;
    std::atomic<double> reached = 0;
    AnalysisProgress progress([&](const auto& snapshot) {
        ++calls;
        reached = snapshot.mediaSeconds;
    });
    for (int i = 1; i <= 1000; ++i)
        progress.noteMediaTime(i);
    EXPECT_TRUE(becomesTrue([&] { return reached == 1000; }));
    EXPECT_LT(calls, 200);
}

TEST(AnalysisProgress, TheMediaTimeNeverFalls)
{
    AnalysisProgress progress;
    progress.noteMediaTime(5);
    progress.noteMediaTime(3);
    progress.append(AnalysisProgress::AudioSample{4, nullptr});
    EXPECT_EQ(progress.snapshot().mediaSeconds, 5);
}

TEST(AnalysisProgress, TheHeartbeatRunsFromTheProbeToTheEnd)
{
    std::atomic<int> calls = 0;
    AnalysisProgress progress([&](const auto&) { ++calls; });
    progress.set(Stage::probing);
    EXPECT_TRUE(becomesTrue([&] { return calls >= 4; }));
    progress.set(Stage::done);
    const int atTheEnd = calls;
    std::atomic<int> beats = 0;
    AnalysisProgress another([&](const auto&) { ++beats; });
    another.set(Stage::probing);
    EXPECT_TRUE(becomesTrue([&] { return beats >= 5; })) << "of a heart that goes on";
    EXPECT_LE(calls, atTheEnd + 1); // one may have been on its way
    EXPECT_EQ(progress.snapshot().fraction, 1);
}

TEST(AnalysisProgress, WithoutAListenerNothingIsComputed)
{
    int looksAtTheClock = 0;
    AnalysisProgress::Options options;
    options.now = [&] {
        ++looksAtTheClock;
        return AnalysisProgress::TimePoint();
    };
    AnalysisProgress progress({}, options);
    progress.append(LiveEvent{LiveEvent::Kind::silenceStart, 1});
    progress.noteMediaTime(3);
    EXPECT_EQ(looksAtTheClock, 0);
}

TEST(AnalysisProgress, AListenerThatWasTakenAwayIsNotCalled)
{
    int calls = 0;
    AnalysisProgress progress([&](const auto&) { ++calls; });
    progress.setOnUpdate({});
    progress.set(Stage::scoring);
    EXPECT_EQ(calls, 0);
}

TEST(AnalysisProgress, TheListenerMayAskForASnapshot)
{
    AnalysisProgress* self = nullptr;
    Stage seen = Stage::queued;
    AnalysisProgress progress([&](const auto&) { seen = self->snapshot().stage; });
    self = &progress;
    progress.set(Stage::scoring);
    EXPECT_EQ(seen, Stage::scoring);
}

TEST(AnalysisProgress, TheProbeBringsWhatTheDisplayShows)
{
    MediaInfo media;
    media.durationSeconds = 30;
    media.video = VideoStreamInfo{};
    media.video->width = 1920;
    media.video->height = 1080;
    media.audio = AudioStreamInfo{};
    media.audio->channels = 6;
    media.audio->channelLayout = u"5.1"_s;
    AnalysisProgress progress;
    progress.set(media);
    const auto state = progress.snapshot();
    EXPECT_EQ(state.duration, 30);
    EXPECT_EQ(state.pictureWidth, 1920);
    EXPECT_EQ(state.pictureHeight, 1080);
    EXPECT_EQ(state.summaryLine, media.summaryLine());
    EXPECT_EQ(state.channelCount, 6);
    EXPECT_EQ(state.channelLayout, u"5.1"_s);
}

TEST(AnalysisProgress, ManyThreadsMayReportAtOnce)
{
    std::atomic<int> calls = 0;
    AnalysisProgress progress([&](const auto&) { ++calls; });
    progress.set(Stage::probing);
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&, thread] {
                for (int i = 0; i < 200; ++i) {
                    progress.noteMediaTime(i);
                    progress.append(LiveEvent{LiveEvent::Kind::freezeStart, double(i)});
                    progress.noteTextFrames(i, i, 0.1, thread);
                    progress.snapshot();
                }
            });
    }
    EXPECT_EQ(progress.snapshot().events.size(), 800U);
    EXPECT_GE(calls, 800);
}

#include "Analysis/TextOnTheRoad.h"

#include <mutex>

// Text in the whole analysis.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
using Stage = AnalysisProgress::Stage;

TEST(TextOnTheRoad, IsScoredAndListed)
{
    Readers readers;
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()), {withPlacement({}, 0.4)},
                          {.recognizers = &readers.pool});
    ASSERT_TRUE(analysis);
    expectTitled(analysis->media.signal);
    EXPECT_THAT(placementOf(analysis->report),
                ElementsAre(u"\"TEXT 0\" reaches 50% at 00:00:01:05, past 40%."_s));
    std::vector<SignalEvent> events = analysis->report.events.value();
    std::erase_if(
        events, [](const SignalEvent& event) { return event.kind != SignalEvent::Kind::safeArea; });
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0].frame, 30);
    EXPECT_EQ(events[0].endFrame, 90);
}

TEST(TextOnTheRoad, WithoutRecognizersIsNotScanned)
{
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()), {withPlacement(0.9, 0.95)});
    ASSERT_TRUE(analysis);
    EXPECT_EQ(analysis->media.signal->textScanAttempted, std::nullopt);
    EXPECT_EQ(analysis->media.signal->slateTextLines, std::nullopt);
    EXPECT_THAT(placementOf(analysis->report), ElementsAre(u"text not scanned"_s));
}

TEST(TextOnTheRoad, WithARecognizerThatCannotStartCouldNotRun)
{
    RecognizerPool pool(FakeRecognizer::notStarting());
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()), placement, {.recognizers = &pool});
    ASSERT_TRUE(analysis);
    EXPECT_EQ(analysis->media.signal->textScanAttempted, true);
    EXPECT_EQ(analysis->media.signal->textRegions, std::nullopt);
    EXPECT_THAT(placementOf(analysis->report), ElementsAre(u"the text scan could not run"_s));
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST(TextOnTheRoad, WithARecognizerThatFailsHoldsNoText)
{
    for (const auto& start : {FakeRecognizer::failing(), FakeRecognizer::throwing()}) {
        RecognizerPool pool(start);
        const auto analysis = Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()), placement,
                                                {.recognizers = &pool});
        ASSERT_TRUE(analysis);
        EXPECT_THAT(placementOf(analysis->report),
                    ElementsAre(u"no text held on screen for a second or longer"_s));
    }
}

TEST(TextOnTheRoad, HasItsStages)
{
    std::mutex mutex;
    std::vector<Stage> stages;
    {
        AnalysisProgress progress([&](const AnalysisProgress::Snapshot& snapshot) {
            const std::scoped_lock lock(mutex);
            if (stages.empty() || stages.back() != snapshot.stage)
                stages.push_back(snapshot.stage);
        });
        Readers readers;
        ASSERT_TRUE(Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()), placement,
                                      {.recognizers = &readers.pool}, &progress));
        EXPECT_EQ(progress.snapshot().textFramesRead, 9);
    }
    EXPECT_THAT(stages, ElementsAre(Stage::probing, Stage::decoding, Stage::readingText,
                                    Stage::readingSlate, Stage::measuringPop, Stage::readingText,
                                    Stage::scoring, Stage::done));
}

TEST(TextOnTheRoad, OfSoundAloneIsNone)
{
    Readers readers;
    Profile both = withSlate(1);
    both.content->textSafeFraction = 0.9;
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(Clips::wav()), {both}, {.recognizers = &readers.pool});
    ASSERT_TRUE(analysis);
    EXPECT_THAT(analysis->media.signal->textRegions, Optional(IsEmpty()));
    EXPECT_THAT(analysis->media.signal->slateTextLines, Optional(IsEmpty()));
    EXPECT_EQ(analysis->media.signal->textScanAttempted, true);
    EXPECT_EQ(readers.frames + readers.slates, 0);
}

} // namespace
} // namespace vantroque

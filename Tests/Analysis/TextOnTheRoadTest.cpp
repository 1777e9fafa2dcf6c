#include "Analysis/Analyzer.h"
#include "Check/TextRegions.h"
#include "Probe/Prober.h"
#include "Support/BoxClips.h"
#include "Support/Clips.h"
#include "Support/FakeRecognizer.h"
#include "Support/FakeTools.h"

#include <mutex>

// Text in the picture on the way from a file to its report.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using FakeRecognizer::Lines;
using FakeRecognizer::Subject;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
using Stage = AnalysisProgress::Stage;
namespace fs = std::filesystem;

MediaInfo probed(const fs::path& clip)
{
    return Prober::probe(FileUrl::fromPath(clip)).value();
}

Profile withSlate(double seconds)
{
    Profile profile = bareProfile();
    profile.content = ContentRule();
    profile.content->slateSeconds = seconds;
    return profile;
}

const std::vector<Profile> placement{withPlacement(0.9, 0.95)};

/// Recognizers that read white boxes in the middle of a frame, and on a slate always one line.
class Readers {
public:
    RecognizerPool pool{FakeRecognizer::answering(
        [this](const QImage& picture, Subject subject, auto deadline) -> Result<Lines> {
            if (subject == Subject::slate) {
                ++slates;
                return Lines{{BoxClips::middle, u"ABCD1234"_s}};
            }
            ++frames;
            return FakeRecognizer::lookingAt({BoxClips::middle})(picture, subject, deadline);
        })};
    std::atomic<int> frames = 0;
    std::atomic<int> slates = 0;
};

/// The text of `BoxClips::titled`, to the frame.
void expectTitled(const std::optional<SignalInfo>& signal)
{
    ASSERT_TRUE(signal);
    EXPECT_EQ(signal->textScanAttempted, true);
    ASSERT_THAT(signal->textRegions, Optional(SizeIs(1)));
    const TextRegion& region = signal->textRegions->front();
    EXPECT_NEAR(region.start * 25, 30, 1e-6);
    EXPECT_NEAR(region.end * 25, 90, 1e-6);
    EXPECT_EQ(region.text, u"TEXT 0"_s);
}

void expectDecodedText(const MediaInfo& media)
{
    Readers readers;
    const auto signal = Analyzer::decode(media, placement, {.recognizers = &readers.pool}, nullptr);
    ASSERT_TRUE(signal) << signal.error().description.toStdString();
    expectTitled(*signal);
}

/// ffmpeg on a disk that is full as soon as one frame for reading has been written.
void fillTheDiskWithFrames(const FakeTools& tools)
{
    tools.put("ffmpeg", R"(
case "$*" in *%05d.png*)
    for word; do case "$word" in */%05d.png) folder="${word%/*}" ;; esac; done
    cp "$TEST_FRAME" "$folder/00001.png"
    : > "$folder/00002.png"
    echo "av_interleaved_write_frame(): No space left on device" >&2
    exit 1 ;;
esac
exec ffmpeg "$@")");
}

/// The measured word of each row of text placement.
std::vector<QString> placementOf(const FileReport& report)
{
    std::vector<QString> measured;
    for (const ProfileReport& profile : report.profiles)
        for (const CheckResult& row : profile.checks)
            if (row.id == u"text-safe"_s || row.id == u"text-zones"_s)
                measured.push_back(row.measured);
    return measured;
}

// On the decode.

TEST(TextOnTheDecode, IsReadToTheFrame)
{
    expectDecodedText(probed(BoxClips::titled()));
}

TEST(TextOnTheDecode, OfAPictureBehindACoverIsRead)
{
    const MediaInfo media = probed(Clips::coverAhead(BoxClips::titled("covered.mp4")));
    ASSERT_EQ(media.video->specifier(), "v:1");
    expectDecodedText(media);
}

TEST(TextOnTheDecode, OfATurnedPictureIsReadAsItIsStored)
{
    const auto upright = BoxClips::titled("upright.mp4");
    expectDecodedText(probed(Media::make(
        {"turned.mp4", {"-i", upright.native(), "-c", "copy", "-metadata:s:v:0", "rotate=90"}})));
}

TEST(TextOnTheDecode, TakesNoFurtherDecode)
{
    const MediaInfo media = probed(BoxClips::make({.name = "plain-gray.mkv"}));
    const FakeTools tools;
    tools.record("ffmpeg");
    Readers readers;
    const auto signal = Analyzer::decode(media, placement, {.recognizers = &readers.pool}, nullptr);
    ASSERT_TRUE(signal);
    EXPECT_THAT(signal->textRegions, Optional(IsEmpty()));
    EXPECT_THAT(tools.calls("ffmpeg"), SizeIs(1));
    EXPECT_EQ(readers.frames, 9) << "every twelfth of a hundred";
}

TEST(TextOnTheDecode, LeavesNoFilesBehind)
{
    const MediaInfo media = probed(BoxClips::titled());
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    expectDecodedText(media);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST(TextOnTheDecode, IsNotReadUnlessAProfileLimitsItsPlace)
{
    Readers readers;
    const auto signal = Analyzer::decode(probed(BoxClips::titled()), {withSlate(1)},
                                         {.recognizers = &readers.pool}, nullptr);
    ASSERT_TRUE(signal);
    EXPECT_EQ(signal->textScanAttempted, std::nullopt);
    EXPECT_EQ(signal->textRegions, std::nullopt);
    EXPECT_EQ(readers.frames, 0);
}

TEST(TextOnTheDecode, EndsWithADecodeThatFails)
{
    // It writes more and more frames, then fails.
    const MediaInfo media = probed(BoxClips::titled());
    const FakeTools tools;
    const auto frame =
        Media::make({"frame.png", {"-f", "lavfi", "-i", "color=gray:s=16x16", "-frames:v", "1"}});
    tools.put("ffmpeg", "for word; do case $word in *%05d.png) folder=${word%/*};; esac; done\n"
                        "for i in 1 2 3 4 5 6 7 8; do cp '"
                            + QByteArray::fromStdString(frame.native())
                            + "' $folder/0000$i.png; done\n"
                              "echo broken >&2; exit 1");
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    Readers readers;
    const auto signal = Analyzer::decode(media, placement, {.recognizers = &readers.pool}, nullptr);
    ASSERT_FALSE(signal);
    EXPECT_EQ(signal.error().description, u"ffmpeg exited with status 1: broken\n"_s);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST(TextOnTheDecode, ThatFillsTheDiskIsGivenUpAndTheRestMeasured)
{
    const TestFolder folder;
    QImage frame(64, 64, QImage::Format_RGB32);
    frame.fill(Qt::white);
    frame.save(QString::fromStdString((folder / "frame.png").native()));
    const ScopedVariable shown("TEST_FRAME", folder / "frame.png");
    const MediaInfo media = probed(BoxClips::titled());
    const FakeTools tools;
    fillTheDiskWithFrames(tools);
    Readers readers;
    const auto signal = Analyzer::decode(media, placement, {.recognizers = &readers.pool}, nullptr);
    ASSERT_TRUE(signal) << signal.error().description.toStdString();
    EXPECT_TRUE(signal->levels);
    EXPECT_EQ(signal->textScanAttempted, true);
    EXPECT_EQ(signal->textRegions, std::nullopt) << "what was read of the first frame is no scan";
}

TEST(TextOnTheDecode, EndsWithADecodeThatCannotStart)
{
    const MediaInfo media = probed(BoxClips::titled());
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    Readers readers;
    MediaInfo analysed = media;
    EXPECT_FALSE(Analyzer::rescore(analysed, placement, &readers.pool));
    EXPECT_EQ(analysed, media) << "stays as it was";
    EXPECT_EQ(readers.frames, 0);
}

// The whole analysis.

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

// Stored records.

/// A measured file whose text nobody has looked for.
MediaInfo measured()
{
    MediaInfo media = probed(BoxClips::titled());
    media.signal = SignalInfo();
    media.signal->blackRuns.emplace();
    return media;
}

/// A file measured before black was, and so decoded again.
MediaInfo measuredLongAgo()
{
    MediaInfo media = measured();
    media.signal->blackRuns.reset();
    return media;
}

TEST(TextOfARecord, IsReadInADecodeOfItsOwn)
{
    MediaInfo media = measured();
    media.signal->integratedLKFS = -99;
    Readers readers;
    const auto report = Analyzer::rescore(media, placement, &readers.pool);
    ASSERT_TRUE(report);
    expectTitled(media.signal);
    EXPECT_EQ(media.signal->integratedLKFS, -99) << "the rest is not measured again";
    EXPECT_THAT(placementOf(*report), ElementsAre(u"The text reaches 50%, inside 90%."_s));
}

TEST(TextOfARecord, IsReadOnce)
{
    MediaInfo media = measured();
    Readers readers;
    ASSERT_TRUE(Analyzer::rescore(media, placement, &readers.pool));
    const int before = readers.frames;
    EXPECT_GT(before, 0);
    const MediaInfo once = media;
    ASSERT_TRUE(Analyzer::rescore(media, {withPlacement(0.8, 0.9)}, &readers.pool));
    EXPECT_EQ(readers.frames, before);
    EXPECT_EQ(media, once);
}

TEST(TextOfARecord, IsCarriedOverANewDecode)
{
    MediaInfo media = measuredLongAgo();
    media.signal->textScanAttempted = true;
    media.signal->textRegions = {reaching(0.7)};
    media.signal->slateTextLines = {u"OLD"_s};
    Profile profile = withPlacement(0.9, 0.95);
    profile.content->slateSeconds = 1;
    Readers readers;
    ASSERT_TRUE(Analyzer::rescore(media, {profile}, &readers.pool));
    EXPECT_NE(media.signal->blackRuns, std::nullopt) << "decoded again";
    EXPECT_THAT(media.signal->textRegions, Optional(ElementsAre(reaching(0.7))));
    EXPECT_EQ(media.signal->textScanAttempted, true);
    EXPECT_THAT(media.signal->slateTextLines, Optional(ElementsAre(u"OLD"_s)));
    EXPECT_EQ(readers.frames + readers.slates, 0);
}

TEST(TextOfARecord, ThatCouldNotBeReadIsNotTriedAgain)
{
    MediaInfo media = measuredLongAgo();
    media.signal->textScanAttempted = true;
    Readers readers;
    const auto report = Analyzer::rescore(media, placement, &readers.pool);
    ASSERT_TRUE(report);
    EXPECT_EQ(media.signal->textRegions, std::nullopt);
    EXPECT_THAT(placementOf(*report), ElementsAre(u"the text scan could not run"_s));
    EXPECT_EQ(readers.frames, 0);
}

TEST(TextOfARecord, RidesOnTheDecodeThatIsNeededAnyway)
{
    MediaInfo media = measuredLongAgo();
    media.signal->textRegions = {reaching(0.7)};
    const FakeTools tools;
    tools.record("ffmpeg");
    Readers readers;
    ASSERT_TRUE(Analyzer::rescore(media, placement, &readers.pool));
    expectTitled(media.signal);
    EXPECT_THAT(tools.calls("ffmpeg"), SizeIs(3)) << "the decode and two edges";
}

TEST(TextOfARecord, WithoutRecognizersStaysUnread)
{
    MediaInfo media = measured();
    const auto report = Analyzer::rescore(media, placement);
    ASSERT_TRUE(report);
    EXPECT_EQ(media.signal->textScanAttempted, std::nullopt);
    EXPECT_THAT(placementOf(*report), ElementsAre(u"text not scanned"_s));
}

TEST(TextOfARecord, TakesThePicturesDurationAndNotTheFiles)
{
    // The sound goes on for longer than the two minutes up to which two frames a second are read.
    MediaInfo media = measured();
    media.durationSeconds = 500;
    Readers readers;
    Analyzer::scanTextIfNeeded(media, placement, &readers.pool, nullptr);
    expectTitled(media.signal);
    EXPECT_EQ(media.durationSeconds, 500);
}

// Slates.

TEST(Slate, IsReadAtHalfItsLength)
{
    MediaInfo media = measured();
    const FakeTools tools;
    tools.record("ffmpeg");
    Readers readers;
    Analyzer::readSlateIfNeeded(media, {withSlate(1), withSlate(3), bareProfile(), withSlate(2)},
                                &readers.pool);
    EXPECT_THAT(media.signal->slateTextLines, Optional(ElementsAre(u"ABCD1234"_s)));
    ASSERT_THAT(tools.calls("ffmpeg"), SizeIs(1));
    const auto call = tools.calls("ffmpeg")[0];
    const auto place = std::ranges::find(call, "-ss");
    ASSERT_NE(place, call.end());
    EXPECT_EQ(*std::next(place), "1.500000") << "of the longest";
}

TEST(Slate, IsReadOnce)
{
    MediaInfo media = measured();
    Readers readers;
    ASSERT_TRUE(Analyzer::rescore(media, {withSlate(2)}, &readers.pool));
    ASSERT_TRUE(Analyzer::rescore(media, {withSlate(3)}, &readers.pool));
    EXPECT_EQ(readers.slates, 1);
    EXPECT_THAT(media.signal->slateTextLines, Optional(ElementsAre(u"ABCD1234"_s)));
}

TEST(Slate, ThatCannotBeReadHasNoLines)
{
    for (const auto& start : {FakeRecognizer::failing(), FakeRecognizer::notStarting()}) {
        MediaInfo media = measured();
        RecognizerPool pool(start);
        Analyzer::readSlateIfNeeded(media, {withSlate(2)}, &pool);
        EXPECT_THAT(media.signal->slateTextLines, Optional(IsEmpty()));
    }
}

TEST(Slate, IsNotReadUnlessAProfileDescribesOne)
{
    MediaInfo media = measured();
    Readers readers;
    Analyzer::readSlateIfNeeded(media, placement, &readers.pool);
    EXPECT_EQ(media.signal->slateTextLines, std::nullopt);
    media.signal.reset();
    Analyzer::readSlateIfNeeded(media, {withSlate(2)}, &readers.pool);
    EXPECT_EQ(media.signal, std::nullopt) << "without a decode";
    EXPECT_EQ(readers.slates, 0);
}

// Event lists.

std::vector<QString> eventsOf(const MediaInfo& media)
{
    std::vector<QString> ids;
    const FileReport report = Analyzer::report(media, placement);
    for (const SignalEvent& event : report.events.value())
        ids.push_back(event.id);
    return ids;
}

TEST(EventList, OfTextAloneIsNumbered)
{
    EXPECT_THAT(eventsOf(spotWith({reaching(1, 20), reaching(1, 10)})),
                ElementsAre(u"safeArea-250-0"_s, u"safeArea-500-1"_s));
}

TEST(EventList, MixesTextWithTheRestByFrame)
{
    MediaInfo media = spotWith({reaching(1, 20), reaching(1, 10)});
    media.signal->cadence = FrameCadence();
    media.signal->cadence->duplicateFrames = {100, 250, 400};
    media.signal->cadence->duplicateCount = 3;
    media.signal->cadence->duplicateCause = DuplicateCause::scattered;
    EXPECT_THAT(eventsOf(media),
                ElementsAre(u"duplicateFrame-100-0"_s, u"duplicateFrame-250-1"_s,
                            u"safeArea-250-2"_s, u"duplicateFrame-400-3"_s, u"safeArea-500-4"_s));
}

TEST(EventList, TheCapIsForTheRestAlone)
{
    MediaInfo media = spotWith({reaching(1, 20), reaching(1, 10)});
    media.signal->cadence = FrameCadence();
    for (int frame = 0; frame < 250; ++frame)
        media.signal->cadence->duplicateFrames.push_back(frame);
    media.signal->cadence->duplicateCount = 250;
    media.signal->cadence->duplicateCause = DuplicateCause::scattered;
    EXPECT_THAT(eventsOf(media), SizeIs(200 + 1 + 2));
}

TEST(EventList, OfAFileWithNothingToTellIsAbsent)
{
    EXPECT_EQ(Analyzer::report(spotWith({reaching(0.5)}), placement).events, std::nullopt);
}

TEST(EventList, LeavesOutWhatTheKeptProfilesDoNotAsk)
{
    // A profile of zones alone does not apply to a wide picture, and its rules do not either.
    Profile zones = withPlacement({}, {}, {{u"tiktok"_s}});
    zones.content->slateSeconds = 5;
    zones.content->slateBlackSeconds = 2;
    MediaInfo media = spotWith({reaching(1, 2)});
    media.signal->blackRuns = {{5, 7}};
    const auto report = Analyzer::report(media, {zones, placement[0]});
    ASSERT_THAT(report.profiles, SizeIs(1));
    EXPECT_THAT(report.events, Optional(SizeIs(1))) << "no leader hides the text";
}

} // namespace
} // namespace vantroque

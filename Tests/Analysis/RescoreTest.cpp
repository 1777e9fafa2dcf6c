#include "Analysis/Analyzer.h"
#include "Analysis/Watcher.h"
#include "Check/Builders.h"
#include "Probe/Prober.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

// A stored record and other profiles: what is measured again, what stays, and what nobody runs.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Analyzer::rescore;
using Media::operator+;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;
using Stage = AnalysisProgress::Stage;

Profile loud()
{
    Profile profile = bareProfile();
    profile.id = u"loud"_s;
    profile.loudness = LoudnessRule();
    return profile;
}

Profile withLeader()
{
    Profile profile = bareProfile();
    profile.id = u"leader"_s;
    profile.content = ContentRule();
    profile.content->slateSeconds = 3;
    profile.content->slateBlackSeconds = 1;
    return profile;
}

/// A second of ProRes with a tone; its probe takes no ffmpeg.
fs::path clip()
{
    return Media::make({"clip.mov", Clips::picture("64x64", "25", "1") + Clips::tone("1")
                                        + std::vector<std::string>{"-c:v", "prores_ks", "-c:a",
                                                                   "pcm_s16le", "-ac", "2"}});
}

MediaInfo probed()
{
    return Prober::probe(FileUrl::fromPath(clip())).value();
}

MediaInfo analysed()
{
    return Analyzer::analyze(FileUrl::fromPath(clip()), {loud()}).value().media;
}

/// The same with readings that no decode of this clip gives.
MediaInfo read()
{
    MediaInfo media = analysed();
    SignalInfo& signal = *media.signal;
    signal.leaderToneHz = 1234;
    signal.leaderPopPeakDb = -12;
    signal.leaderToneChecked = true;
    signal.slateTextLines = {u"ACME"_s, u"SPOT 30"_s};
    signal.textRegions = {TextRegion()};
    signal.textScanAttempted = true;
    return media;
}

/// Counts what runs, from its making on.
class Runs {
public:
    Runs()
    {
        m_tools.record("ffprobe");
        m_tools.record("ffmpeg");
    }
    std::size_t probes() const { return m_tools.calls("ffprobe").size(); }
    /// Full decodes, not the sparse sample that a deep picture takes beside.
    std::ptrdiff_t decodes() const
    {
        return std::ranges::count_if(m_tools.calls("ffmpeg"), [](const auto& call) {
            return std::ranges::any_of(call, [](const std::string& word) {
                return word.find("ebur128") != std::string::npos;
            });
        });
    }
    bool none() const { return probes() == 0 && m_tools.calls("ffmpeg").empty(); }

private:
    const FakeTools m_tools;
};

/// Rescores, and gives the stages that were shown once it had begun.
std::vector<Stage> stagesOf(MediaInfo media, const std::vector<Profile>& profiles)
{
    Watcher watcher;
    {
        AnalysisProgress progress(watcher.callback());
        EXPECT_TRUE(rescore(media, profiles, nullptr, &progress));
    }
    EXPECT_TRUE(std::ranges::is_sorted(watcher.fractions()));
    EXPECT_EQ(watcher.last().fraction, 1);
    auto stages = watcher.stages();
    std::erase(stages, Stage::queued);
    return stages;
}

// Nothing to measure.

TEST(Rescore, OfWhatIsMeasuredRunsNothing)
{
    const MediaInfo stored = analysed();
    MediaInfo media = stored;
    const Runs runs;
    const auto report = rescore(media, {bareProfile(), loud()});
    ASSERT_TRUE(report);
    EXPECT_EQ(*report, Analyzer::report(stored, {bareProfile(), loud()}));
    EXPECT_EQ(media, stored);
    EXPECT_TRUE(runs.none());
}

TEST(Rescore, WithoutProfilesRunsNothing)
{
    MediaInfo media = probed();
    const Runs runs;
    const auto report = rescore(media, {});
    ASSERT_TRUE(report);
    EXPECT_THAT(report->profiles, IsEmpty());
    EXPECT_EQ(media.signal, std::nullopt);
    EXPECT_TRUE(runs.none());
}

TEST(Rescore, OfAMissingFileStillScoresWhatIsStored)
{
    MediaInfo media = analysed();
    media.url = FileUrl::fromPath("/nowhere.mov");
    EXPECT_TRUE(rescore(media, {loud()}));
}

// What is decoded.

TEST(Rescore, MeasuresWhatNobodyHasAskedForBefore)
{
    MediaInfo media = probed();
    const Runs runs;
    const auto report = rescore(media, {loud()});
    ASSERT_TRUE(report);
    EXPECT_EQ(runs.probes(), 0U);
    EXPECT_EQ(runs.decodes(), 1);
    EXPECT_EQ(media, analysed());
    EXPECT_EQ(*report, Analyzer::report(media, {loud()}));
}

TEST(Rescore, ForASlateReadsTheStoredDecode)
{
    MediaInfo media = analysed();
    const Runs runs;
    ASSERT_TRUE(rescore(media, {withLeader()}));
    EXPECT_EQ(runs.probes(), 0U);
    EXPECT_EQ(runs.decodes(), 0);
    EXPECT_EQ(media.signal->leaderToneChecked, true);
}

TEST(Rescore, ForASlateDecodesAnewWithoutBlackRuns)
{
    MediaInfo media = analysed();
    const auto before = media.signal->blackRuns;
    media.signal->blackRuns.reset();
    const Runs runs;
    ASSERT_TRUE(rescore(media, {withLeader()}));
    EXPECT_EQ(runs.probes(), 0U);
    EXPECT_EQ(runs.decodes(), 1);
    EXPECT_EQ(media.signal->blackRuns, before);
}

// What stays.

TEST(Rescore, ANewDecodeKeepsTheOlderReadings)
{
    MediaInfo media = read();
    const SignalInfo old = *media.signal;
    media.signal->blackRuns.reset();
    media.signal->slateTextLines = old.slateTextLines;
    media.signal->integratedLKFS = -5;
    media.signal->detail = DetailEstimate();
    const Runs runs;
    ASSERT_TRUE(rescore(media, {withLeader()}));
    ASSERT_EQ(runs.decodes(), 1);
    const SignalInfo& fresh = *media.signal;
    EXPECT_EQ(fresh.leaderToneHz, 1234);
    EXPECT_EQ(fresh.leaderPopPeakDb, -12);
    EXPECT_EQ(fresh.leaderToneChecked, true);
    EXPECT_EQ(fresh.slateTextLines, old.slateTextLines);
    EXPECT_EQ(fresh.textRegions, old.textRegions);
    EXPECT_EQ(fresh.textScanAttempted, true);
    EXPECT_EQ(fresh.integratedLKFS, old.integratedLKFS) << "measured anew";
    EXPECT_EQ(fresh, old);
}

TEST(Rescore, TextThatNoScanFoundDoesNotStay)
{
    for (const auto attempted : {std::optional<bool>(), std::optional(false)}) {
        MediaInfo media = read();
        media.signal->blackRuns.reset();
        media.signal->textScanAttempted = attempted;
        ASSERT_TRUE(rescore(media, {withLeader()}));
        EXPECT_EQ(media.signal->textRegions, std::nullopt);
        EXPECT_EQ(media.signal->textScanAttempted, std::nullopt);
        EXPECT_EQ(media.signal->leaderToneHz, 1234);
    }
}

TEST(Rescore, AScanThatFoundNothingStays)
{
    MediaInfo media = read();
    media.signal->blackRuns.reset();
    media.signal->textRegions.emplace();
    ASSERT_TRUE(rescore(media, {withLeader()}));
    EXPECT_EQ(media.signal->textRegions, std::vector<TextRegion>());
    EXPECT_EQ(media.signal->textScanAttempted, true);
}

// Records of another version.

class RescoreOfAnotherVersion : public testing::TestWithParam<std::optional<int>> {
protected:
    /// Older, and with a wrong idea of the picture.
    static MediaInfo aged(MediaInfo media)
    {
        media.analysisVersion = GetParam();
        media.video->width = 32;
        media.video->codec = u"unknown"_s;
        return media;
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, RescoreOfAnotherVersion,
                         testing::Values(std::nullopt, std::optional(4), std::optional(6)));

TEST_P(RescoreOfAnotherVersion, ProbesAgain)
{
    MediaInfo media = aged(probed());
    const Runs runs;
    const auto report = rescore(media, {bareProfile()});
    ASSERT_TRUE(report);
    EXPECT_GT(runs.probes(), 0U);
    EXPECT_EQ(runs.decodes(), 0);
    EXPECT_EQ(media, probed());
    EXPECT_EQ(*report, Analyzer::report(media, {bareProfile()}));
}

TEST_P(RescoreOfAnotherVersion, MeasuresWhatIsAsked)
{
    MediaInfo media = aged(probed());
    const Runs runs;
    ASSERT_TRUE(rescore(media, {loud()}));
    EXPECT_EQ(runs.decodes(), 1);
    EXPECT_EQ(media, analysed());
}

TEST_P(RescoreOfAnotherVersion, MeasuresAgainWhatWasMeasured)
{
    MediaInfo media = aged(read());
    media.signal->integratedLKFS = -5;
    const Runs runs;
    ASSERT_TRUE(rescore(media, {bareProfile()}));
    EXPECT_EQ(runs.decodes(), 1);
    EXPECT_EQ(media, read()) << "with the older readings";
}

// Failures.

TEST(RescoreFailure, OfTheProbeLeavesTheRecord)
{
    MediaInfo media = analysed();
    media.analysisVersion = 4;
    media.url = FileUrl::fromPath("/nowhere.mov");
    const MediaInfo stored = media;
    const auto report = rescore(media, {loud()});
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().description,
              u"ffprobe exited with status 1: /nowhere.mov: No such file or directory\n"_s);
    EXPECT_EQ(media, stored);
}

TEST(RescoreFailure, OfTheDecodeLeavesTheRecord)
{
    MediaInfo older = read();
    older.analysisVersion = 4;
    MediaInfo withoutRuns = read();
    withoutRuns.signal->blackRuns.reset();
    const FakeTools tools;
    tools.put("ffmpeg", "echo 'cannot decode' >&2; exit 4");
    for (const MediaInfo& stored : {older, withoutRuns, probed()}) {
        MediaInfo media = stored;
        Watcher watcher;
        AnalysisProgress progress(watcher.callback());
        const auto report = rescore(media, {loud(), withLeader()}, nullptr, &progress);
        ASSERT_FALSE(report);
        EXPECT_EQ(report.error().description, u"ffmpeg exited with status 4: cannot decode\n"_s);
        EXPECT_EQ(media, stored);
        EXPECT_EQ(watcher.stages().back(), Stage::decoding);
    }
}

// What is shown.

TEST(RescoreProgress, OfWhatIsMeasuredIsOnlyItsEnd)
{
    EXPECT_THAT(stagesOf(analysed(), {loud()}), ElementsAre(Stage::done));
}

TEST(RescoreProgress, OfTheReadersAloneHasNoDecode)
{
    EXPECT_THAT(stagesOf(analysed(), {withLeader()}),
                ElementsAre(Stage::readingSlate, Stage::measuringPop, Stage::readingText,
                            Stage::scoring, Stage::done));
}

TEST(RescoreProgress, OfADecodeHasNoProbe)
{
    EXPECT_THAT(stagesOf(probed(), {loud()}),
                ElementsAre(Stage::decoding, Stage::readingSlate, Stage::measuringPop,
                            Stage::readingText, Stage::scoring, Stage::done));
}

TEST(RescoreProgress, OfAnotherVersionHasAll)
{
    MediaInfo media = analysed();
    media.analysisVersion = 4;
    EXPECT_THAT(stagesOf(media, {loud()}),
                ElementsAre(Stage::probing, Stage::decoding, Stage::readingSlate,
                            Stage::measuringPop, Stage::readingText, Stage::scoring, Stage::done));
}

TEST(RescoreProgress, ShowsPicturesOnRequest)
{
    MediaInfo media = probed();
    Watcher watcher;
    AnalysisProgress progress(watcher.callback(), {.wantsPreview = true});
    ASSERT_TRUE(rescore(media, {loud()}, nullptr, &progress));
    ASSERT_TRUE(progress.snapshot().preview);
    EXPECT_EQ(progress.snapshot().preview->width, 64);
}

} // namespace
} // namespace vantroque

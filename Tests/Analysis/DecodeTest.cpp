#include "Analysis/Analyzer.h"
#include "Analysis/Watcher.h"
#include "Check/Builders.h"
#include "Probe/Prober.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

// The decode of a file, alone and within its analysis.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
namespace fs = std::filesystem;
using Stage = AnalysisProgress::Stage;
using Words = std::vector<std::string>;

Profile asking()
{
    Profile profile = bareProfile();
    profile.loudness = LoudnessRule();
    return profile;
}

/// A second of ProRes in ten bits with a tone; its probe takes no ffmpeg. Wider than any preview.
fs::path wide()
{
    return Media::make({"wide.mov", Clips::picture("1024x64", "25", "1") + Clips::tone("1")
                                        + Words{"-c:v", "prores_ks", "-pix_fmt", "yuv422p10le",
                                                "-c:a", "pcm_s24le", "-ac", "2"}});
}

MediaInfo probed(const fs::path& file)
{
    return Prober::probe(FileUrl::fromPath(file)).value();
}

/// The filter graph of each run of ffmpeg that has one.
std::vector<std::string> graphs(const FakeTools& tools)
{
    std::vector<std::string> found;
    for (const auto& call : tools.calls("ffmpeg"))
        if (const auto graph = std::ranges::find(call, "-filter_complex"); graph != call.end())
            found.push_back(*(graph + 1));
    return found;
}

/// The graphs of the one full decode; a deep picture takes a sparse sample as well.
std::vector<std::string> decodes(const FakeTools& tools)
{
    auto found = graphs(tools);
    std::erase_if(found, [](const std::string& graph) {
        return graph.find("signalstats") == std::string::npos
               && graph.find("ebur128") == std::string::npos;
    });
    return found;
}

class Decode : public testing::Test {
protected:
    ~Decode() override { EXPECT_THAT(m_scratch.names(), IsEmpty()) << "scratch left"; }

    const FakeTools m_tools;

private:
    const TestFolder m_scratch;
    const ScopedVariable m_temporary{"TMPDIR", m_scratch.path()};
};

TEST_F(Decode, MeasuresPictureAndSoundInOneRun)
{
    const MediaInfo media = probed(wide());
    m_tools.record("ffmpeg");
    const auto signal = Analyzer::decode(media, {}, {}, nullptr);
    ASSERT_TRUE(signal) << signal.error().description.toStdString();
    EXPECT_TRUE(signal->levels && signal->cadence && signal->phase && signal->channelLevels
                && signal->integratedLKFS && signal->blackRuns);
    EXPECT_EQ(decodes(m_tools).size(), 1U);
}

TEST_F(Decode, EstimatesTheDetailOnRequestOnly)
{
    const MediaInfo media = probed(wide());
    m_tools.record("ffmpeg");
    const auto without = Analyzer::decode(media, {}, {}, nullptr);
    const auto with = Analyzer::decode(media, {}, {.includeDetail = true}, nullptr);
    ASSERT_TRUE(without && with);
    EXPECT_FALSE(without->detail && without->detail->halfResPsnrDb);
    ASSERT_TRUE(with->detail);
    EXPECT_TRUE(with->detail->halfResPsnrDb);
    ASSERT_EQ(decodes(m_tools).size(), 2U);
    EXPECT_THAT(decodes(m_tools)[0], Not(HasSubstr("psnr")));
    EXPECT_THAT(decodes(m_tools)[1], HasSubstr("psnr"));
}

TEST_F(Decode, ShowsPicturesToOneWhoWantsThem)
{
    const MediaInfo media = probed(wide());
    m_tools.record("ffmpeg");
    Watcher watcher;
    {
        AnalysisProgress progress(watcher.callback(), {.wantsPreview = true});
        ASSERT_TRUE(Analyzer::decode(media, {}, {}, &progress));
        ASSERT_TRUE(progress.snapshot().preview);
        EXPECT_EQ(progress.snapshot().preview->width, 960);
        EXPECT_EQ(progress.snapshot().preview->height, 60);
    }
    EXPECT_THAT(decodes(m_tools), ElementsAre(HasSubstr("scale=960:60:flags=area")));
}

TEST_F(Decode, TakesNoPicturesForOthers)
{
    const MediaInfo media = probed(wide());
    m_tools.record("ffmpeg");
    Watcher watcher;
    {
        AnalysisProgress progress(watcher.callback());
        ASSERT_TRUE(Analyzer::decode(media, {}, {}, &progress));
    }
    EXPECT_FALSE(watcher.sawPreview());
    EXPECT_FALSE(watcher.last().frames.empty());
    EXPECT_THAT(decodes(m_tools), ElementsAre(Not(HasSubstr("[vprev]"))));
}

TEST_F(Decode, TakesNoFramesForText)
{
    const MediaInfo media = probed(wide());
    m_tools.record("ffmpeg");
    const auto signal = Analyzer::decode(media, {}, {}, nullptr);
    ASSERT_TRUE(signal);
    EXPECT_EQ(signal->textRegions, std::nullopt);
    EXPECT_EQ(signal->textScanAttempted, std::nullopt);
    EXPECT_THAT(decodes(m_tools), ElementsAre(Not(HasSubstr("[vtext]"))));
}

TEST_F(Decode, FailsWithTheToolsWords)
{
    const MediaInfo media = probed(wide());
    m_tools.put("ffmpeg", "echo 'cannot decode' >&2; exit 4");
    const auto signal = Analyzer::decode(media, {}, {}, nullptr);
    ASSERT_FALSE(signal);
    EXPECT_EQ(signal.error().description, u"ffmpeg exited with status 4: cannot decode\n"_s);
}

TEST_F(Decode, OfAMissingFileFails)
{
    MediaInfo media = probed(wide());
    media.url = FileUrl::fromPath("/nowhere.mov");
    const auto signal = Analyzer::decode(media, {}, {.includeDetail = true}, nullptr);
    ASSERT_FALSE(signal);
    EXPECT_THAT(signal.error().description.toStdString(), HasSubstr("No such file or directory"));
}

// Within an analysis.

TEST_F(Decode, BelongsToAnAnalysisThatAsksForMeasurements)
{
    m_tools.record("ffmpeg");
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(wide()), {bareProfile(), asking()});
    ASSERT_TRUE(analysis);
    EXPECT_EQ(analysis->media.signal, Analyzer::decode(analysis->media, {}, {}, nullptr).value());
    EXPECT_TRUE(analysis->report.measurements);
    EXPECT_EQ(decodes(m_tools).size(), 2U);
}

TEST_F(Decode, IsLeftOutWhenNoProfileAsks)
{
    m_tools.record("ffmpeg");
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(wide()), {bareProfile()}, {.includeDetail = true});
    ASSERT_TRUE(analysis);
    EXPECT_EQ(analysis->media.signal, std::nullopt);
    EXPECT_THAT(graphs(m_tools), IsEmpty());
}

TEST_F(Decode, MayBeSkipped)
{
    m_tools.record("ffmpeg");
    Watcher watcher;
    {
        AnalysisProgress progress(watcher.callback());
        const auto analysis = Analyzer::analyze(FileUrl::fromPath(wide()), {asking()},
                                                {.skipSignalPass = true}, &progress);
        ASSERT_TRUE(analysis);
        EXPECT_EQ(analysis->media.signal, std::nullopt);
        EXPECT_EQ(analysis->report.measurements, std::nullopt);
    }
    EXPECT_THAT(graphs(m_tools), IsEmpty());
    EXPECT_EQ(std::ranges::count(watcher.stages(), Stage::decoding), 0);
    EXPECT_EQ(watcher.stages().back(), Stage::done);
}

TEST_F(Decode, ThatFailsEndsTheAnalysis)
{
    m_tools.put("ffmpeg", "echo 'cannot decode' >&2; exit 4");
    Watcher watcher;
    AnalysisProgress progress(watcher.callback());
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(wide()), {asking()}, {}, &progress);
    ASSERT_FALSE(analysis);
    EXPECT_EQ(analysis.error().description, u"ffmpeg exited with status 4: cannot decode\n"_s);
    EXPECT_THAT(watcher.stages(), ElementsAre(Stage::probing, Stage::decoding));
}

TEST_F(Decode, ComesBetweenTheProbeAndTheVerdicts)
{
    Watcher watcher;
    {
        AnalysisProgress progress(watcher.callback());
        ASSERT_TRUE(Analyzer::analyze(FileUrl::fromPath(wide()), {asking()}, {}, &progress));
    }
    EXPECT_THAT(watcher.stages(),
                ElementsAre(Stage::probing, Stage::decoding, Stage::readingSlate,
                            Stage::measuringPop, Stage::readingText, Stage::scoring, Stage::done));
    EXPECT_TRUE(std::ranges::is_sorted(watcher.fractions()));
    EXPECT_GE(watcher.fractions().front(), 0);
    EXPECT_LT(watcher.fractions().end()[-2], 1);
    EXPECT_EQ(watcher.fractions().back(), 1);
    EXPECT_EQ(watcher.last().secondsRemaining, 0);
    EXPECT_EQ(watcher.last().duration, 1);
}

TEST_F(Decode, OfSoundAloneMeasuresTheSound)
{
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(Clips::wav()), {asking()});
    ASSERT_TRUE(analysis);
    ASSERT_TRUE(analysis->media.signal);
    EXPECT_TRUE(analysis->media.signal->integratedLKFS);
    EXPECT_EQ(analysis->media.signal->levels, std::nullopt);
}

} // namespace
} // namespace vantroque

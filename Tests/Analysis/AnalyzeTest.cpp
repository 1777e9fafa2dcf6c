#include "Analysis/Analyzer.h"
#include "Check/Builders.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"

#include <mutex>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::EndsWith;
using testing::IsEmpty;
using Stage = AnalysisProgress::Stage;

Profile mxfOnly()
{
    Profile profile = bareProfile();
    profile.container = ContainerRule{{u"mxf"_s}, {}, {}, {}};
    return profile;
}

/// Listens to an analysis, on whatever threads it reports.
class Listener {
public:
    AnalysisProgress::OnUpdate callback()
    {
        return [this](const AnalysisProgress::Snapshot& snapshot) {
            const std::scoped_lock lock(m_mutex);
            m_last = snapshot;
            if (m_stages.empty() || m_stages.back() != snapshot.stage)
                m_stages.push_back(snapshot.stage);
        };
    }
    std::vector<Stage> stages() const { return m_stages; }
    const AnalysisProgress::Snapshot& last() const { return m_last; }

private:
    std::mutex m_mutex;
    std::vector<Stage> m_stages;
    AnalysisProgress::Snapshot m_last;
};

TEST(Analyze, ProbesAndScores)
{
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(Clips::plain()), {mxfOnly()});
    ASSERT_TRUE(analysis) << analysis.error().description.toStdString();
    EXPECT_EQ(analysis->media.video->frameCount, 25);
    EXPECT_TRUE(analysis->media.isCurrentAnalysis());
    EXPECT_EQ(analysis->media.signal, std::nullopt);
    EXPECT_EQ(analysis->report, Analyzer::report(analysis->media, {mxfOnly()}));
    EXPECT_EQ(analysis->report.profiles.at(0).verdict(), Verdict::fail);
}

TEST(Analyze, WithoutProfilesMakesNoSignalPass)
{
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(Clips::plain()), {});
    ASSERT_TRUE(analysis);
    EXPECT_EQ(analysis->media.signal, std::nullopt);
    EXPECT_THAT(analysis->report.profiles, IsEmpty());
}

TEST(Analyze, ShowsItsStagesAndWhatTheProbeFound)
{
    Listener listener;
    {
        AnalysisProgress progress(listener.callback());
        ASSERT_TRUE(
            Analyzer::analyze(FileUrl::fromPath(Clips::plain()), {mxfOnly()}, {}, &progress));
    }
    const auto stages = listener.stages();
    ASSERT_FALSE(stages.empty());
    EXPECT_EQ(stages.front(), Stage::probing);
    EXPECT_EQ(stages.back(), Stage::done);
    EXPECT_TRUE(std::ranges::count(stages, Stage::scoring) == 1);
    EXPECT_TRUE(std::ranges::count(stages, Stage::decoding) == 0);
    EXPECT_EQ(listener.last().duration, 1.0);
    EXPECT_EQ(listener.last().pictureWidth, 320);
    EXPECT_EQ(listener.last().pictureHeight, 180);
    EXPECT_EQ(listener.last().channelCount, 2);
    EXPECT_EQ(listener.last().channelLayout, u"stereo"_s);
    EXPECT_THAT(listener.last().summaryLine.toStdString(), EndsWith("320x180 · H264"));
}

TEST(Analyze, FailsWithTheProbesWords)
{
    Listener listener;
    AnalysisProgress progress(listener.callback());
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath("/nowhere.mp4"), {mxfOnly()}, {}, &progress);
    ASSERT_FALSE(analysis);
    EXPECT_EQ(analysis.error().description,
              u"ffprobe exited with status 1: /nowhere.mp4: No such file or directory\n"_s);
    EXPECT_EQ(listener.stages(), std::vector{Stage::probing});
}

TEST(Analyze, SoundAloneIsAnalysed)
{
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(Clips::wav()), {mxfOnly()});
    ASSERT_TRUE(analysis);
    EXPECT_EQ(analysis->report.video, std::nullopt);
    EXPECT_EQ(analysis->report.profiles.size(), 1U);
}

} // namespace
} // namespace vantroque

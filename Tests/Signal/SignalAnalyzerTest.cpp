#include "Signal/SignalPass.h"

#include "Signal/FailingCalls.h"

namespace vantroque {
namespace {

using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
namespace fs = std::filesystem;

// The place for side files.

TEST_F(SignalPass, WithoutAFifoTheDecodeRunsWithoutPreview)
{
    AnalysisProgress progress;
    whileFailing(makingFifos, [&] {
        const SignalInfo info = value(pass(Clips::plain(), {.previewWidth = 960}, &progress));
        EXPECT_EQ(info.cadence->frameCountSeen, 25);
    });
    EXPECT_EQ(progress.snapshot().preview, nullptr);
    EXPECT_THAT(progress.snapshot().frames, SizeIs(5));
}

TEST_F(SignalPass, WithoutAScratchFolderWhatNeedsNoneIsMeasured)
{
    const MediaInfo media = probed(Clips::tenBit());
    AnalysisProgress progress;
    whileFailing(makingFolders, [&] {
        const SignalInfo info =
            value(pass(media, {.includeDetail = true, .previewWidth = 960}, &progress));
        EXPECT_EQ(info.cadence->frameCountSeen, 25);
        EXPECT_TRUE(info.levels);
        EXPECT_EQ(info.detail->samplesMeasured, 0);
    });
    EXPECT_EQ(progress.snapshot().preview, nullptr);
}

TEST_F(SignalPass, AToolThatNeverOpensThePreviewHoldsNothingUp)
{
    ffmpegWrites(frameBytes, filterLines, 0);
    AnalysisProgress progress;
    EXPECT_TRUE(pass(film(), {.previewWidth = 960}, &progress));
    EXPECT_EQ(progress.snapshot().preview, nullptr);
}

// What is asked for beside the measurements.

/// How many tenths of a second of sound were measured.
std::size_t soundRead(const SignalInfo& info)
{
    return info.channelSeries ? info.channelSeries->rms.at(0).size() : 0;
}

/// Pixels, from the header of a PNG file.
int widthOfPng(const fs::path& file)
{
    return contents(file).mid(16, 4).toHex().toInt(nullptr, 16);
}

TEST_F(SignalPass, WritesTheFramesForTextIntoTheirFolder)
{
    const fs::path folder = m_folder.path() / "not" / "yet" / "there";
    SignalAnalyzer::TextFrameRequest request;
    request.directory = folder;
    request.maxWidth = 160;
    value(pass(Clips::plain(), {.textFrames = request}));
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().native());
    EXPECT_THAT(names, testing::UnorderedElementsAre("00001.png", "00002.png", "00003.png"))
        << "every twelfth of 25";
    EXPECT_EQ(widthOfPng(request.path(3)), 160);
}

TEST_F(SignalPass, FramesForTextAreNeverEnlarged)
{
    SignalAnalyzer::TextFrameRequest request;
    request.directory = m_folder.path() / "frames";
    value(pass(Clips::plain(), {.textFrames = request}));
    EXPECT_EQ(widthOfPng(request.path(1)), 320);
}

TEST_F(SignalPass, AFilmWhoseTextFramesCannotBeWrittenIsMeasuredWithoutThem)
{
    SignalAnalyzer::TextFrameRequest request;
    request.directory = m_folder.write("file", "") / "frames";
    int restarts = 0;
    const SignalInfo info =
        value(pass(longClip(), {.textFrames = request, .onRestart = [&] { ++restarts; }}));
    EXPECT_EQ(restarts, 1) << "what was read of the first run counts no longer";
    EXPECT_EQ(soundRead(info), 300U);
    EXPECT_EQ(info.cadence->frameCountSeen, 750);
}

TEST_F(SignalPass, MeasuresTheDetailThatIsAskedFor)
{
    const SignalInfo info = value(pass(Clips::plain(), {.includeDetail = true}));
    ASSERT_TRUE(info.detail->halfResPsnrDb);
    ASSERT_TRUE(info.detail->quarterResPsnrDb);
    EXPECT_EQ(info.detail->samplesMeasured, 3) << "every twelfth of 25";
    EXPECT_GT(*info.detail->halfResPsnrDb, *info.detail->quarterResPsnrDb);
    EXPECT_THAT(info.detail->segments, Not(IsEmpty()));
}

TEST_F(SignalPass, OtherwiseMeasuresNoDetail)
{
    const SignalInfo info = value(pass(Clips::plain()));
    EXPECT_EQ(info.detail, DetailEstimate{});
}

TEST_F(SignalPass, LooksPastACoverThatStandsAheadOfTheFilm)
{
    const fs::path clip = Clips::plain();
    EXPECT_EQ(value(pass(Clips::coverAhead(clip))), value(pass(clip)));
}

TEST_F(SignalPass, SoundAloneIsMeasured)
{
    const SignalInfo info = value(pass(Clips::wav()));
    EXPECT_NEAR(*info.integratedLKFS, -23, 0.2) << "mono at -20 dBFS on two channels";
    EXPECT_THAT(*info.channelLevels, SizeIs(2));
    EXPECT_EQ(info.levels, std::nullopt);
    EXPECT_EQ(info.cadence, std::nullopt);
}

TEST_F(SignalPass, PictureAloneIsMeasured)
{
    const SignalInfo info = value(pass(Clips::transportStream()));
    EXPECT_EQ(info.cadence->frameCountSeen, 25);
    EXPECT_EQ(info.integratedLKFS, std::nullopt);
    EXPECT_EQ(info.audioIslands, std::nullopt);
    EXPECT_EQ(info.channelLevels, std::nullopt);
}

} // namespace
} // namespace vantroque

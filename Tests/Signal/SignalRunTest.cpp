#include "Signal/SignalPass.h"

// Whether a run of ffmpeg counts.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

TEST_F(SignalPass, AFailedRunWithWholeFramesAndFilterLinesIsMeasured)
{
    ffmpegWrites(100 * frameBytes, filterLines, 1);
    const SignalInfo info = value(pass(film()));
    EXPECT_EQ(info.activePicture, (CropRect{64, 48, 0, 8}));
    ASSERT_TRUE(info.levels);
    EXPECT_DOUBLE_EQ(info.levels->sampleRate, 25.0 / 6);
}

TEST_F(SignalPass, AFailedRunWithWholeFramesAndNoFilterLineFails)
{
    ffmpegWrites(100 * frameBytes, "Conversion failed!", 1);
    EXPECT_FALSE(pass(film()));
}

TEST_F(SignalPass, ASuccessfulRunThatEndsInTheMiddleOfAFrameFails)
{
    ffmpegWrites(3 * frameBytes + 1, filterLines, 0);
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().status, 0);
}

TEST_F(SignalPass, ASuccessfulRunThatWritesNoFrameFails)
{
    ffmpegWrites(0, filterLines + '\n' + summary, 0);
    EXPECT_FALSE(pass(film()));
}

TEST_F(SignalPass, SoundAloneWithItsLoudnessIsMeasured)
{
    for (const int status : {0, 1}) {
        ffmpegWrites(0, "Stream mapping:\n" + window + summary, status);
        EXPECT_EQ(value(pass(sound())).integratedLKFS, -23.5) << status;
    }
}

TEST_F(SignalPass, SoundAloneWithoutLoudnessFails)
{
    ffmpegWrites(0, "Stream mapping:\n[Parsed_astats_2 @ 0x1] Channel: 1", 0);
    EXPECT_FALSE(pass(sound()));
}

TEST_F(SignalPass, LoudnessAheadOfTheDecodeIsNone)
{
    ffmpegWrites(0, summary + "\nStream mapping:\n[Parsed_astats_2 @ 0x1] Channel: 1", 0);
    EXPECT_FALSE(pass(sound()));
}

TEST_F(SignalPass, TheErrorCarriesToolStatusAndLog)
{
    ffmpegWrites(0, "film.mov: Caf\xE9 is no codec", 69);
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::failed);
    EXPECT_EQ(outcome.error().tool, u"ffmpeg"_s);
    EXPECT_EQ(outcome.error().status, 69);
    EXPECT_EQ(outcome.error().words, u"film.mov: Caf\uFFFD is no codec\n"_s);
}

TEST_F(SignalPass, AFileWithNeitherPictureNorSoundFails)
{
    const auto file = Media::make("text.mkv", {"subtitles"}, [](const fs::path& target) {
        const TestFolder folder;
        const auto text = folder.write("text.srt", "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
        Media::ffmpeg({"-i", text.native(), target.native()});
    });
    const auto outcome = pass(file);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::failed);
}

TEST_F(SignalPass, TheNameOfAFileWithNothingToMeasureDoesNotMakeItMeasured)
{
    const auto file = m_folder.write("Parsed_.srt", "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
    const auto outcome = pass(file);
    EXPECT_FALSE(outcome);
}

} // namespace
} // namespace vantroque

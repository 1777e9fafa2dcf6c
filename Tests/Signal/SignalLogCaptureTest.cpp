#include "Signal/SignalLogParser.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What ffmpeg 5.1 really printed; Fixtures/ffmpeg-5.1/capture tells over which clips.

namespace vantroque::SignalAnalyzer {

namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

QByteArray captured(const std::string& name)
{
    return contents(std::filesystem::path(VANTROQUE_FIXTURES) / "ffmpeg-5.1" / (name + ".log"));
}

MediaInfo media(double duration, std::optional<int> channels, bool hasVideo = true)
{
    MediaInfo media;
    media.durationSeconds = duration;
    if (hasVideo) {
        media.video = VideoStreamInfo{};
        media.video->nominalFrameRate = 10;
    }
    if (channels) {
        media.audio = AudioStreamInfo{};
        media.audio->codec = u"pcm"_s;
        media.audio->sampleRate = 48'000;
        media.audio->channels = *channels;
    }
    return media;
}

SignalInfo measured(const QByteArray& text, const MediaInfo& file)
{
    EXPECT_FALSE(text.isEmpty());
    const SignalLog log({text.constData(), static_cast<std::size_t>(text.size())});
    SignalInfo info = parse(log, file.durationSeconds);
    extend(info, log, file, {});
    return info;
}

} // namespace

TEST(CapturedLog, OfAStereoClip)
{
    const SignalInfo info = measured(captured("stereo"), media(1, 2));
    EXPECT_EQ(info.integratedLKFS, -22.7);
    EXPECT_EQ(info.truePeakDb, -20);
    EXPECT_EQ(info.loudnessRangeLU, 0);
    EXPECT_NEAR(info.loudestSeconds.value_or(-1), 0, 0.001);
    EXPECT_NEAR(info.truePeakSeconds.value_or(-1), 0, 0.001);
    EXPECT_EQ(info.longestSilenceSeconds, std::nullopt);
    EXPECT_THAT(*info.audioIslands, ElementsAre(TimeSpan{0, 1}));
    EXPECT_EQ(info.activePicture, (CropRect{64, 64, 0, 0}));
    EXPECT_THAT(*info.channelLevels, ElementsAre(ChannelLevel{-23.010025, -19.999205, 16},
                                                 ChannelLevel{-28.58016, -23.108232, 16}));
    ASSERT_TRUE(info.channelSeries);
    EXPECT_EQ(info.channelSeries->rms.size(), 2U);
    EXPECT_EQ(info.channelSeries->rms[0].size(), 10U);
    EXPECT_EQ(info.channelSeries->rms[0][0], -23);
    EXPECT_EQ(info.phase->series.size(), 10U);
    EXPECT_EQ(info.phase->series[0], 0.67F);
    EXPECT_EQ(info.cadence->frameCountSeen, 10);
    EXPECT_EQ(info.cadence->duplicateCount, 0);
}

TEST(CapturedLog, OfAMonoFileThatEndsInSilence)
{
    const SignalInfo info = measured(captured("mono"), media(1, 1, false));
    EXPECT_EQ(info.integratedLKFS, -25.7);
    EXPECT_EQ(info.longestSilenceSeconds, 0.6);
    EXPECT_THAT(*info.audioIslands, ElementsAre(TimeSpan{0, 0.4}));
    EXPECT_THAT(*info.channelLevels, ElementsAre(ChannelLevel{-26.9897, -19.999998, 24}));
    EXPECT_EQ(info.channelSeries->rms[0].back(), -99);
    EXPECT_EQ(info.phase, std::nullopt);
    EXPECT_EQ(info.cadence, std::nullopt);
    EXPECT_THAT(*info.blackRuns, IsEmpty());
}

TEST(CapturedLog, OfSurroundSoundWithASilentChannel)
{
    const SignalInfo info = measured(captured("surround"), media(1, 6, false));
    ASSERT_EQ(info.channelLevels->size(), 6U);
    EXPECT_EQ((*info.channelLevels)[2], (ChannelLevel{-16.989404, -13.978605, 16}));
    EXPECT_EQ((*info.channelLevels)[3], (ChannelLevel{-99, -99, 0}));
    EXPECT_EQ((*info.channelLevels)[4].rmsDb, -31.663991) << "of the whole file, not of a window";
    EXPECT_EQ(info.channelSeries->rms.size(), 6U);
    EXPECT_EQ(info.phase->series.size(), 10U);
}

TEST(CapturedLog, OfASilentClip)
{
    const SignalInfo info = measured(captured("silent"), media(1, 2));
    EXPECT_EQ(info.integratedLKFS, -70);
    EXPECT_EQ(info.truePeakDb, -99);
    EXPECT_EQ(info.loudestSeconds, std::nullopt);
    EXPECT_EQ(info.truePeakSeconds, std::nullopt);
    EXPECT_EQ(info.longestSilenceSeconds, 1);
    EXPECT_NEAR(*info.headSilenceSeconds, 1, 1e-5);
    EXPECT_THAT(*info.audioIslands, IsEmpty());
    EXPECT_EQ(info.phase->audibleSeconds, 0);
    EXPECT_FALSE(info.phase->dualMono);
}

TEST(CapturedLog, OfABlackStartAndAHeldPicture)
{
    const SignalInfo info = measured(captured("black-start"), media(2, {}));
    EXPECT_THAT(*info.blackRuns, ElementsAre(TimeSpan{0, 0.5}));
    EXPECT_EQ(info.headBlackSeconds, 0.5);
    EXPECT_EQ(info.tailBlackSeconds, 0);
    EXPECT_EQ(info.headFreezeSeconds, 0) << "it begins after the black";
    EXPECT_EQ(info.activePicture, (CropRect{64, 64, 0, 0})) << "black has none";
    EXPECT_EQ(info.interlacedRatio, 0);
    EXPECT_EQ(info.cadence->duplicateCount, 14) << "no dump tells that the picture is held";
    EXPECT_EQ(info.integratedLKFS, std::nullopt);
    EXPECT_EQ(info.audioIslands, std::nullopt);
}

TEST(CapturedLog, OfATenBitFadeIn)
{
    MediaInfo file = media(1, {});
    file.video->bitDepth = 10;
    const QByteArray text = captured("ten-bit");
    const SignalLog log({text.constData(), static_cast<std::size_t>(text.size())});
    EXPECT_EQ(log.firstLumaBits(), 1);
    EXPECT_EQ(log.lowestLuma(), 64);
    EXPECT_EQ(log.highestLuma(), 840);
    EXPECT_EQ(measured(text, file).headBlackSeconds, 0.1);
    EXPECT_EQ(measured(text, file).cadence->frameCountSeen, 10);
}

TEST(CapturedLog, OfATelecinedClip)
{
    const SignalInfo info = measured(captured("telecine"), media(1, {}));
    EXPECT_EQ(info.interlacedRatio, 1);
    EXPECT_EQ(info.cadence->repeatedFieldsNeither, 18);
    EXPECT_EQ(info.cadence->repeatedFieldsTop, 6);
    EXPECT_EQ(info.cadence->repeatedFieldsBottom, 6);
    EXPECT_EQ(info.cadence->frameCountSeen, 30);
}

TEST(CapturedLog, WithATagThatIsNotUtf8IsReadAllTheSame)
{
    const QByteArray text = captured("latin1");
    ASSERT_TRUE(text.contains("Fr\xfchling"));
    const SignalInfo info = measured(text, media(1, {}));
    EXPECT_EQ(info.activePicture, (CropRect{64, 64, 0, 0}));
    EXPECT_EQ(info.cadence->frameCountSeen, 10);
}

TEST(CapturedLog, TagsCannotForgeMeasurements)
{
    const QByteArray text = captured("forged");
    ASSERT_TRUE(text.contains("\nblack_start:0 black_end:1 black_duration:1\n"));
    ASSERT_TRUE(text.contains("crop=2:2:0:0"));
    const SignalInfo info = measured(text, media(1, 2));
    EXPECT_EQ(info.integratedLKFS, -22.7);
    EXPECT_THAT(*info.blackRuns, IsEmpty());
    EXPECT_EQ(info.activePicture, (CropRect{64, 64, 0, 0}));
    EXPECT_THAT(*info.channelLevels, ElementsAre(ChannelLevel{-23.010025, -19.999205, 16},
                                                 ChannelLevel{-28.58016, -23.108232, 16}));
}

TEST(CapturedLog, TheNameOfADamagedFileCannotForgeAPicture)
{
    const QByteArray text = captured("damaged");
    ASSERT_TRUE(text.contains("\n/clips/crop=2:2:0:0.ts: corrupt decoded frame"));
    const QByteArray complaints = "/clips/crop=2:2:0:0 .ts: corrupt decoded frame\n";
    EXPECT_EQ(measured(text + complaints.repeated(20), media(1, {})).activePicture,
              (CropRect{64, 64, 0, 0}));
}

TEST(CapturedLog, OfAStreamThatChangesMidwayEndsWithTheLastStretch)
{
    const QByteArray text = captured("changed");
    EXPECT_EQ(text.count("Summary:"), 4) << "none of these is empty but the first and the third";
    const SignalInfo info = measured(text, media(2, 2));
    EXPECT_EQ(info.integratedLKFS, -9.7);
    EXPECT_EQ(info.truePeakDb, -6);
    EXPECT_GE(info.loudestSeconds.value_or(-1), 1);
    EXPECT_GE(info.truePeakSeconds.value_or(-1), 1);
    EXPECT_EQ(info.interlacedRatio, 1);
    EXPECT_EQ(info.channelLevels->size(), 2U);
    EXPECT_EQ((*info.channelLevels)[0].rmsDb, -23.055243);
    EXPECT_EQ(info.cadence->frameCountSeen, 18);
    EXPECT_EQ(info.activePicture, (CropRect{96, 64, 0, 0})) << "eight against seven";
}

} // namespace vantroque::SignalAnalyzer

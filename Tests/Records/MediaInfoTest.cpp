#include "Records/MediaInfo.h"

#include "Support/TestFolder.h"

#include <gtest/gtest.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

MediaInfo withVideo(const QString& codec, const std::optional<QString>& proresProfile = {})
{
    MediaInfo media;
    media.fileSizeBytes = 1'234'567;
    media.durationSeconds = 30.25;
    media.video = VideoStreamInfo{};
    media.video->codec = codec;
    media.video->proresProfile = proresProfile;
    media.video->width = 1920;
    media.video->height = 1080;
    return media;
}

} // namespace

TEST(PictureSamples, HaveTheBitsThatTheirFormatSays)
{
    const auto bits = [](const QString& format, std::optional<int> bitDepth) {
        VideoStreamInfo video;
        video.pixFmt = format;
        video.bitDepth = bitDepth;
        return video.sampleBits();
    };
    EXPECT_EQ(bits(u"yuv420p"_s, 8), 8);
    EXPECT_EQ(bits(u"yuv422p10le"_s, 10), 10);
    EXPECT_EQ(bits(u"gray10le"_s, 8), 10);
    EXPECT_EQ(bits(u"gray16be"_s, 16), 16);
    EXPECT_EQ(bits(u"gray"_s, 8), 8);
    EXPECT_EQ(bits(u"rgb48be"_s, 8), 16);
    EXPECT_EQ(bits(u"rgba64le"_s, 8), 16);
    EXPECT_EQ(bits(u"monob"_s, std::nullopt), 8);
    EXPECT_EQ(bits(u"monob"_s, 1), 8);
}

TEST(AudioStreams, SingleChannelsInARowArePairs)
{
    const auto groups = [](const std::vector<int>& channels) {
        AudioStreamInfo audio;
        audio.channels = channels.front();
        audio.tracks.emplace();
        for (const int count : channels)
            audio.tracks->push_back({u"pcm_s24le"_s, 48'000, count, {}, {}});
        return audio.trackGroups();
    };
    using Groups = std::vector<TrackGroup>;
    EXPECT_EQ(groups({1, 1}), (Groups{{0, 2}}));
    EXPECT_EQ(groups({1, 1, 1, 1, 2}), (Groups{{0, 2}, {2, 2}, {4, 1}}));
    EXPECT_EQ(groups({2, 1, 1, 1}), (Groups{{0, 1}, {1, 2}, {3, 1}}));
    EXPECT_EQ(groups({1, 2, 1}), (Groups{{0, 1}, {1, 1}, {2, 1}}));
    EXPECT_EQ(AudioStreamInfo().trackGroups(), (Groups{{0, 1}}));
}

TEST(AudioStreams, OnlyTheFirstTwoOfOneRateAreThePairThatIsGraded)
{
    AudioStreamInfo audio;
    audio.channels = 1;
    audio.tracks = {{u"pcm"_s, 48'000, 1, {}, {}}, {u"pcm"_s, 48'000, 1, {}, {}}};
    EXPECT_TRUE(audio.isPair());
    EXPECT_EQ(audio.measuredChannels(), 2);
    EXPECT_EQ(audio.measuredLayout(), u"stereo"_s);
    audio.tracks->back().sampleRate = 44'100;
    EXPECT_FALSE(audio.isPair());
    EXPECT_EQ(audio.measuredChannels(), 1);
    EXPECT_EQ(audio.measuredLayout(), std::nullopt);
}

TEST(MediaInfo, TheSummaryHasSizeDurationPictureAndCodec)
{
    EXPECT_EQ(withVideo(u"h264"_s).summaryLine(), u"1.2 MB · 30.3s · 1920x1080 · H264"_s);
}

TEST(MediaInfo, AProResCodecIsCalledByItsProfile)
{
    const auto summary = [](const std::optional<QString>& profile) {
        return withVideo(u"prores"_s, profile).summaryLine();
    };
    EXPECT_EQ(summary({}), u"1.2 MB · 30.3s · 1920x1080 · ProRes"_s);
    EXPECT_EQ(summary(u"4444"_s), u"1.2 MB · 30.3s · 1920x1080 · ProRes 4444"_s);
    EXPECT_EQ(summary(u"HQ"_s), u"1.2 MB · 30.3s · 1920x1080 · ProRes 422 HQ"_s);
    EXPECT_EQ(summary(u"4444 XQ"_s), u"1.2 MB · 30.3s · 1920x1080 · ProRes 422 4444 XQ"_s);
}

TEST(MediaInfo, AnotherCodecsProfileStaysOutOfTheSummary)
{
    EXPECT_EQ(withVideo(u"h264"_s, u"High"_s).summaryLine(),
              u"1.2 MB · 30.3s · 1920x1080 · H264"_s);
}

TEST(MediaInfo, AnAudioFileSummarizesToSizeAndDuration)
{
    MediaInfo media;
    media.fileSizeBytes = 999;
    media.durationSeconds = 1;
    EXPECT_EQ(media.summaryLine(), u"999 bytes · 1.0s"_s);
    media.durationSeconds = 0;
    EXPECT_EQ(media.summaryLine(), u"999 bytes"_s);
}

TEST(MediaInfo, PixelsAreSquareUnlessTheirSidesAreTold)
{
    VideoStreamInfo video;
    EXPECT_EQ(video.pixelAspect(), 1);
    for (const auto& [told, aspect] : std::initializer_list<std::pair<QString, double>>{
             {u"1:1"_s, 1}, {u"64:45"_s, 64.0 / 45}, {u"0:1"_s, 1}, {u"4:0"_s, 1}, {u"N/A"_s, 1}}) {
        video.sampleAspect = told;
        EXPECT_EQ(video.pixelAspect(), aspect) << told.toStdString();
    }
}

TEST(MediaInfo, TheRangeIsUnknownUnlessItIsTagged)
{
    VideoStreamInfo video;
    EXPECT_EQ(video.isFullRange(), std::nullopt);
    video.colorRange = u"pc"_s;
    EXPECT_EQ(video.isFullRange(), true);
    video.colorRange = u"tv"_s;
    EXPECT_EQ(video.isFullRange(), false);
    video.colorRange = u"unknown"_s;
    EXPECT_EQ(video.isFullRange(), std::nullopt);
}

TEST(MediaInfo, APqOrHlgTransferIsHdr)
{
    VideoStreamInfo video;
    EXPECT_FALSE(video.isHDR());
    for (const QString& transfer : {u"smpte2084"_s, u"arib-std-b67"_s}) {
        video.colorTransfer = transfer;
        EXPECT_TRUE(video.isHDR());
    }
    video.colorTransfer = u"bt709"_s;
    EXPECT_FALSE(video.isHDR());
}

TEST(MediaInfo, OnlyThePresentVersionIsCurrent)
{
    MediaInfo media;
    EXPECT_FALSE(media.isCurrentAnalysis());
    media.analysisVersion = 4;
    EXPECT_FALSE(media.isCurrentAnalysis());
    media.analysisVersion = 5;
    EXPECT_TRUE(media.isCurrentAnalysis());
}

TEST(MediaInfo, ASpanIsNeverNegative)
{
    EXPECT_EQ((TimeSpan{1, 3}).duration(), 2);
    EXPECT_EQ((TimeSpan{3, 1}).duration(), 0);
}

} // namespace vantroque

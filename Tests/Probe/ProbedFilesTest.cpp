#include "Probe/Probed.h"

// What the record says of real pictures.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::DoubleNear;
using testing::ElementsAre;

/// 64x64 at 25 frames a second for one second, as most clips are.
VideoStreamInfo usualVideo(const QString& codec)
{
    VideoStreamInfo video;
    video.codec = video.rawCodecName = codec;
    video.width = video.height = 64;
    video.pixFmt = u"yuv420p"_s;
    video.chroma = u"420"_s;
    video.sampleAspect = u"1:1"_s;
    video.fieldOrder = u"progressive"_s;
    video.nominalFrameRate = 25;
    video.frameCount = 25;
    video.durationSeconds = 1;
    video.closedCaptions = false;
    video.bitDepth = 8;
    return video;
}

VideoStreamInfo usualH264(const QString& profile)
{
    VideoStreamInfo video = usualVideo(u"h264"_s);
    video.encoderProfile = video.proresProfile = profile;
    video.hrd = HRDInfo{};
    return video;
}

/// The encoder's decisions are its own: they are looked at apart.
VideoStreamInfo withoutRates(VideoStreamInfo video)
{
    EXPECT_GT(video.bitrateKbps.value_or(0), 0);
    EXPECT_FALSE(video.bitratePerSecondKbps.empty());
    video.bitrateKbps.reset();
    video.bitratePerSecondKbps.clear();
    return video;
}

VideoStreamInfo withoutRatesAndLevel(VideoStreamInfo video)
{
    EXPECT_TRUE(video.level);
    video.level.reset();
    return withoutRates(std::move(video));
}

TEST(ProbedFile, AnMp4FileIsDescribedWhole)
{
    const auto path = Clips::plain();
    const auto media = probed(path);
    EXPECT_EQ(media.url, FileUrl::fromPath(path));
    EXPECT_EQ(media.fileSizeBytes, static_cast<std::int64_t>(std::filesystem::file_size(path)));
    EXPECT_EQ(media.formatName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);
    EXPECT_EQ(media.containerKind, u"mp4"_s);
    EXPECT_EQ(media.durationSeconds, 1.0);
    EXPECT_EQ(media.signal, std::nullopt);
    EXPECT_EQ(media.moovBeforeMdat, true);
    EXPECT_EQ(media.analysisVersion, 5);
    EXPECT_TRUE(media.isCurrentAnalysis());
    EXPECT_EQ(media.startTimecode, std::nullopt);
    EXPECT_EQ(media.summaryLine(),
              MediaInfo::formatBytes(media.fileSizeBytes) + u" · 1.0s · 320x180 · H264"_s);

    auto expected = usualH264(u"Constrained Baseline"_s);
    expected.width = 320;
    expected.height = 180;
    expected.level = 12;
    EXPECT_EQ(withoutRates(*media.video), expected);
    EXPECT_THAT(media.video->bitratePerSecondKbps,
                ElementsAre(DoubleNear(*media.video->bitrateKbps, 0.01)));

    EXPECT_EQ(media.audio->codec, u"aac"_s);
    EXPECT_EQ(media.audio->rawCodecName, u"aac"_s);
    EXPECT_EQ(media.audio->sampleRate, 48000);
    EXPECT_EQ(media.audio->channels, 2);
    EXPECT_EQ(media.audio->streamCount, 1);
    EXPECT_EQ(media.audio->channelLayout, u"stereo"_s);
    EXPECT_EQ(media.audio->durationSeconds, 1.0);
}

TEST(ProbedFile, TenBitsAreTold)
{
    auto expected = usualH264(u"High 10"_s);
    expected.pixFmt = u"yuv420p10le"_s;
    expected.bitDepth = 10;
    EXPECT_EQ(withoutRatesAndLevel(probedVideo(Clips::tenBit())), expected);
}

TEST(ProbedFile, HighDynamicRangeIsTold)
{
    auto expected = usualVideo(u"hevc"_s);
    expected.encoderProfile = expected.proresProfile = u"Main 10"_s;
    expected.pixFmt = u"yuv420p10le"_s;
    expected.bitDepth = 10;
    expected.frameCount = 10;
    expected.durationSeconds = 0.4;
    expected.colorRange = u"tv"_s;
    expected.colorPrimaries = u"bt2020"_s;
    expected.colorSpace = u"bt2020nc"_s;
    expected.colorTransfer = u"smpte2084"_s;
    expected.hdr = HDRMetadata{1000, 400, u"P3-D65"_s, 1000};
    EXPECT_EQ(withoutRatesAndLevel(probedVideo(Clips::hdr10P3())), expected);

    const auto hlg = probedVideo(Clips::hlg());
    EXPECT_TRUE(hlg.isHDR());
    EXPECT_EQ(hlg.colorTransfer, u"arib-std-b67"_s);
}

struct ProResCase {
    int profile;
    const char* pixelFormat;
    QString name;
    QString chroma;
    int bitDepth;
    QString label;
};

class ProRes : public testing::TestWithParam<ProResCase> {};

INSTANTIATE_TEST_SUITE_P(
    Profiles, ProRes,
    testing::Values(ProResCase{0, "yuv422p10le", u"Proxy"_s, u"422"_s, 10, u"ProRes 422 Proxy"_s},
                    ProResCase{1, "yuv422p10le", u"LT"_s, u"422"_s, 10, u"ProRes 422 LT"_s},
                    ProResCase{2, "yuv422p10le", u"Standard"_s, u"422"_s, 10,
                               u"ProRes 422 Standard"_s},
                    ProResCase{3, "yuv422p10le", u"HQ"_s, u"422"_s, 10, u"ProRes 422 HQ"_s},
                    ProResCase{4, "yuva444p10le", u"4444"_s, u"444"_s, 12, u"ProRes 4444"_s}));

TEST_P(ProRes, IsToldByItsCode)
{
    const auto& expected = GetParam();
    const auto media = probed(Clips::prores(expected.profile, expected.pixelFormat));
    EXPECT_EQ(media.containerKind, u"mov"_s);
    EXPECT_EQ(media.video->codec, u"prores"_s);
    EXPECT_EQ(media.video->proresProfile, expected.name);
    EXPECT_EQ(media.video->chroma, expected.chroma);
    EXPECT_EQ(media.video->bitDepth, expected.bitDepth);
    EXPECT_TRUE(media.summaryLine().endsWith(u" · 0.4s · 64x64 · "_s + expected.label));
}

TEST(ProbedFile, BroadcastMxfIsTold)
{
    const auto media = probed(Clips::mpeg2InMxf());
    EXPECT_EQ(media.formatName, u"mxf"_s);
    EXPECT_EQ(media.containerKind, u"mxf"_s);
    auto expected = usualVideo(u"mpeg2video"_s);
    expected.encoderProfile = expected.proresProfile = u"4:2:2"_s;
    expected.width = 720;
    expected.height = 576;
    expected.pixFmt = u"yuv422p"_s;
    expected.chroma = u"422"_s;
    expected.fieldOrder = u"tt"_s;
    expected.colorRange = u"tv"_s;
    EXPECT_EQ(withoutRatesAndLevel(*media.video), expected);
    EXPECT_EQ(media.audio->codec, u"pcm"_s);
    EXPECT_EQ(media.audio->bitDepth, 24);
}

TEST(ProbedFile, WebmIsTold)
{
    const auto media = probed(Clips::vp9InWebm());
    EXPECT_EQ(media.containerKind, u"webm"_s);
    EXPECT_EQ(media.video->codec, u"vp9"_s);
    EXPECT_EQ(media.video->encoderProfile, u"Profile 0"_s);
    EXPECT_EQ(media.video->frameCount, 25);
}

TEST(ProbedFile, WithoutABitRateThePacketsTellIt)
{
    const auto media = probed(Clips::matroska());
    EXPECT_EQ(media.containerKind, u"mkv"_s);
    const auto plain = probedVideo(Clips::plain());
    const double bits = plain.bitratePerSecondKbps.at(0);
    EXPECT_EQ(media.video->frameCount, 25);
    // The stream has no duration of its own either.
    EXPECT_EQ(media.video->durationSeconds, media.durationSeconds);
    EXPECT_NEAR(*media.video->bitrateKbps, bits / media.durationSeconds, 0.01);
}

TEST(ProbedFile, TransportStreamsAreTold)
{
    const auto media = probed(Clips::transportStream());
    EXPECT_EQ(media.formatName, u"mpegts"_s);
    EXPECT_EQ(media.containerKind, u"mpg"_s);
    EXPECT_EQ(media.durationSeconds, 1.0);
}

TEST(ProbedFile, FullRangeIsTold)
{
    const auto video = probedVideo(Clips::fullRange());
    EXPECT_EQ(video.colorRange, u"pc"_s);
    EXPECT_EQ(video.isFullRange(), true);
    EXPECT_EQ(video.pixFmt, u"yuvj420p"_s);
    EXPECT_EQ(video.bitDepth, 8);
    EXPECT_EQ(probedVideo(Clips::plain()).isFullRange(), std::nullopt);
    EXPECT_EQ(probedVideo(Clips::mpeg2InMxf()).isFullRange(), false);
}

TEST(ProbedFile, PixelsThatAreNotSquareAreTold)
{
    EXPECT_EQ(probedVideo(Clips::anamorphic()).sampleAspect, u"4:3"_s);
}

TEST(ProbedFile, TheOrderOfFieldsIsTold)
{
    EXPECT_EQ(probedVideo(Clips::interlaced(true)).fieldOrder, u"tt"_s);
    EXPECT_EQ(probedVideo(Clips::interlaced(false)).fieldOrder, u"bb"_s);
}

TEST(ProbedFile, ATagThatIsNotUtf8DoesNoHarm)
{
    const auto media = probed(Clips::withLatin1Title());
    EXPECT_EQ(media.containerKind, u"avi"_s);
    EXPECT_EQ(media.video->codec, u"mpeg4"_s);
    EXPECT_EQ(media.video->encoderProfile, u"Simple Profile"_s);
    EXPECT_EQ(media.video->fieldOrder, std::nullopt);
}

} // namespace
} // namespace vantroque

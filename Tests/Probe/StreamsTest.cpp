#include "Probe/Probed.h"

// Which streams of a file are taken, and what the record says of sound and subtitles.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(AudioOnly, AFileWithoutPictureIsStillAFile)
{
    const auto media = probed(Clips::wav());
    EXPECT_EQ(media.video, std::nullopt);
    EXPECT_EQ(media.durationSeconds, 1.0);
    EXPECT_EQ(media.containerKind, u"wav"_s);
    EXPECT_EQ(media.moovBeforeMdat, std::nullopt);
    EXPECT_EQ(media.summaryLine(), MediaInfo::formatBytes(media.fileSizeBytes) + u" · 1.0s"_s);
}

TEST(AudioOnly, PcmIsDescribed)
{
    AudioStreamInfo expected;
    expected.codec = u"pcm"_s;
    expected.rawCodecName = u"pcm_s24le"_s;
    expected.sampleRate = 48000;
    expected.channels = 2;
    expected.bitDepth = 24;
    expected.bitrateKbps = 2304;
    expected.streamCount = 1;
    expected.durationSeconds = 1;
    expected.channelLayout = u"stereo"_s;
    EXPECT_EQ(probedAudio(Clips::wav()), expected);
}

TEST(AudioOnly, TheIndexOfAnM4aIsLookedFor)
{
    const auto media = probed(Clips::m4a());
    EXPECT_EQ(media.video, std::nullopt);
    EXPECT_EQ(media.moovBeforeMdat, false);
    EXPECT_EQ(media.audio->codec, u"aac"_s);
    EXPECT_EQ(media.audio->bitDepth, std::nullopt);
    EXPECT_NEAR(media.audio->bitrateKbps.value_or(0), 128, 3);
}

TEST(Sound, AnotherRateAndMissingFieldsAreTold)
{
    const auto audio = probedAudio(Clips::vp9InWebm());
    EXPECT_EQ(audio.codec, u"opus"_s);
    EXPECT_EQ(audio.rawCodecName, u"opus"_s);
    EXPECT_EQ(audio.sampleRate, 48000);
    EXPECT_EQ(audio.channels, 1);
    EXPECT_EQ(audio.channelLayout, u"mono"_s);
    EXPECT_EQ(audio.bitrateKbps, std::nullopt);
    EXPECT_EQ(audio.durationSeconds, std::nullopt);
}

TEST(Sound, TheFirstStreamIsDescribedAndAllAreCounted)
{
    const auto audio = probedAudio(Clips::twoSounds());
    EXPECT_EQ(audio.streamCount, 2);
    EXPECT_EQ(audio.channels, 2);
    EXPECT_EQ(audio.bitDepth, 16);
    EXPECT_EQ(audio.durationSeconds, 1.0);
}

TEST(Sound, OfSeveralStreamsEachIsListed)
{
    const auto audio = probedAudio(Clips::twoSounds());
    ASSERT_TRUE(audio.tracks);
    ASSERT_EQ(audio.tracks->size(), 2U);
    EXPECT_EQ(audio.tracks->at(0).channels, 2);
    EXPECT_EQ(audio.tracks->at(0).codec, audio.rawCodecName);
    EXPECT_EQ(audio.tracks->at(0).durationSeconds, 1.0);
    EXPECT_EQ(probedAudio(Clips::wav()).tracks, std::nullopt);
}

TEST(Sound, APictureWithoutSoundHasNone)
{
    EXPECT_EQ(probed(Clips::tenBit()).audio, std::nullopt);
}

TEST(Subtitles, TextAndImagesComeInFileOrderWithTheirLanguages)
{
    const auto streams = probed(Clips::subtitled()).subtitleStreams.value();
    EXPECT_THAT(streams, ElementsAre(SubtitleStreamInfo{2, u"subrip"_s, u"eng"_s},
                                     SubtitleStreamInfo{3, u"subrip"_s, u"ger"_s},
                                     SubtitleStreamInfo{4, u"hdmv_pgs_subtitle"_s, u"fre"_s}));
    EXPECT_TRUE(streams.at(0).isText());
    EXPECT_FALSE(streams.at(2).isText());
}

TEST(Subtitles, WithoutAnyTheListIsEmptyAndNotAbsent)
{
    EXPECT_THAT(probed(Clips::plain()).subtitleStreams.value(), IsEmpty());
    EXPECT_THAT(probed(Clips::wav()).subtitleStreams.value(), IsEmpty());
}

TEST(CoverArt, ThePictureBehindItIsTheFilesPicture)
{
    const auto plain = probed(Clips::plain());
    const auto covered = probed(Clips::coverAhead(Clips::plain()));
    EXPECT_EQ(covered.video->codec, plain.video->codec);
    EXPECT_EQ(covered.video->width, plain.video->width);
    EXPECT_EQ(covered.video->frameCount, plain.video->frameCount);
    EXPECT_EQ(covered.video->bitratePerSecondKbps, plain.video->bitratePerSecondKbps);
    EXPECT_EQ(covered.video->hrd, plain.video->hrd);
    EXPECT_EQ(covered.audio, plain.audio);
}

TEST(StartTimecodeOfFile, QuickTimeHasItOnAStream)
{
    EXPECT_EQ(probed(Clips::withTimecode()).startTimecode, u"01:00:00:00"_s);
    EXPECT_EQ(Prober::startTimecode(FileUrl::fromPath(Clips::withTimecode())), u"01:00:00:00"_s);
}

TEST(StartTimecodeOfFile, MxfHasItOnTheFile)
{
    EXPECT_EQ(probed(Clips::mpeg2InMxf()).startTimecode, u"10:00:00:00"_s);
    EXPECT_EQ(Prober::startTimecode(FileUrl::fromPath(Clips::mpeg2InMxf())), u"10:00:00:00"_s);
}

TEST(StartTimecodeOfFile, MostFilesHaveNone)
{
    EXPECT_EQ(probed(Clips::plain()).startTimecode, std::nullopt);
    EXPECT_EQ(Prober::startTimecode(FileUrl::fromPath(Clips::plain())), std::nullopt);
    EXPECT_EQ(Prober::startTimecode(FileUrl::fromPath("/nowhere.mov")), std::nullopt);
}

} // namespace
} // namespace vantroque

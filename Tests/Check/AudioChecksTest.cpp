#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

AudioRule aacRule()
{
    AudioRule rule;
    rule.codecs = {u"aac"_s, u"pcm"_s};
    return rule;
}

Rows audioRows(const AudioRule& rule, const AudioStreamInfo& audio = stereoAudio())
{
    Profile profile = bareProfile();
    profile.audio = rule;
    MediaInfo media = hdSpot();
    media.audio = audio;
    return rowsOf(checkAudio, profile, media);
}

AudioStreamInfo pcmAudio(std::optional<int> bitDepth)
{
    AudioStreamInfo audio = stereoAudio();
    audio.codec = u"pcm"_s;
    audio.rawCodecName = u"pcm_s24le"_s;
    audio.bitDepth = bitDepth;
    return audio;
}

CheckResult codecRow(Verdict verdict, const char* measured, const char* expected,
                     const char* fix = nullptr)
{
    return row("audio-codec", "Audio codec", verdict, measured, expected, fix);
}

CheckResult bitrateOf(double kbps)
{
    AudioRule rule = aacRule();
    rule.minBitrateKbps = 128;
    AudioStreamInfo audio = stereoAudio();
    audio.bitrateKbps = kbps;
    return audioRows(rule, audio).back();
}

CheckResult channelsOf(const AudioRule& rule, int channels)
{
    AudioStreamInfo audio = stereoAudio();
    audio.channels = channels;
    return audioRows(rule, audio).back();
}

CheckResult channels(Verdict verdict, const char* measured, const char* expected,
                     const char* fix = nullptr)
{
    return row("channels", "Audio channels", verdict, measured, expected, fix);
}

Rows streamRows(std::optional<int> maxStreams, int count)
{
    AudioRule rule = aacRule();
    rule.maxStreams = maxStreams;
    AudioStreamInfo audio = stereoAudio();
    audio.streamCount = count;
    Rows rows = audioRows(rule, audio);
    rows.erase(rows.begin()); // the codec
    return rows;
}

CheckResult streams(Verdict verdict, const char* measured, const char* expected,
                    const char* fix = nullptr)
{
    return row("audio-streams", "Audio streams", verdict, measured, expected, fix);
}

const char* const stripTracks = "Strip the extra audio tracks (in ffmpeg: -map 0:v:0 -map 0:a:0). "
                                "Only the first stream was measured.";

Rows coverageRows(double picture, std::optional<double> sound)
{
    Profile profile = bareProfile();
    profile.audio = aacRule();
    MediaInfo media = hdSpot();
    media.video->durationSeconds = picture;
    media.audio->durationSeconds = sound;
    return rowsOf(checkAudioCoverage, profile, media);
}

} // namespace

TEST(AudioChecks, AMissingAudioStreamIsOneFailingRow)
{
    Profile profile = bareProfile();
    profile.audio = aacRule();
    profile.loudness = LoudnessRule{};
    profile.loudness->targetLKFS = -23;
    MediaInfo media = hdSpot();
    media.audio.reset();
    const auto missing = row("audio", "Audio", Verdict::fail, "no audio stream", "AAC OR PCM",
                             "Add a stereo mix. Even a silent spot needs an audio track.");
    EXPECT_THAT(rowsOf(checkAudio, profile, media), ElementsAre(missing));
    EXPECT_THAT(idsOf(evaluate(profile, media).checks), ElementsAre(u"audio"_s, u"loudness"_s));
    media.signal = SignalInfo{};
    EXPECT_THAT(evaluate(profile, media).checks, ElementsAre(missing));
}

TEST(AudioChecks, AnAllowedCodecPasses)
{
    EXPECT_THAT(audioRows(aacRule()), ElementsAre(codecRow(Verdict::pass, "AAC", "AAC or PCM")));
    AudioRule rule = aacRule();
    rule.preferredCodec = u"aac"_s;
    EXPECT_THAT(audioRows(rule), ElementsAre(codecRow(Verdict::pass, "AAC", "AAC or PCM")));
}

TEST(AudioChecks, AnAllowedCodecThatIsNotPreferredIsAccepted)
{
    AudioRule rule = aacRule();
    rule.preferredCodec = u"pcm"_s;
    EXPECT_THAT(
        audioRows(rule),
        ElementsAre(codecRow(Verdict::pass, "AAC (accepted; PCM preferred)", "AAC or PCM")));
}

TEST(AudioChecks, AnotherCodecFailsUnderItsRawName)
{
    AudioStreamInfo audio = stereoAudio();
    audio.codec = u"ac3"_s;
    audio.rawCodecName = u"ac3_fixed"_s;
    EXPECT_THAT(audioRows(aacRule(), audio),
                ElementsAre(codecRow(Verdict::fail, "ac3_fixed", "AAC or PCM",
                                     "Re-export audio as AAC or PCM.")));
}

TEST(AudioChecks, ASampleRateHasToBeListed)
{
    AudioRule rule = aacRule();
    rule.sampleRates = {44100, 48000};
    EXPECT_EQ(audioRows(rule).back(),
              row("sample-rate", "Sample rate", Verdict::pass, "48 kHz", "44.1 kHz or 48 kHz"));
    AudioStreamInfo audio = stereoAudio();
    audio.sampleRate = 96000;
    EXPECT_EQ(audioRows(rule, audio).back(),
              row("sample-rate", "Sample rate", Verdict::fail, "96.0 kHz", "44.1 kHz or 48 kHz",
                  "Resample to 48 kHz on export (in ffmpeg: -ar 48000)."));
}

TEST(AudioChecks, AListOfChannelCountsTakesThePlaceOfOne)
{
    AudioRule rule = aacRule();
    rule.channels = 1;
    rule.channelOptions = {2, 8};
    EXPECT_EQ(channelsOf(rule, 8),
              channels(Verdict::pass, "8 ch, order assumed", "stereo (2 ch), 8 ch"));
    EXPECT_EQ(channelsOf(rule, 1),
              channels(Verdict::fail, "mono (1 ch)", "stereo (2 ch), 8 ch",
                       "Deliver one of the accepted channel layouts. Track order matters: stereo "
                       "is L/R, 5.1+stereo is L/R/C/LFE/Ls/Rs then stereo L/R."));
}

TEST(AudioChecks, ASingleChannelCountHasToBeMet)
{
    AudioRule rule = aacRule();
    rule.channels = 2;
    EXPECT_EQ(channelsOf(rule, 2), channels(Verdict::pass, "stereo (2 ch)", "stereo (2 ch)"));
    EXPECT_EQ(channelsOf(rule, 6),
              channels(Verdict::fail, "5.1 (6 ch), order assumed", "stereo (2 ch)",
                       "Deliver a stereo mixdown (in ffmpeg: -ac 2). Fold down 5.1 in your mix "
                       "session, not in the encoder, if levels matter."));
    rule.channels = 6;
    EXPECT_EQ(channelsOf(rule, 2),
              channels(Verdict::fail, "stereo (2 ch)", "5.1 (6 ch)", "Deliver 6 channels."));
}

TEST(AudioChecks, WithoutAChannelRuleThereIsNoChannelRow)
{
    EXPECT_THAT(idsOf(audioRows(aacRule())), Not(Contains(u"channels"_s)));
}

TEST(AudioChecks, ThePcmBitDepthHasToBeListed)
{
    const char* const fix = "Export PCM at 16- or 24-bit (in ffmpeg: -c:a pcm_s24le).";
    AudioRule rule = aacRule();
    rule.bitDepths = {16, 24};
    EXPECT_EQ(audioRows(rule, pcmAudio(24)).back(),
              row("bit-depth", "Audio bit depth", Verdict::pass, "24-bit", "16 or 24-bit"));
    EXPECT_EQ(audioRows(rule, pcmAudio(32)).back(),
              row("bit-depth", "Audio bit depth", Verdict::fail, "32-bit", "16 or 24-bit", fix));
    EXPECT_EQ(audioRows(rule, pcmAudio({})).back(),
              row("bit-depth", "Audio bit depth", Verdict::fail, "pcm_s24le", "16 or 24-bit", fix));
    EXPECT_THAT(idsOf(audioRows(rule)), Not(Contains(u"bit-depth"_s)));
}

TEST(AudioChecks, TheBitrateFloorAllowsTwoKilobits)
{
    EXPECT_EQ(bitrateOf(126),
              row("audio-bitrate", "Audio bitrate", Verdict::pass, "126 kbps", "≥ 128 kbps"));
    EXPECT_EQ(bitrateOf(125.9),
              row("audio-bitrate", "Audio bitrate", Verdict::fail, "125 kbps", "≥ 128 kbps",
                  "Re-export audio at 128 kbps or higher (in ffmpeg: -b:a 128k), or use PCM."));
}

TEST(AudioChecks, AnUnmeasuredBitrateWarns)
{
    AudioRule rule = aacRule();
    rule.minBitrateKbps = 128;
    EXPECT_EQ(audioRows(rule).back(), row("audio-bitrate", "Audio bitrate", Verdict::warn,
                                          "could not be measured", "≥ 128 kbps"));
}

TEST(AudioChecks, PcmHasNoBitrateRow)
{
    AudioRule rule = aacRule();
    rule.minBitrateKbps = 128;
    EXPECT_THAT(idsOf(audioRows(rule, pcmAudio(24))), ElementsAre(u"audio-codec"_s));
}

TEST(AudioChecks, ASecondStreamWarnsWhereTheProfileSaysNothing)
{
    EXPECT_THAT(streamRows({}, 1), IsEmpty());
    EXPECT_THAT(streamRows({}, 2), ElementsAre(streams(Verdict::warn, "2 audio streams",
                                                       "a single audio stream", stripTracks)));
}

TEST(AudioChecks, AStreamLimitIsKeptOrFails)
{
    EXPECT_THAT(streamRows(1, 1),
                ElementsAre(streams(Verdict::pass, "1 audio stream", "a single audio stream")));
    EXPECT_THAT(streamRows(4, 2),
                ElementsAre(streams(Verdict::pass, "2 audio streams", "at most 4 audio streams")));
    EXPECT_THAT(streamRows(1, 2), ElementsAre(streams(Verdict::fail, "2 audio streams",
                                                      "a single audio stream", stripTracks)));
    EXPECT_THAT(streamRows(4, 5), ElementsAre(streams(Verdict::fail, "5 audio streams",
                                                      "at most 4 audio streams", stripTracks)));
}

TEST(AudioChecks, TheStreamToKeepIsTheFirstThatTheProfileTakes)
{
    AudioRule rule = aacRule();
    rule.maxStreams = 1;
    rule.channels = 2;
    AudioStreamInfo audio = stereoAudio();
    audio.channels = 6;
    audio.streamCount = 3;
    audio.tracks = {{u"aac"_s, 48'000, 6, {}, {}},
                    {u"aac"_s, 48'000, 2, {}, {}},
                    {u"aac"_s, 48'000, 2, {}, {}}};
    EXPECT_EQ(audioRows(rule, audio).back().fix,
              u"Strip the extra audio tracks (in ffmpeg: -map 0:v:0 -map 0:a:1). Only the first "
              u"stream was graded."_s);
    rule.channels = 8;
    EXPECT_TRUE(audioRows(rule, audio).back().fix->contains(u"-map 0:a:0)"_s)) << "none fits";
    rule.channels.reset();
    EXPECT_TRUE(audioRows(rule, audio).back().fix->contains(u"-map 0:a:0)"_s)) << "any does";
}

TEST(AudioChecks, TwoSingleChannelsAreThePairThatTheyAre)
{
    AudioRule rule = aacRule();
    rule.maxStreams = 1;
    rule.channels = 2;
    AudioStreamInfo audio = stereoAudio();
    audio.channels = 1;
    audio.streamCount = 4;
    audio.tracks = std::vector<AudioTrackInfo>(4, {u"aac"_s, 48'000, 1, {}, {}});
    const Rows rows = audioRows(rule, audio);
    EXPECT_THAT(
        rows, Contains(channels(Verdict::pass, "stereo (2 ch), tracks 1 and 2", "stereo (2 ch)")));
    EXPECT_EQ(
        rows.back().fix,
        u"Strip the extra audio tracks (in ffmpeg: -filter_complex \"[0:a:0][0:a:1]join=inputs"
        u"=2:channel_layout=stereo[a]\" -map 0:v:0 -map \"[a]\"). Only tracks 1 and 2 were "
        u"graded, as left and right."_s);
    rule.channels = 1;
    EXPECT_EQ(audioRows(rule, audio).back().fix,
              u"Strip the extra audio tracks (in ffmpeg: -map 0:v:0 -map 0:a:0). Only tracks 1 and "
              u"2 were graded, as left and right."_s);
}

TEST(AudioChecks, SoundMayEndAQuarterSecondBeforeThePicture)
{
    EXPECT_THAT(coverageRows(30.05, 29.8),
                ElementsAre(row("audio-coverage", "Audio coverage", Verdict::pass,
                                "29.80s, full duration", "audio running the full duration")));
    EXPECT_THAT(
        coverageRows(30, 29.74),
        ElementsAre(row("audio-coverage", "Audio coverage", Verdict::fail,
                        "audio ends at 29.74s of 30.00s", "audio running the full duration",
                        "The audio stream stops 0.26s before the picture. Re-export with the full "
                        "mix. In ffmpeg, -shortest or a short bed is the usual cause.")));
}

TEST(AudioChecks, SoundLongerThanThePicturePasses)
{
    EXPECT_EQ(coverageRows(30, 31).front().verdict, Verdict::pass);
}

TEST(AudioChecks, AClipOfHalfASecondOrUnknownSoundHasNoCoverageRow)
{
    EXPECT_THAT(coverageRows(0.5, 0.1), IsEmpty());
    EXPECT_THAT(idsOf(coverageRows(0.51, 0.1)), ElementsAre(u"audio-coverage"_s));
    EXPECT_THAT(coverageRows(30, 0.0), IsEmpty());
    EXPECT_THAT(coverageRows(30, {}), IsEmpty());
}

TEST(AudioChecks, WhereTheContainerHasNoLengthOfTheSoundTheDecodesCounts)
{
    Profile profile = bareProfile();
    profile.audio = aacRule();
    MediaInfo media = measuredSpot();
    media.audio->durationSeconds.reset();
    EXPECT_THAT(rowsOf(checkAudioCoverage, profile, media), IsEmpty());
    media.signal->soundEnd = 20;
    EXPECT_EQ(rowsOf(checkAudioCoverage, profile, media).front().measured,
              u"audio ends at 20.00s of 30.00s"_s);
    media.signal->pictureEnd = 20.2;
    EXPECT_EQ(rowsOf(checkAudioCoverage, profile, media).front().measured,
              u"20.00s, full duration"_s);
}

TEST(AudioChecks, WithoutPictureTheFilesDurationHasToBeCovered)
{
    Profile profile = bareProfile();
    profile.audio = aacRule();
    MediaInfo media = hdSpot();
    media.video.reset();
    media.durationSeconds = 40;
    EXPECT_EQ(rowsOf(checkAudioCoverage, profile, media).front().measured,
              u"audio ends at 30.00s of 40.00s"_s);
}

} // namespace vantroque::Checker

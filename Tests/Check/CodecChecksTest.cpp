#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

CodecOption option(const QString& codec, std::optional<bool> preferred = {})
{
    CodecOption option;
    option.codec = codec;
    option.preferred = preferred;
    return option;
}

CodecOption proresOption(const std::vector<QString>& profiles)
{
    CodecOption prores = option(u"prores"_s);
    prores.proresProfiles = profiles;
    return prores;
}

VideoStreamInfo proresVideo(const std::optional<QString>& profile)
{
    VideoStreamInfo video = hdVideo();
    video.codec = u"prores"_s;
    video.proresProfile = profile;
    return video;
}

Rows codecRows(const std::vector<CodecOption>& options, const VideoStreamInfo& video = hdVideo())
{
    Profile profile = bareProfile();
    profile.video = VideoRule{};
    profile.video->codecs = options;
    MediaInfo media = hdSpot();
    media.video = video;
    return rowsOf(checkVideoCodec, profile, media);
}

CheckResult codec(Verdict verdict, const char* measured, const char* expected,
                  const char* fix = nullptr)
{
    return row("video-codec", "Video codec", verdict, measured, expected, fix);
}

Rows encoderRows(const std::optional<QString>& actual, std::optional<int> level,
                 const QString& codecName = u"h264"_s, const std::optional<QString>& note = {})
{
    CodecOption wanted = option(codecName);
    wanted.encoderProfiles = {u"High"_s, u"Main"_s};
    wanted.encoderProfileNote = note;
    VideoStreamInfo video = hdVideo();
    video.codec = codecName;
    video.encoderProfile = actual;
    video.level = level;
    Rows rows;
    checkEncoderProfile(wanted, video, rows);
    return rows;
}

CheckResult encoder(Verdict verdict, const char* measured, const char* expected,
                    const char* fix = nullptr)
{
    return row("encoder-profile", "Encoder profile", verdict, measured, expected, fix);
}

} // namespace

TEST(CodecChecks, AnAllowedCodecPasses)
{
    EXPECT_THAT(codecRows({option(u"hevc"_s), option(u"h264"_s)}),
                ElementsAre(codec(Verdict::pass, "h264", "hevc or h264")));
    EXPECT_THAT(codecRows({option(u"hevc"_s), option(u"h264"_s, true)}),
                ElementsAre(codec(Verdict::pass, "h264", "hevc or h264")));
}

TEST(CodecChecks, AnAllowedCodecBesideAPreferredOneIsAccepted)
{
    EXPECT_THAT(codecRows({option(u"hevc"_s, true), option(u"h264"_s)}),
                ElementsAre(codec(Verdict::pass, "h264 (accepted)", "hevc or h264")));
}

TEST(CodecChecks, AnotherCodecFails)
{
    EXPECT_THAT(codecRows({proresOption({u"HQ"_s, u"4444"_s}), option(u"hevc"_s)}),
                ElementsAre(codec(Verdict::fail, "h264", "ProRes HQ/4444 or hevc",
                                  "Re-export with ProRes HQ/4444 or hevc.")));
}

TEST(CodecChecks, AMissingPictureFailsWithoutFix)
{
    Profile profile = bareProfile();
    profile.video = VideoRule{};
    profile.video->codecs = {option(u"h264"_s), option(u"prores"_s)};
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_THAT(rowsOf(checkVideoCodec, profile, media),
                ElementsAre(codec(Verdict::fail, "no video stream", "h264 or prores")));
}

TEST(CodecChecks, AListedProResProfilePassesEvenBesideAPreferredCodec)
{
    EXPECT_THAT(codecRows({proresOption({u"HQ"_s}), option(u"h264"_s, true)}, proresVideo(u"HQ"_s)),
                ElementsAre(codec(Verdict::pass, "ProRes 422 HQ", "ProRes HQ or h264")));
}

TEST(CodecChecks, AnotherProResProfileFails)
{
    const char* const fix = "Re-export as ProRes 422 HQ (in ffmpeg: -c:v prores_ks -profile:v 3).";
    EXPECT_THAT(
        codecRows({proresOption({u"HQ"_s, u"4444"_s}), option(u"h264"_s)}, proresVideo(u"LT"_s)),
        ElementsAre(codec(Verdict::fail, "ProRes 422 LT", "ProRes HQ/4444", fix)));
    EXPECT_THAT(codecRows({proresOption({u"4444"_s})}, proresVideo({})),
                ElementsAre(codec(Verdict::fail, "ProRes 422 unknown flavor", "ProRes 4444", fix)));
    EXPECT_THAT(codecRows({proresOption({})}, proresVideo(u"HQ"_s)),
                ElementsAre(codec(Verdict::fail, "ProRes 422 HQ", "ProRes ", fix)));
}

TEST(CodecChecks, ProResWithoutListedProfilesIsACodecLikeAnyOther)
{
    EXPECT_THAT(codecRows({option(u"prores"_s), option(u"h264"_s, true)}, proresVideo(u"LT"_s)),
                ElementsAre(codec(Verdict::pass, "ProRes 422 LT (accepted)", "prores or h264")));
}

TEST(CodecChecks, A4444StreamIsNotCalled422)
{
    EXPECT_EQ(describeCodec(proresVideo(u"4444"_s)), u"ProRes 4444"_s);
    EXPECT_EQ(describeCodec(proresVideo(u"4444 XQ"_s)), u"ProRes 4444 XQ"_s);
    EXPECT_EQ(describeCodec(proresVideo(u"HQ"_s)), u"ProRes 422 HQ"_s);
}

TEST(CodecChecks, TheFirstOfTwoOptionsForACodecIsUsed)
{
    CodecOption first = option(u"h264"_s);
    first.encoderProfiles = {u"High"_s};
    CodecOption second = option(u"h264"_s, true);
    VideoStreamInfo video = hdVideo();
    video.encoderProfile = u"High"_s;
    EXPECT_THAT(codecRows({first, second}, video),
                ElementsAre(encoder(Verdict::pass, "High", "High profile"),
                            codec(Verdict::pass, "h264 (accepted)", "h264 or h264")));
}

TEST(CodecChecks, AListedEncoderProfilePassesWithItsLevel)
{
    EXPECT_THAT(encoderRows(u"High"_s, 40),
                ElementsAre(encoder(Verdict::pass, "High@4.0", "High or Main profile")));
}

TEST(CodecChecks, AnotherEncoderProfileWarnsAndNeverFails)
{
    EXPECT_THAT(encoderRows(u"Baseline"_s, 31),
                ElementsAre(encoder(
                    Verdict::warn, "Baseline@3.1", "High or Main profile",
                    "The spec asks for High or Main profile. Baseline is what most 1080p encoders "
                    "write and is usually accepted. If the platform pushes back, re-export with "
                    "-profile:v high.")));
}

TEST(CodecChecks, AnAbsentEncoderProfileIsUnknownAndWarns)
{
    const Rows rows = encoderRows({}, {});
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().verdict, Verdict::warn);
    EXPECT_EQ(rows.front().measured, u"unknown"_s);
}

TEST(CodecChecks, TheNoteReplacesTheListOfProfilesToTheLetter)
{
    const Rows rows = encoderRows(u"Baseline"_s, {}, u"h264"_s, u"High, 100%1 intra"_s);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().expected, u"High, 100%1 intra"_s);
    EXPECT_TRUE(
        rows.front().fix->startsWith(u"The spec asks for High, 100%1 intra. Baseline is"_s));
}

TEST(CodecChecks, ALevelIsShownForH264AndHevcFromOneUp)
{
    EXPECT_EQ(encoderRows(u"High"_s, 0).front().measured, u"High"_s);
    EXPECT_EQ(encoderRows(u"High"_s, 1).front().measured, u"High@0.1"_s);
    EXPECT_EQ(encoderRows(u"Main"_s, 120, u"hevc"_s).front().measured, u"Main@12.0"_s);
    EXPECT_EQ(encoderRows(u"High"_s, 40, u"mpeg2video"_s).front().measured, u"High"_s);
}

TEST(CodecChecks, AnOptionWithoutEncoderProfilesHasNoEncoderRow)
{
    CodecOption bare = option(u"h264"_s);
    Rows rows;
    checkEncoderProfile(bare, hdVideo(), rows);
    bare.encoderProfiles = std::vector<QString>{};
    checkEncoderProfile(bare, hdVideo(), rows);
    EXPECT_THAT(rows, IsEmpty());
}

} // namespace vantroque::Checker

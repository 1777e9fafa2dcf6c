#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Profile zonesOnly(const QString& zone = u"tiktok"_s)
{
    Profile profile = bareProfile();
    profile.content = ContentRule{};
    profile.content->textClearOfZones = {zone};
    return profile;
}

MediaInfo vertical()
{
    MediaInfo media = hdSpot();
    media.video->width = 1080;
    media.video->height = 1920;
    return media;
}

/// Has a rule for every row that can appear without a measurement.
Profile fullProfile()
{
    Profile profile = bareProfile();
    profile.container = ContainerRule{{u"mp4"_s}, {}, true, true};
    CodecOption h264;
    h264.codec = u"h264"_s;
    h264.encoderProfiles = {u"High"_s};
    h264.minBitrateKbps = 10000;
    h264.cbrRequired = true;
    VideoRule video;
    video.codecs = {h264};
    video.resolutions = {{1920, 1080, {}}};
    video.squarePixelsRequired = true;
    video.progressiveRequired = true;
    video.chromaPreferred = u"420"_s;
    video.levels = LevelsRule{u"EBU R 103"_s, 5, 1, 4};
    profile.video = video;
    profile.frameRate = FrameRateRule{{25}, {}, true, true, true};
    AudioRule audio;
    audio.codecs = {u"aac"_s};
    audio.minBitrateKbps = 128;
    audio.sampleRates = {48000};
    audio.channels = 2;
    audio.maxStreams = 1;
    profile.audio = audio;
    profile.loudness = LoudnessRule{};
    profile.loudness->targetLKFS = -23;
    profile.duration = DurationRule{true, 60, {}};
    ContentRule content;
    content.slate = SlatePolicy::forbidden;
    content.textSafeFraction = 0.9;
    content.textClearOfZones = {u"tiktok"_s};
    profile.content = content;
    profile.file = FileRule{1000, {}, u"spot"_s, {}};
    profile.recommendedBitrate = BitrateLadderRule{{}};
    return profile;
}

} // namespace

TEST(Checker, AProfileWithoutRulesHasNoRows)
{
    EXPECT_THAT(evaluate(bareProfile(), hdSpot()).checks, IsEmpty());
}

TEST(Checker, RowsStandInTheOrderOfTheChecks)
{
    MediaInfo media = hdSpot();
    media.url = FileUrl::fromPath("/spots/spot.MP4");
    media.moovBeforeMdat = true;
    media.video->bitrateKbps = 12000;
    EXPECT_THAT(idsOf(evaluate(fullProfile(), media).checks),
                ElementsAre(u"container"_s, u"fast-start"_s, u"extension-case"_s,
                            u"encoder-profile"_s, u"video-codec"_s, u"resolution"_s,
                            u"pixel-aspect"_s, u"scan-type"_s, u"chroma"_s, u"frame-rate"_s,
                            u"cfr"_s, u"duplicate-frames"_s, u"video-levels"_s, u"bitrate"_s,
                            u"cbr"_s, u"recommended-bitrate"_s, u"audio-codec"_s, u"sample-rate"_s,
                            u"channels"_s, u"audio-bitrate"_s, u"audio-streams"_s,
                            u"audio-coverage"_s, u"loudness"_s, u"duration"_s, u"frame-accuracy"_s,
                            u"content"_s, u"text-safe"_s, u"text-zones"_s, u"file-size"_s,
                            u"file-name"_s));
}

TEST(Checker, OnlyTheCodecRowReportsAMissingPicture)
{
    Profile profile = bareProfile();
    profile.video = fullProfile().video;
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_THAT(
        evaluate(profile, media).checks,
        ElementsAre(row("video-codec", "Video codec", Verdict::fail, "no video stream", "h264")));
}

TEST(Checker, TheReportCarriesTheProfilesOutline)
{
    Profile profile = bareProfile();
    profile.shortName = u"TTV"_s;
    profile.inferred = true;
    profile.sourceURL = u"https://example.org/delivery"_s;
    profile.verifiedDate = u"2026-01-31"_s;
    const ProfileReport report = evaluate(profile, hdSpot());
    EXPECT_EQ(report.profileID, u"test-tv"_s);
    EXPECT_EQ(report.profileName, u"Test TV"_s);
    EXPECT_EQ(report.profileShortName, u"TTV"_s);
    EXPECT_TRUE(report.inferred);
    EXPECT_EQ(report.sourceURL, u"https://example.org/delivery"_s);
    EXPECT_EQ(report.verifiedDate, u"2026-01-31"_s);
    EXPECT_EQ(report.tag, std::nullopt);
    EXPECT_EQ(report.passedSummary, std::nullopt);
}

TEST(Checker, TheNameStandsInForAMissingShortName)
{
    const ProfileReport report = evaluate(bareProfile(), hdSpot());
    EXPECT_EQ(report.profileShortName, u"Test TV"_s);
    EXPECT_FALSE(report.inferred);
}

TEST(Checker, OnlyARecommendationIsAdvisory)
{
    Profile profile = bareProfile();
    for (const auto group : {ProfileGroup::digital, ProfileGroup::broadcast}) {
        profile.group = group;
        EXPECT_EQ(evaluate(profile, hdSpot()).advisory, std::nullopt);
    }
    profile.group = ProfileGroup::recommendation;
    EXPECT_EQ(evaluate(profile, hdSpot()).advisory, true);
}

TEST(Checker, AZonesOnlyProfileDoesNotApplyToAFileWithoutPictureUntilItHasOneMoreRule)
{
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_FALSE(applies(zonesOnly(), media));
    Profile profile = zonesOnly();
    profile.file = FileRule{};
    EXPECT_TRUE(applies(profile, media));
}

TEST(Checker, AZonesOnlyProfileAppliesToPicturesOfTheZonesShape)
{
    EXPECT_TRUE(applies(zonesOnly(), vertical()));
    EXPECT_FALSE(applies(zonesOnly(), hdSpot()));
    EXPECT_FALSE(applies(zonesOnly(u"no-such-zone"_s), vertical()));
}

TEST(Checker, AProfileThatNamesNoZonesAlwaysApplies)
{
    MediaInfo media = hdSpot();
    media.video.reset();
    Profile profile = bareProfile();
    EXPECT_TRUE(applies(profile, media));
    profile.content = ContentRule{};
    EXPECT_TRUE(applies(profile, media));
    profile.content->textClearOfZones = std::vector<QString>{};
    EXPECT_TRUE(applies(profile, media));
}

TEST(Checker, AnyOtherRuleMakesAProfileApply)
{
    std::vector<Profile> profiles(13, zonesOnly());
    auto next = profiles.begin();
    (next++)->container = ContainerRule{};
    (next++)->video = VideoRule{};
    (next++)->frameRate = FrameRateRule{};
    (next++)->audio = AudioRule{};
    (next++)->loudness = LoudnessRule{};
    (next++)->duration = DurationRule{};
    (next++)->file = FileRule{};
    (next++)->recommendedBitrate = BitrateLadderRule{};
    (next++)->content->slate = SlatePolicy::optional;
    (next++)->content->letterboxForbidden = false;
    (next++)->content->headTailBlackForbidden = false;
    (next++)->content->textSafeFraction = 0.9;
    (next++)->content->textRejectFraction = 0.95;
    ASSERT_EQ(next, profiles.end());
    for (const Profile& profile : profiles)
        EXPECT_TRUE(applies(profile, hdSpot())) << next - profiles.begin();
}

TEST(Checker, SlateDetailsAloneDoNotMakeAProfileApply)
{
    Profile profile = zonesOnly();
    profile.content->slateLayout = u"5 s slate"_s;
    profile.content->slateSeconds = 5;
    profile.content->maxTailFadeFrames = 12;
    EXPECT_FALSE(applies(profile, hdSpot()));
}

} // namespace vantroque::Checker

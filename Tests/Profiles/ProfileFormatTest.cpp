#include "Base/Json.h"
#include "Records/Profile.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

/// A profile with the required keys and whatever `rest` holds.
QByteArray profileText(const QByteArray& rest = {})
{
    return R"({"id": "x", "name": "X", "group": "broadcast", "sourceURL": "https://example.org",
               "verifiedDate": "2026-09-01")"
           + (rest.isEmpty() ? rest : ", " + rest) + "}";
}

Result<Profile> read(const QByteArray& rest)
{
    return Json::read<Profile>(profileText(rest));
}

QString errorOf(const QByteArray& rest)
{
    const auto profile = read(rest);
    return profile ? u"(read)"_s : profile.error().description;
}

TEST(ProfileFormat, TheFiveRequiredKeysMakeAProfileWithoutRules)
{
    const auto profile = read({});
    ASSERT_TRUE(profile) << profile.error().description.toStdString();
    Profile expected;
    expected.id = u"x"_s;
    expected.name = u"X"_s;
    expected.group = ProfileGroup::broadcast;
    expected.sourceURL = u"https://example.org"_s;
    expected.verifiedDate = u"2026-09-01"_s;
    EXPECT_EQ(*profile, expected);
    EXPECT_FALSE(profile->loudness || profile->content || profile->video || profile->frameRate);
}

TEST(ProfileFormat, EachOfTheFiveKeysIsRequired)
{
    const auto whole = Json::parse(profileText());
    ASSERT_TRUE(whole);
    for (const QString& key : whole->toObject().keys()) {
        QJsonObject rest = whole->toObject();
        rest.remove(key);
        const auto profile = Json::read<Profile>(Json::print(rest));
        ASSERT_FALSE(profile) << key.toStdString();
        EXPECT_EQ(profile.error().description, u'.' + key + u": missing"_s);
    }
}

TEST(ProfileFormat, AGroupOfAnyOtherTextFails)
{
    for (const char* group : {"Digital", "social", ""}) {
        QByteArray text = profileText();
        text.replace("broadcast", group);
        const auto profile = Json::read<Profile>(text);
        ASSERT_FALSE(profile) << group;
        EXPECT_EQ(profile.error().description,
                  u".group: unknown value \"%1\""_s.arg(QString::fromLatin1(group)));
    }
}

TEST(ProfileFormat, AnEmptyVideoRuleFails)
{
    EXPECT_EQ(errorOf(R"("video": {})"), u".video.codecs: missing"_s);
    EXPECT_EQ(errorOf(R"("video": {"codecs": []})"), u".video.resolutions: missing"_s);
}

TEST(ProfileFormat, AnEmptyLoudnessRuleIsPresent)
{
    const auto profile = read(R"("loudness": {})");
    ASSERT_TRUE(profile);
    EXPECT_EQ(profile->loudness, LoudnessRule());
}

TEST(ProfileFormat, ANestedErrorNamesItsPlace)
{
    EXPECT_EQ(errorOf(R"("video": {"codecs": [{"codec": "h264"}, {}], "resolutions": []})"),
              u".video.codecs[1].codec: missing"_s);
    EXPECT_EQ(errorOf(R"("recommendedBitrate": {"steps": [{"name": "a", "minLines": "b"}]})"),
              u".recommendedBitrate.steps[0].minLines: expected a whole number, found text"_s);
}

TEST(ProfileFormat, AValueOfTheWrongTypeFails)
{
    EXPECT_EQ(errorOf(R"("notes": 1)"), u".notes: expected text, found a number"_s);
    EXPECT_EQ(errorOf(R"("inferred": "yes")"), u".inferred: expected a bool, found text"_s);
    EXPECT_EQ(errorOf(R"("inferred": 1)"), u".inferred: expected a bool, found a number"_s);
    EXPECT_EQ(errorOf(R"("loudness": {"targetLKFS": true})"),
              u".loudness.targetLKFS: expected a number, found a bool"_s);
    EXPECT_EQ(errorOf(R"("loudness": [])"), u".loudness: expected an object, found a list"_s);
    EXPECT_EQ(errorOf(R"("container": {"allowed": "mp4"})"),
              u".container.allowed: expected a list, found text"_s);
    EXPECT_EQ(errorOf(R"("content": {"slate": "never"})"),
              u".content.slate: unknown value \"never\""_s);
}

TEST(ProfileFormat, NullStandsForAnAbsentOptionalKeyOnly)
{
    const auto profile = read(R"("video": null, "notes": null)");
    ASSERT_TRUE(profile);
    EXPECT_FALSE(profile->video || profile->notes);
    EXPECT_EQ(errorOf(R"("container": {"allowed": null})"),
              u".container.allowed: expected a list, found null"_s);
}

TEST(ProfileFormat, AWholeValuedNumberServesAnIntegerField)
{
    const auto profile = read(R"("audio": {"codecs": [], "sampleRates": [48000.0, 44.1e3],
                                           "channels": 2.0})");
    ASSERT_TRUE(profile) << profile.error().description.toStdString();
    EXPECT_THAT(profile->audio->sampleRates, testing::ElementsAre(48000, 44100));
    EXPECT_EQ(profile->audio->channels, 2);
    EXPECT_EQ(errorOf(R"("audio": {"codecs": [], "sampleRates": [48000.5]})"),
              u".audio.sampleRates[0]: expected a whole number"_s);
}

TEST(ProfileFormat, FileSizesKeep64Bits)
{
    const auto profile = read(R"("file": {"maxBytes": 256000000000})");
    ASSERT_TRUE(profile);
    EXPECT_EQ(profile->file->maxBytes, 256'000'000'000);
}

TEST(ProfileFormat, UnknownKeysAreIgnored)
{
    const auto profile = read(R"("comment": [1, {}], "file": {"maxbytes": 5})");
    ASSERT_TRUE(profile);
    EXPECT_EQ(profile->file, FileRule());
}

TEST(ProfileFormat, AListIsNoProfile)
{
    const auto profile = Json::read<Profile>("[]");
    ASSERT_FALSE(profile);
    EXPECT_EQ(profile.error().description, u"expected an object, found a list"_s);
}

TEST(ProfileFormat, APictureBelowEveryStepHasNoRecommendedBitrate)
{
    BitrateLadderStep step;
    step.minLines = 720;
    const BitrateLadderRule ladder{{step}};
    EXPECT_EQ(ladder.step(1280, 719), std::nullopt);
    EXPECT_EQ(ladder.recommendedMbps(640, 360, 25, false), std::nullopt);
    EXPECT_EQ(BitrateLadderRule().step(1920, 1080), std::nullopt);
}

} // namespace
} // namespace vantroque

#include "Profiles/PlatformZones.h"
#include "Profiles/ProfileStore.h"
#include "Profiles/SpecFreshness.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Support/TestFolder.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <set>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

class ShippedProfiles : public testing::Test {
protected:
    void SetUp() override
    {
        auto loaded = ProfileStore::loadFrom(VANTROQUE_SHIPPED_PROFILES);
        ASSERT_TRUE(loaded) << loaded.error().description.toStdString();
        profiles = *std::move(loaded);
        ASSERT_FALSE(profiles.empty());
    }

    std::vector<Profile> profiles;
};

template<typename List, typename Value>
bool contains(const List& list, const Value& value)
{
    return std::ranges::find(list, value) != std::ranges::end(list);
}

template<typename T>
bool isAscending(const std::optional<T>& low, const std::optional<T>& high)
{
    return !low || !high || *low <= *high;
}

TEST_F(ShippedProfiles, EachFileIsNamedAfterItsId)
{
    std::set<QString> ids;
    for (const Profile& profile : profiles)
        EXPECT_TRUE(ids.insert(profile.id).second) << profile.id.toStdString() << " twice";
    std::set<QString> stems;
    for (const auto& entry : fs::directory_iterator(VANTROQUE_SHIPPED_PROFILES)) {
        EXPECT_EQ(entry.path().extension(), ".json") << entry.path();
        stems.insert(QString::fromStdString(entry.path().stem().native()));
    }
    EXPECT_EQ(stems, ids);
}

TEST_F(ShippedProfiles, NamesAreUniqueWithinTheirGroup)
{
    std::set<std::pair<ProfileGroup, QString>> names;
    for (const Profile& profile : profiles) {
        EXPECT_TRUE(names.emplace(profile.group, profile.name).second) << profile.id.toStdString();
        EXPECT_FALSE(profile.name.isEmpty());
        EXPECT_LT(profile.shortName.value_or(profile.name).size(), 20) << profile.id.toStdString();
    }
}

TEST_F(ShippedProfiles, EachStatesItsSourceAndItsDay)
{
    for (const Profile& profile : profiles) {
        SCOPED_TRACE(profile.id.toStdString());
        EXPECT_TRUE(verifiedOn(profile)) << profile.verifiedDate.toStdString();
        EXPECT_TRUE(profile.sourceURL.startsWith("https://"_L1));
    }
}

TEST_F(ShippedProfiles, NotesAreShortEnoughToRead)
{
    for (const Profile& profile : profiles) {
        const QString notes = profile.notes.value_or(QString());
        EXPECT_LE(Text::characterCount(notes), 600) << profile.id.toStdString();
        EXPECT_EQ(notes, notes.simplified()) << profile.id.toStdString();
    }
}

TEST_F(ShippedProfiles, ContainersAndCodecsAreThoseThatAreMeasured)
{
    const std::set containers{u"mp4"_s, u"mov"_s, u"mxf"_s, u"webm"_s,
                              u"mkv"_s, u"mpg"_s, u"avi"_s};
    for (const Profile& profile : profiles) {
        SCOPED_TRACE(profile.id.toStdString());
        if (profile.container) {
            EXPECT_FALSE(profile.container->allowed.empty());
            for (const QString& kind : profile.container->allowed)
                EXPECT_TRUE(containers.contains(kind)) << kind.toStdString();
        }
        if (profile.audio) {
            for (const QString& codec : profile.audio->codecs)
                EXPECT_TRUE(contains(std::vector{u"aac"_s, u"pcm"_s, u"mp3"_s}, codec))
                    << codec.toStdString();
        }
    }
}

TEST_F(ShippedProfiles, WhatIsPreferredIsAlsoAllowed)
{
    for (const Profile& profile : profiles) {
        SCOPED_TRACE(profile.id.toStdString());
        if (profile.container && profile.container->preferred) {
            EXPECT_TRUE(contains(profile.container->allowed, *profile.container->preferred));
        }
        if (profile.audio && profile.audio->preferredCodec) {
            EXPECT_TRUE(contains(profile.audio->codecs, *profile.audio->preferredCodec));
        }
        if (profile.video && profile.video->chromaAccepted) {
            EXPECT_TRUE(profile.video->chromaPreferred.has_value());
        }
        if (profile.frameRate && profile.frameRate->preferred) {
            for (const double rate : *profile.frameRate->preferred)
                EXPECT_TRUE(contains(profile.frameRate->allowed, rate)) << rate;
        }
    }
}

TEST_F(ShippedProfiles, EachListedRateIsTheOneThatItsOwnFilesMatch)
{
    // A rate matches the first entry closer than 0.02, so 23.98 would take 24 for its own.
    for (const Profile& profile : profiles) {
        if (!profile.frameRate)
            continue;
        for (const double exact : {24000.0 / 1001, 24.0, 25.0, 30000.0 / 1001, 30.0, 48000.0 / 1001,
                                   48.0, 50.0, 60000.0 / 1001, 60.0}) {
            const auto near = [&](double rate) { return std::abs(rate - exact) < 0.02; };
            EXPECT_LE(std::ranges::count_if(profile.frameRate->allowed, near), 1)
                << profile.id.toStdString() << ' ' << exact;
            const auto match = std::ranges::find_if(profile.frameRate->allowed, near);
            if (match != profile.frameRate->allowed.end()) {
                EXPECT_EQ(Numbers::fixed(*match, 2), Numbers::fixed(exact, 2))
                    << profile.id.toStdString();
            }
        }
    }
}

TEST_F(ShippedProfiles, LimitsAreInOrder)
{
    for (const Profile& profile : profiles) {
        SCOPED_TRACE(profile.id.toStdString());
        for (const CodecOption& codec : profile.video.value_or(VideoRule()).codecs)
            EXPECT_TRUE(isAscending(codec.minBitrateKbps, codec.maxBitrateKbps));
        const DurationRule duration = profile.duration.value_or(DurationRule());
        EXPECT_TRUE(isAscending(duration.minSeconds, duration.maxSeconds));
        const LoudnessRule loudness = profile.loudness.value_or(LoudnessRule());
        EXPECT_TRUE(isAscending(loudness.minTruePeakDb, loudness.maxTruePeakDb));
        EXPECT_TRUE(isAscending(loudness.recommendedMaxTruePeakDb, loudness.maxTruePeakDb));
        const FileRule file = profile.file.value_or(FileRule());
        EXPECT_TRUE(isAscending(file.recommendedMaxBytes, file.maxBytes));
        const ContentRule content = profile.content.value_or(ContentRule());
        EXPECT_TRUE(isAscending(content.textSafeFraction, content.textRejectFraction));
    }
}

TEST_F(ShippedProfiles, LadderStepsDescendWithoutRepeats)
{
    for (const Profile& profile : profiles) {
        const auto steps = profile.recommendedBitrate.value_or(BitrateLadderRule()).steps;
        EXPECT_TRUE(
            std::ranges::is_sorted(steps, std::greater_equal(), &BitrateLadderStep::minLines))
            << profile.id.toStdString();
        for (const BitrateLadderStep& step : steps) {
            EXPECT_TRUE(isAscending(std::optional(step.sdrMbps), step.sdrMbpsMax));
            EXPECT_TRUE(isAscending(std::optional(step.sdrHighMbps), step.sdrHighMbpsMax));
            EXPECT_TRUE(isAscending(step.hdrMbps, step.hdrMbpsMax));
            EXPECT_TRUE(isAscending(step.hdrHighMbps, step.hdrHighMbpsMax));
        }
    }
}

TEST_F(ShippedProfiles, ASlateWithALengthHasItsBlackAndItsLayoutInWords)
{
    for (const Profile& profile : profiles) {
        const ContentRule content = profile.content.value_or(ContentRule());
        EXPECT_EQ(content.slateSeconds.has_value(), content.slateBlackSeconds.has_value())
            << profile.id.toStdString();
        EXPECT_EQ(content.slateSeconds.has_value(), content.slateLayout.has_value())
            << profile.id.toStdString();
    }
}

TEST_F(ShippedProfiles, NamePatternsAreValid)
{
    for (const Profile& profile : profiles) {
        const FileRule file = profile.file.value_or(FileRule());
        const QRegularExpression pattern(file.namePattern.value_or(QString()));
        EXPECT_TRUE(pattern.isValid()) << profile.id.toStdString();
        EXPECT_EQ(file.namePattern.has_value(), file.nameNote.has_value())
            << profile.id.toStdString();
    }
}

TEST_F(ShippedProfiles, ZonesAreThoseOfTheCatalog)
{
    std::set<QString> known;
    for (const PlatformZone& zone : PlatformZoneCatalog::all())
        known.insert(zone.id);
    std::set<QString> named;
    for (const Profile& profile : profiles)
        for (const QString& id : profile.content.value_or(ContentRule())
                                     .textClearOfZones.value_or(std::vector<QString>()))
            named.insert(id);
    EXPECT_EQ(named, known);
}

TEST_F(ShippedProfiles, TheZonesAndTheirProfilesCiteTheSamePage)
{
    const std::vector<std::pair<QString, PlatformZone>> pairs{
        {u"tiktok-in-feed"_s, PlatformZoneCatalog::tiktok()},
        {u"meta-reels-stories"_s, PlatformZoneCatalog::metaReelsStories()}};
    for (const auto& [id, zone] : pairs) {
        const auto found = std::ranges::find(profiles, id, &Profile::id);
        ASSERT_NE(found, profiles.end()) << id.toStdString();
        EXPECT_EQ(found->sourceURL, zone.sourceURL);
    }
}

TEST_F(ShippedProfiles, RecommendationsNeverMeasureAgainstASlate)
{
    for (const Profile& profile : profiles) {
        if (profile.group == ProfileGroup::recommendation) {
            EXPECT_EQ(profile.content.value_or(ContentRule()).slate, std::nullopt)
                << profile.id.toStdString();
        }
    }
}

TEST_F(ShippedProfiles, XrCodesEndInExactlyOneH)
{
    const auto found = std::ranges::find(profiles, u"extreme-reach-broadcast"_s, &Profile::id);
    ASSERT_NE(found, profiles.end());
    const QRegularExpression pattern(found->file->namePattern.value());
    for (const QString& good : {u"ABCD1234567H"_s, u"ABC1H"_s})
        EXPECT_TRUE(pattern.match(good).hasMatch()) << good.toStdString();
    for (const QString& bad :
         {u"ABCD1234567HH"_s, u"ABC1HH"_s, u"ABC1"_s, u"ABC 1H"_s, u"ABCD12345678H"_s, u"ABC1h"_s})
        EXPECT_FALSE(pattern.match(bad).hasMatch()) << bad.toStdString();
}

} // namespace
} // namespace vantroque

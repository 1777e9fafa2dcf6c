#include "Check/Builders.h"
#include "Check/SignalChecks.h"
#include "Check/SignalEvents.h"
#include "Check/SignalReport.h"

// What is said of a file that did not decode whole.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using SignalChecks::decodingRow;
using testing::ElementsAre;
using testing::IsEmpty;

DecodeHealth whole()
{
    DecodeHealth health;
    health.framesDecoded = health.framesPromised = 250;
    return health;
}

MediaInfo spotWith(const DecodeHealth& health)
{
    MediaInfo media = measuredSpot();
    media.signal->decodeHealth = health;
    return media;
}

DecodeHealth damagedAt(const std::vector<double>& seconds)
{
    DecodeHealth health = whole();
    for (const double second : seconds)
        health.places.push_back({second, second, true, false});
    health.placeCount = std::ssize(health.places);
    return health;
}

QString measured(const DecodeHealth& health)
{
    return decodingRow(spotWith(health)).value().measured;
}

TEST(DecodingRow, IsNotThereForAFileThatDecodesWholeOrThatNobodyMeasured)
{
    EXPECT_EQ(decodingRow(hdSpot()), std::nullopt);
    EXPECT_EQ(decodingRow(measuredSpot()), std::nullopt);
    EXPECT_EQ(decodingRow(spotWith(whole())), std::nullopt);
}

TEST(DecodingRow, SaysHowMuchDecodesAndWhereTheFileEnds)
{
    DecodeHealth health = whole();
    health.framesDecoded = 121;
    health.endsAt = 4.8;
    EXPECT_EQ(decodingRow(spotWith(health)),
              row("decoding", "Decoding", Verdict::fail,
                  "121 of 250 frames decode; the file ends at 00:00:04:20",
                  "every frame and sample decodes",
                  "Copy or export the file again: this one is cut off or damaged."));
}

TEST(DecodingRow, SaysWhereTheFirstDamageIsAndHowManyMoreThereAre)
{
    EXPECT_EQ(measured(damagedAt({2.4})), u"damaged at 00:00:02:10"_s);
    EXPECT_EQ(measured(damagedAt({2.4, 5})), u"damaged at 00:00:02:10 and 1 more place"_s);
    EXPECT_EQ(measured(damagedAt({2.4, 5, 7, 9})), u"damaged at 00:00:02:10 and 3 more places"_s);
}

TEST(DecodingRow, SaysHowMuchSoundDecodesOfAFileWithoutPicture)
{
    DecodeHealth health;
    health.soundSeconds = 2.2;
    health.soundSecondsPromised = 4;
    health.endsAt = 2.2;
    MediaInfo media = spotWith(health);
    media.video.reset();
    EXPECT_EQ(decodingRow(media)->measured,
              u"2.2 s of 4.0 s of sound decode; the file ends at 00:00:02:05"_s);
}

TEST(DecodingRow, IsTheLastOfEachGateAndOfTheSectionAndOfNoRecommendation)
{
    MediaInfo media = spotWith(damagedAt({2.4}));
    media.signal->channelLevels.emplace();
    Profile profile = bareProfile();
    profile.file = FileRule();
    profile.loudness = LoudnessRule();
    for (const auto group :
         {ProfileGroup::broadcast, ProfileGroup::digital, ProfileGroup::recommendation}) {
        profile.group = group;
        const auto rows = Checker::evaluate(profile, media).checks;
        const bool isGate = group != ProfileGroup::recommendation;
        EXPECT_EQ(!rows.empty() && rows.back().id == u"decoding"_s, isGate);
    }
    EXPECT_EQ(SignalReport::section(media, 0).value().checks.back().id, u"decoding"_s);
}

TEST(DecodingEvents, AreThePlacesAndTheEndOfTheFile)
{
    DecodeHealth health = damagedAt({2.4});
    health.places.push_back({5, 6.2, true, true});
    health.places.push_back({7, 7, false, true});
    health.endsAt = 9.96;
    const auto events = SignalEvents::events(spotWith(health), 0);
    const auto event = [](const QString& id, std::int64_t frame, std::optional<std::int64_t> end,
                          const QString& text) {
        return SignalEvent{id, SignalEvent::Kind::decoding, frame, end, Verdict::fail, text, {}};
    };
    EXPECT_THAT(
        events,
        ElementsAre(
            event(u"decoding-60-0"_s, 60, {}, u"The picture does not decode whole here"_s),
            event(u"decoding-125-1"_s, 125, 155, u"Picture and sound do not decode whole here"_s),
            event(u"decoding-175-2"_s, 175, {}, u"The sound does not decode whole here"_s),
            event(u"decoding-249-3"_s, 249, {}, u"The file ends here: it is cut off"_s)));
    EXPECT_THAT(SignalEvents::events(spotWith(whole()), 0), IsEmpty());
}

} // namespace
} // namespace vantroque

#include "Check/TextEvents.h"
#include "TextRegions.h"

namespace vantroque::TextEvents {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = SignalEvent::Kind;

namespace {

const std::vector<QString> tiktok{u"tiktok"_s};

/// Half of it, or another share, under the lower band of TikTok's controls, which begins at
/// 0.65625.
TextRegion underControls(double share, double start = 10)
{
    return textAt({0.3, 0.65625 - 0.1 * (1 - share), 0.3, 0.1}, start, start + 2);
}

std::vector<QString> textsOf(const std::vector<SignalEvent>& events)
{
    std::vector<QString> texts;
    for (const SignalEvent& each : events)
        texts.push_back(each.text);
    return texts;
}

std::vector<Kind> kindsOf(const std::vector<SignalEvent>& events)
{
    std::vector<Kind> kinds;
    for (const SignalEvent& each : events)
        kinds.push_back(each.kind);
    return kinds;
}

/// The profile with another name and limit.
Profile named(const char* name, double reject, ProfileGroup group = ProfileGroup::broadcast)
{
    Profile profile = withPlacement({}, reject);
    profile.name = QString::fromUtf8(name);
    profile.group = group;
    return profile;
}

} // namespace

TEST(TextEvents, TellOfTextPastTheSafeArea)
{
    const TextRegion region = reaching(0.98, 10.5);
    EXPECT_EQ(events(spotWith({region}), {withPlacement(0.9, 0.95)}),
              (std::vector{SignalEvent{
                  u"safeArea-263"_s, Kind::safeArea, 263, 313, Verdict::fail,
                  u"\"SALE\" reaches past the 95% content-safe area. Test TV will reject it."_s,
                  region.rect()}}));
}

TEST(TextEvents, TellOfTextUnderControls)
{
    const TextRegion region = underControls(0.5);
    EXPECT_EQ(events(uprightWith({region}), {withPlacement({}, {}, tiktok)}),
              (std::vector{SignalEvent{u"safeZone-250"_s, Kind::safeZone, 250, 300, Verdict::warn,
                                       u"\"SALE\" sits partly under the TikTok controls."_s,
                                       region.rect()}}));
}

TEST(TextEvents, AreNoneWithoutText)
{
    const std::vector<Profile> profiles{withPlacement(0.9, 0.95, tiktok)};
    EXPECT_THAT(events(hdSpot(), profiles), IsEmpty()) << "no measurement";
    EXPECT_THAT(events(measuredSpot(), profiles), IsEmpty()) << "not read";
    EXPECT_THAT(events(spotWith({}), profiles), IsEmpty());
    EXPECT_THAT(events(spotWith({reaching(1)}), {}), IsEmpty());
}

TEST(TextEvents, AHairPastTheSafeAreaIsInside)
{
    const auto count = [](double reach) {
        return events(spotWith({reaching(reach)}), {withPlacement(0.9, 0.95)}).size();
    };
    EXPECT_EQ(count(0.954), 0U);
    EXPECT_EQ(count(0.955), 1U);
}

TEST(TextEvents, TheSafeAreaNeedsALimitThatRejects)
{
    EXPECT_THAT(events(spotWith({reaching(1)}), {bareProfile()}), IsEmpty()) << "no content rule";
    EXPECT_THAT(events(spotWith({reaching(1)}), {withPlacement(0.9, {})}), IsEmpty());
}

TEST(TextEvents, ARecommendationRejectsNothing)
{
    EXPECT_THAT(
        events(spotWith({reaching(1)}), {named("Advice", 0.8, ProfileGroup::recommendation)}),
        IsEmpty());
    EXPECT_EQ(
        textsOf(events(spotWith({reaching(1)}), {named("Advice", 0.8, ProfileGroup::recommendation),
                                                 named("Station", 0.95)})),
        std::vector{u"\"SALE\" reaches past the 95% content-safe area. Station will reject it."_s});
}

TEST(TextEvents, TheTightestLimitCountsAndOfEqualsTheFirst)
{
    EXPECT_EQ(
        textsOf(events(spotWith({reaching(0.94)}),
                       {named("Wide", 0.95), named("First", 0.925), named("Second", 0.925)})),
        std::vector{u"\"SALE\" reaches past the 92.5% content-safe area. First will reject it."_s});
}

TEST(TextEvents, TheTextOfTheLeaderRaisesNone)
{
    const auto count = [](double start) {
        Profile profile = withPlacement({}, 0.95);
        MediaInfo media = spotWith({reaching(1, start)});
        addLeader(profile, media);
        return events(media, {profile}).size();
    };
    EXPECT_EQ(count(6.6), 1U) << "0.4 seconds before the leader's end";
    EXPECT_EQ(count(6.5), 1U);
    EXPECT_EQ(count(6.4), 0U) << "0.6 seconds before it";
}

TEST(TextEvents, LongTextIsCut)
{
    const auto text = [](const QString& read) {
        return textsOf(events(spotWith({reaching(1, 10, read)}), {withPlacement({}, 0.95)})).at(0);
    };
    const QString rest = u" reaches past the 95% content-safe area. Test TV will reject it."_s;
    EXPECT_EQ(text(QString(40, u'x')), u'"' + QString(40, u'x') + u'"' + rest);
    EXPECT_EQ(text(QString(41, u'x')), u'"' + QString(38, u'x') + u"..\""_s + rest);
    EXPECT_EQ(text(u"\n SALE %1 \n"_s), u"\"SALE %1\""_s + rest);
}

TEST(TextEvents, ATwentiethUnderControlsCounts)
{
    const auto count = [](double share) {
        return events(uprightWith({underControls(share)}), {withPlacement({}, {}, tiktok)}).size();
    };
    EXPECT_EQ(count(0.049), 0U);
    EXPECT_EQ(count(0.05), 1U);
}

TEST(TextEvents, NearlyAllOfATextUnderControlsIsAll)
{
    const auto text = [](double share) {
        return textsOf(events(uprightWith({underControls(share)}), {withPlacement({}, {}, tiktok)}))
            .at(0);
    };
    EXPECT_EQ(text(0.95), u"\"SALE\" sits under the TikTok controls."_s);
    EXPECT_EQ(text(0.9), u"\"SALE\" sits under the TikTok controls."_s);
    EXPECT_EQ(text(0.89), u"\"SALE\" sits partly under the TikTok controls."_s);
}

TEST(TextEvents, OneTextUnderTwoPlatformsIsOneEvent)
{
    // Each profile names one of the two zones; the catalog's order counts.
    const std::vector<Profile> profiles{withPlacement({}, {}, {{u"meta-reels-stories"_s}}),
                                        withPlacement({}, {}, tiktok)};
    EXPECT_EQ(textsOf(events(uprightWith({underControls(0.85)}), profiles)),
              std::vector{u"\"SALE\" sits under the TikTok and Reels / Stories controls."_s})
        << "Reels covers 0.9125, and the largest overlap decides";
}

TEST(TextEvents, ZonesOfAnotherShapeRaiseNone)
{
    EXPECT_THAT(events(spotWith({underControls(1)}), {withPlacement({}, {}, tiktok)}), IsEmpty());
    EXPECT_THAT(
        events(uprightWith({underControls(1)}), {withPlacement({}, {}, {{u"no-such-zone"_s}})}),
        IsEmpty());
}

TEST(TextEvents, WithoutZonesThereAreOnlySafeAreaEvents)
{
    EXPECT_THAT(
        kindsOf(events(uprightWith({underControls(1), reaching(1)}), {withPlacement({}, 0.95)})),
        ElementsAre(Kind::safeArea));
}

TEST(TextEvents, TextWithoutAreaIsUnderNoControls)
{
    EXPECT_THAT(events(uprightWith({textAt({0.3, 0.8, 0.3, 0})}), {withPlacement({}, {}, tiktok)}),
                IsEmpty());
}

TEST(TextEvents, SafeAreaEventsComeFirst)
{
    EXPECT_THAT(kindsOf(events(uprightWith({underControls(0.5, 2), reaching(1, 5)}),
                               {withPlacement({}, 0.95, tiktok)})),
                ElementsAre(Kind::safeArea, Kind::safeZone, Kind::safeZone))
        << "what reaches the edge is under the column there as well";
}

TEST(TextEvents, WithoutPictureCountAt24Frames)
{
    MediaInfo media = spotWith({reaching(1, 10)});
    media.video.reset();
    const auto list = events(media, {withPlacement({}, 0.95, tiktok)});
    ASSERT_THAT(list, SizeIs(1));
    EXPECT_EQ(list[0].frame, 240);
    EXPECT_EQ(list[0].endFrame, 288);
    media = spotWith({reaching(1, 10)});
    media.video->nominalFrameRate = 0;
    EXPECT_EQ(events(media, {withPlacement({}, 0.95)}).at(0).frame, 240);
}

} // namespace vantroque::TextEvents

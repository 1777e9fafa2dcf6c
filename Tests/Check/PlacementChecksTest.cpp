#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

ContentRule placement(std::optional<double> safe, std::optional<double> reject,
                      const std::optional<std::vector<QString>>& zones = {})
{
    ContentRule rule;
    rule.textSafeFraction = safe;
    rule.textRejectFraction = reject;
    rule.textClearOfZones = zones;
    return rule;
}

Rows placementRows(const ContentRule& rule, const MediaInfo& media = hdSpot())
{
    Profile profile = bareProfile();
    profile.content = rule;
    return rowsOf(checkTextPlacement, profile, media);
}

CheckResult safeArea(const char* expected)
{
    return row("text-safe", "Safe area", Verdict::info, "text not scanned", expected);
}

CheckResult zones(const char* expected)
{
    return row("text-zones", "Safe zones", Verdict::info, "text not scanned", expected);
}

} // namespace

TEST(PlacementChecks, TheSafeAreaIsWordedByItsTwoLimits)
{
    EXPECT_THAT(placementRows(placement(0.9, 0.95)),
                ElementsAre(safeArea("text and graphics inside 90%, rejected past 95%")));
    EXPECT_THAT(placementRows(placement(0.925, {})),
                ElementsAre(safeArea(
                    "text and graphics inside 92.5%, and anything up to 100% is accepted")));
    EXPECT_THAT(placementRows(placement({}, 0.95)),
                ElementsAre(safeArea("text and graphics inside 95%")));
}

TEST(PlacementChecks, ZonesAreNamedInTheProfilesOrder)
{
    EXPECT_THAT(placementRows(placement({}, {}, {{u"meta-reels-stories"_s, u"tiktok"_s}})),
                ElementsAre(zones("text clear of the Reels / Stories and TikTok controls")));
}

TEST(PlacementChecks, UnknownZonesAreLeftOut)
{
    EXPECT_THAT(placementRows(placement({}, {}, {{u"no-such-zone"_s, u"tiktok"_s}})),
                ElementsAre(zones("text clear of the TikTok controls")));
    EXPECT_THAT(placementRows(placement({}, {}, {{u"no-such-zone"_s}})), IsEmpty());
}

TEST(PlacementChecks, TheSafeAreaComesBeforeTheZones)
{
    EXPECT_THAT(idsOf(placementRows(placement(0.9, {}, {{u"tiktok"_s}}))),
                ElementsAre(u"text-safe"_s, u"text-zones"_s));
}

TEST(PlacementChecks, WithoutPlacementRulesThereIsNoRow)
{
    EXPECT_THAT(placementRows(placement({}, {})), IsEmpty());
    EXPECT_THAT(placementRows(placement({}, {}, std::vector<QString>{})), IsEmpty());
    EXPECT_THAT(rowsOf(checkTextPlacement, bareProfile(), hdSpot()), IsEmpty());
}

TEST(PlacementChecks, ZonesAreNotScannedAlsoWithoutPicture)
{
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_THAT(placementRows(placement({}, {}, {{u"tiktok"_s}}), media),
                ElementsAre(zones("text clear of the TikTok controls")));
}

TEST(PlacementChecks, AMeasuredFileWhoseTextWasNotLookedForIsNotScanned)
{
    MediaInfo media = hdSpot();
    media.signal = SignalInfo{};
    EXPECT_THAT(placementRows(placement({}, 0.95), media),
                ElementsAre(safeArea("text and graphics inside 95%")));
    media.signal->textScanAttempted = false;
    EXPECT_THAT(placementRows(placement({}, 0.95), media),
                ElementsAre(safeArea("text and graphics inside 95%")));
}

TEST(PlacementChecks, AScanThatCouldNotRunWarns)
{
    const char* const fix =
        "The frames could not be read. Check the placement yourself with the guides on.";
    MediaInfo media = hdSpot();
    media.signal = SignalInfo{};
    media.signal->textScanAttempted = true;
    EXPECT_THAT(
        placementRows(placement(0.9, 0.95, {{u"tiktok"_s}}), media),
        ElementsAre(row("text-safe", "Safe area", Verdict::warn, "the text scan could not run",
                        "text and graphics inside 90%, rejected past 95%", fix),
                    row("text-zones", "Safe zones", Verdict::warn, "the text scan could not run",
                        "text clear of the TikTok controls", fix)));
}

} // namespace vantroque::Checker

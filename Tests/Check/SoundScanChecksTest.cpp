#include "Check/SoundScanChecks.h"
#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const noWarning = "no sound of a public warning (47 CFR, 11.45 (a), 2019)";
const char* const noClipping =
    "fewer than 3 samples in a row at full scale (House rules, 2025, at second hand)";
const char* const takeOut =
    "Take the sounds of the warning out of the mix, imitations too. Broadcast without an emergency "
    "they are forbidden, and fined.";

Rows rowsOn(const std::optional<SoundScan>& scan)
{
    Profile profile = bareProfile();
    profile.sound = SoundRule{
        RuleSource{u"47 CFR"_s, u"11.45 (a)"_s, u"2019"_s},
        RuleSource{u"House rules"_s, {}, u"2025"_s, {}, RuleSource::Certainty::secondHand}};
    MediaInfo media = measuredSpot();
    media.signal->soundScan = scan;
    return rowsOf(checkSoundScan, profile, media);
}

CheckResult alerts(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("alert-tones", "Alert tones", verdict, measured, noWarning, fix);
}

CheckResult clipping(Verdict verdict, const char* measured)
{
    return row("clipping", "Clipping", verdict, measured, noClipping);
}

} // namespace

TEST(SoundScanChecks, NothingFoundPasses)
{
    EXPECT_THAT(rowsOn(SoundScan{}),
                ElementsAre(alerts(Verdict::pass, "none"), clipping(Verdict::pass, "none")));
}

TEST(SoundScanChecks, SoundsOfAWarningFailAndSayWhere)
{
    SoundScan scan;
    for (const double start : {2.0, 8.0, 14.0, 20.0})
        scan.alertTones.push_back({AlertTone::Kind::attention, 0, start, start + 2});
    scan.alertTones[1].kind = AlertTone::Kind::header;
    CheckResult expected =
        alerts(Verdict::fail,
               "attention signal (853 and 960 Hz) at 00:00:02:00 for 2.0 s, data of a warning at "
               "00:00:08:00 for 2.0 s, attention signal (853 and 960 Hz) at 00:00:14:00 for 2.0 s "
               "and 1 more",
               takeOut);
    expected.moment = CheckMoment{50, 100, {}};
    EXPECT_EQ(rowsOn(scan).at(0), expected);
}

TEST(SoundScanChecks, ClippingOnlyWarnsAndPointsAtTheLongest)
{
    SoundScan scan;
    scan.clippedRuns = {{0, 1, 3}, {1, 4, 9}};
    scan.clippedRunCount = 12;
    const CheckResult found = rowsOn(scan).at(1);
    EXPECT_EQ(found.verdict, Verdict::warn);
    EXPECT_EQ(found.measured, u"12 places, the longest 9 samples at 00:00:04:00"_s);
    EXPECT_EQ(found.moment, (CheckMoment{100, {}, {}}));
    scan.clippedRuns.pop_back();
    scan.clippedRunCount = 1;
    EXPECT_EQ(rowsOn(scan).at(1).measured, u"1 place, the longest 3 samples at 00:00:01:00"_s);
}

TEST(SoundScanChecks, WhatWasNotMeasuredIsNoPass)
{
    EXPECT_THAT(rowsOn({}), ElementsAre(alerts(Verdict::warn, "could not be measured"),
                                        clipping(Verdict::warn, "could not be measured")));
}

TEST(SoundScanChecks, AProfileThatAsksForNothingAndAFileWithoutSoundHaveNone)
{
    EXPECT_THAT(rowsOf(checkSoundScan, bareProfile(), measuredSpot()), IsEmpty());
    Profile profile = bareProfile();
    profile.sound = SoundRule{RuleSource{u"47 CFR"_s, {}, u"2019"_s}, {}};
    MediaInfo media = measuredSpot();
    media.audio.reset();
    EXPECT_THAT(rowsOf(checkSoundScan, profile, media), IsEmpty());
}

TEST(SoundScanChecks, PlacesAreEventsForTheProfilesThatAskAndOfBothChannelsOne)
{
    MediaInfo media = measuredSpot();
    media.signal->soundScan =
        SoundScan{{{AlertTone::Kind::attention, 0, 2, 4}, {AlertTone::Kind::attention, 1, 2, 4}},
                  {{0, 6, 5}, {1, 6, 3}, {0, 8, 4}},
                  3};
    Profile profile = bareProfile();
    EXPECT_THAT(SoundScanChecks::events(media, {profile}), IsEmpty());
    profile.sound = SoundRule{RuleSource{u"47 CFR"_s, {}, u"2019"_s}, {}};
    EXPECT_EQ(SoundScanChecks::events(media, {bareProfile(), profile}),
              (std::vector<SignalEvent>{{{},
                                         SignalEvent::Kind::alertTone,
                                         50,
                                         100,
                                         Verdict::fail,
                                         u"Public warning: attention signal (853 and 960 Hz)"_s,
                                         {}}}));
    profile.sound = SoundRule{{}, RuleSource{u"House rules"_s, {}, u"2025"_s}};
    const auto clipped = SoundScanChecks::events(media, {profile});
    ASSERT_EQ(clipped.size(), 2U);
    EXPECT_EQ(clipped[0].frame, 150);
    EXPECT_EQ(clipped[0].text, u"Clipped: 5 samples at full scale"_s);
    EXPECT_EQ(clipped[1].frame, 200);
}

} // namespace vantroque::Checker

#include "Check/FlashChecks.h"

#include "Check/Builders.h"

namespace vantroque::FlashChecks {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

namespace {

using Kind = FlashFinding::Kind;

Profile asking(std::optional<FlashLight> luminance = {})
{
    Profile profile = bareProfile();
    profile.video = VideoRule();
    profile.video->flashes = FlashRule{
        {u"BCAP Code"_s, u"rule 4.6"_s, u"2015"_s, {}, RuleSource::Certainty::owner}, luminance};
    return profile;
}

/// From that second on for a second, nine changes on the right half.
FlashFinding flashing(Kind kind, double start)
{
    return {kind, start, start + 1, start + 0.4, {0.5, 0, 0.5, 1}, 0.5, 61.5, 9, 4, {}};
}

MediaInfo spotWith(const std::vector<FlashFinding>& findings, FlashLight light = FlashLight::bt1886)
{
    MediaInfo media = hdSpot();
    media.signal = SignalInfo();
    FlashInfo info;
    info.light = light;
    info.findings = findings;
    info.curve = {1, {1, 0.2, 0.43, 0}};
    media.signal->flashes = {info};
    return media;
}

std::vector<CheckResult> rowsOf(const MediaInfo& media, const Profile& profile = asking())
{
    Checker::Rows rows;
    Checker::checkFlashes(profile, media, rows);
    return rows;
}

std::vector<QString> measuredOf(const MediaInfo& media, const Profile& profile = asking())
{
    std::vector<QString> texts;
    for (const CheckResult& row : rowsOf(media, profile))
        texts.push_back(row.measured);
    return texts;
}

std::vector<Verdict> verdictsOf(const MediaInfo& media, const Profile& profile = asking())
{
    std::vector<Verdict> verdicts;
    for (const CheckResult& row : rowsOf(media, profile))
        verdicts.push_back(row.verdict);
    return verdicts;
}

} // namespace

TEST(FlashChecks, OnlyWhoAsksHasRows)
{
    EXPECT_THAT(rowsOf(spotWith({flashing(Kind::luminance, 3)}), bareProfile()), IsEmpty());
    MediaInfo sound = spotWith({});
    sound.video.reset();
    EXPECT_THAT(rowsOf(sound), IsEmpty());
    EXPECT_THAT(events(spotWith({flashing(Kind::luminance, 3)}), {bareProfile()}), IsEmpty());
}

TEST(FlashChecks, ACleanSpotPassesWithHowNearItComes)
{
    const auto rows = rowsOf(spotWith({}));
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0], row("psy-flash", "PSE flashes", Verdict::pass,
                           "none over the limit; 99% of it at most",
                           "at most three flashes in a second on more than a quarter of the screen "
                           "(BCAP Code, rule 4.6, 2015)"));
    EXPECT_EQ(rows[1].measured, u"none"_s);
    EXPECT_EQ(rows[2].measured, u"none for longer than 5 s"_s);
    EXPECT_EQ(rows[3].measured, u"none"_s);
}

TEST(FlashChecks, FlashesAndRedFailAndTheRestWarns)
{
    const MediaInfo media =
        spotWith({flashing(Kind::luminance, 3), flashing(Kind::luminance, 9),
                  flashing(Kind::red, 4), flashing(Kind::extended, 5), flashing(Kind::pattern, 6)});
    const auto rows = rowsOf(media);
    EXPECT_THAT(verdictsOf(media),
                ElementsAre(Verdict::fail, Verdict::fail, Verdict::warn, Verdict::warn));
    EXPECT_EQ(rows[0].measured,
              u"would not pass a flash test: 9 changes (4 flashes) in a second on 50% of the "
              u"screen, by 62 cd/m², at 00:00:03:00 and 1 more place"_s);
    EXPECT_EQ(rows[0].moment, (CheckMoment{75, 100, NormalizedRect{0.5, 0, 0.5, 1}}));
    EXPECT_TRUE(rows[0].fix);
    EXPECT_EQ(rows[1].measured,
              u"would not pass a flash test: 9 changes (4 flashes) in a second on 50% of the "
              u"screen, at 00:00:04:00"_s);
    EXPECT_EQ(rows[2].measured, u"flashing for 1.0 s on 50% of the screen, at 00:00:05:00"_s);
    EXPECT_EQ(rows[3].measured, u"stripes for 1.0 s on 50% of the screen, at 00:00:06:00"_s);

    const auto list = events(media, {asking(), asking(FlashLight::bt1886)});
    ASSERT_EQ(list.size(), 5U) << "each once";
    EXPECT_EQ(list[0].kind, SignalEvent::Kind::psyFlash);
    EXPECT_EQ(list[0].verdict, Verdict::fail);
    EXPECT_EQ(list[0].text,
              u"9 changes (4 flashes) in a second on 50% of the screen, by 62 cd/m²"_s);
    EXPECT_EQ(list[0].frame, 75);
    EXPECT_EQ(list[4].text, u"Stripes for 1.0 s on 50% of the screen"_s);
}

TEST(FlashChecks, AMovingPictureWarns)
{
    FlashFinding pan = flashing(Kind::luminance, 3);
    pan.moves = true;
    EXPECT_EQ(rowsOf(spotWith({pan}))[0].verdict, Verdict::warn);
    EXPECT_TRUE(rowsOf(spotWith({pan}))[0].measured.endsWith(
        u"; it is mostly a picture that moves, so look"_s));
    // One that stands still outweighs it.
    EXPECT_EQ(rowsOf(spotWith({pan, flashing(Kind::luminance, 9)}))[0].verdict, Verdict::fail);
}

TEST(FlashChecks, WhatIsInTheLeaderDoesNotCount)
{
    Profile profile = asking();
    profile.content = ContentRule();
    profile.content->slateSeconds = 7;
    profile.content->slateBlackSeconds = 3;
    MediaInfo media = spotWith({flashing(Kind::luminance, 2)});
    EXPECT_EQ(verdictsOf(media, profile)[0], Verdict::fail) << "there is no leader";
    media.signal->blackRuns = {{7, 10}};
    EXPECT_EQ(verdictsOf(media, profile)[0], Verdict::pass);
    EXPECT_EQ(measuredOf(media, profile)[0], u"none over the limit; 0% of it at most"_s);
    EXPECT_THAT(events(media, {profile}), IsEmpty());
    media.signal->flashes->at(0).findings.push_back(flashing(Kind::luminance, 12));
    EXPECT_EQ(rowsOf(media, profile)[0].moment->frame, 300);
}

TEST(FlashChecks, TheLightIsTheOneThatIsAskedFor)
{
    const MediaInfo media = spotWith({flashing(Kind::luminance, 3)});
    EXPECT_THAT(measuredOf(media, asking(FlashLight::legacy)),
                testing::Each(u"could not be measured"_s));
    EXPECT_THAT(verdictsOf(media, asking(FlashLight::legacy)), testing::Each(Verdict::warn));
    MediaInfo hdr = spotWith({flashing(Kind::luminance, 3)}, FlashLight::hlg);
    hdr.video->colorTransfer = u"arib-std-b67"_s;
    EXPECT_TRUE(measuredOf(hdr)[0].contains(u", on a screen of 1,000 cd/m²"_s));
    MediaInfo skipped = media;
    skipped.signal.reset();
    EXPECT_THAT(measuredOf(skipped), testing::Each(u"signal pass skipped"_s));
}

TEST(FlashChecks, TheBoxLiesInThePictureAsItIsShown)
{
    MediaInfo media = spotWith({flashing(Kind::luminance, 3)});
    media.video->rotation = 180;
    EXPECT_EQ(rowsOf(media)[0].moment->box, (NormalizedRect{0, 0, 0.5, 1}));
}

} // namespace vantroque::FlashChecks

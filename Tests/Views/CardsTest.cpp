#include "VantroqueApp/Views/Report/MeasurementCards.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

std::vector<MeasurementCard> cardsOf(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    return MeasurementCard::of(Analyzer::report(media, profiles), &media, profiles);
}

MediaInfo spot(bool tooLoud = false)
{
    return WindowScenes::media(FileUrl::fromPath("/spot.mov"), tooLoud);
}

Profile withTarget()
{
    Profile profile = bareProfile();
    profile.loudness = LoudnessRule{.targetLKFS = -24.0, .toleranceLU = 2.0, .maxTruePeakDb = -2.0};
    return profile;
}

TEST(Cards, CompareSoundWithTheTarget)
{
    const auto good = cardsOf(spot(), {withTarget()});
    EXPECT_EQ(good[0], (MeasurementCard{u"Loudness"_s, u"-24.2"_s, u"LKFS"_s, u"target -24 ± 2"_s,
                                        Verdict::pass}));
    EXPECT_EQ(good[1], (MeasurementCard{u"True peak"_s, u"-3.1"_s, u"dBTP"_s, u"ceiling -2"_s,
                                        Verdict::pass}));
    const auto loud = cardsOf(spot(true), {withTarget()});
    EXPECT_EQ(loud[0].verdict, Verdict::fail);
    EXPECT_EQ(loud[1].verdict, Verdict::fail);
}

TEST(Cards, SayWhyThereIsNothingToCompareWith)
{
    const auto none = cardsOf(spot(), {bareProfile()});
    EXPECT_EQ(none[0].caption, u"no rule for the selected platforms"_s);
    EXPECT_EQ(none[1].caption, u"no rule for the selected platforms"_s);
    Profile silent = bareProfile();
    silent.loudness = LoudnessRule();
    EXPECT_EQ(cardsOf(spot(), {silent})[0].caption, u"no published rule"_s);
    EXPECT_EQ(cardsOf(spot(), {silent})[0].verdict, std::nullopt);
}

TEST(Cards, JudgeLumaByWhetherItWouldBeRejected)
{
    MediaInfo media = spot();
    EXPECT_EQ(cardsOf(media, {})[2].caption, u"within EBU R 103"_s);
    EXPECT_EQ(cardsOf(media, {})[2].value, u"0–102"_s);
    FileReport report = Analyzer::report(media, {});
    report.measurements->levelsRejectSeconds = 4.5;
    const auto cards = MeasurementCard::of(report, &media, {});
    EXPECT_EQ(cards[2].caption, u"beyond EBU R 103"_s);
}

TEST(Cards, NameRangeAndMatrixAndWhatWasAssumed)
{
    MediaInfo media = spot();
    media.video->colorSpace = u"bt709"_s;
    media.video->colorRange = u"tv"_s;
    EXPECT_EQ(cardsOf(media, {})[3],
              (MeasurementCard{u"Range"_s, u"16 to 235"_s, {}, u"Video, Rec.709"_s, {}}));
    media.video->colorRange = u"pc"_s;
    media.video->colorSpace = u"bt2020nc"_s;
    EXPECT_EQ(cardsOf(media, {})[3].value, u"0 to 255"_s);
    EXPECT_EQ(cardsOf(media, {})[3].caption, u"Full, Rec.2020"_s);
    media.video->colorSpace = u"smpte170m"_s;
    EXPECT_EQ(cardsOf(media, {})[3].caption, u"Full, Rec.601"_s);
    media.video->colorSpace.reset();
    EXPECT_EQ(cardsOf(media, {})[3].caption, u"Full, Rec.709, assumed"_s);
}

} // namespace
} // namespace vantroque

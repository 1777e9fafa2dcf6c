#include "Check/CheckRow.h"
#include "VantroqueApp/Views/Report/MeasurementCards.h"
#include "VantroqueApp/Views/Style/Type.h"
#include "Views/WindowFixture.h"

#include <QLayout>
#include <QPushButton>

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

QPushButton* linkOf(const QWidget& view)
{
    for (auto* link : view.findChildren<QPushButton*>())
        if (link->isVisible())
            return link;
    return nullptr;
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
                                        Verdict::pass, u"loudness"_s}));
    EXPECT_EQ(good[1], (MeasurementCard{u"True peak"_s, u"-3.1"_s, u"dBTP"_s, u"ceiling -2"_s,
                                        Verdict::pass, u"true-peak"_s}));
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

TEST(Cards, OfSeveralTargetsLoudnessIsAsBadAsTheWorst)
{
    Profile other = withTarget();
    other.id = u"other"_s;
    other.loudness->targetLKFS = -16;
    const auto cards = cardsOf(spot(), {withTarget(), other});
    EXPECT_EQ(cards[0].verdict, Verdict::fail);
    EXPECT_EQ(cards[0].caption, u"targets -24 and -16"_s);
}

TEST(Cards, PointAtTheWorstMomentOfTheirCheck)
{
    MediaInfo media = spot();
    FileReport report = Analyzer::report(media, {});
    EXPECT_EQ(MeasurementCard::of(report, &media, {})[2].moment, std::nullopt);
    const CheckMoment moment{308, 350, {}};
    auto row = CheckRow{u"video-levels"_s, u"Video levels"_s, {}}.warn(u"over"_s);
    row.moment = moment;
    report.sections->front().checks.push_back(row);
    const auto cards = MeasurementCard::of(report, &media, {});
    EXPECT_EQ(cards[2].moment, moment);
    EXPECT_EQ(cards[0].moment, std::nullopt);
}

TEST(Cards, OfSoundPointToWhereItIsTooLoud)
{
    MediaInfo media = spot(true);
    media.signal->loudestSeconds = 12.32;
    media.signal->truePeakSeconds = 4;
    const auto cards = cardsOf(media, {withTarget()});
    EXPECT_EQ(cards[0].moment, (CheckMoment{308, {}, {}}));
    EXPECT_EQ(cards[1].moment, (CheckMoment{100, {}, {}}));
    media.signal->integratedLKFS = -24;
    EXPECT_EQ(cardsOf(media, {withTarget()})[0].moment, std::nullopt);
}

TEST(Cards, OneWithAWorstMomentOpensToItAndItsLinkGoesThere)
{
    MediaInfo media = spot();
    auto cards = cardsOf(media, {});
    cards[2].moment = CheckMoment{308, {}, {}};
    MeasurementCards view;
    std::vector<std::int64_t> gone;
    QObject::connect(
        &view, &MeasurementCards::momentChosen, &view,
        [&](const QString&, const CheckMoment& moment) { gone.push_back(moment.frame); });
    for (const bool wide : {false, true}) {
        view.setWide(wide);
        view.show(cards, 25, true);
        view.QWidget::show();
        EXPECT_EQ(linkOf(view), nullptr);
        for (auto* card : view.findChildren<QAbstractButton*>())
            if (card->isCheckable())
                QTest::keyClick(card, Qt::Key_Return);
        auto* link = linkOf(view);
        ASSERT_NE(link, nullptr);
        EXPECT_EQ(link->text(), u"worst at 00:00:12:08"_s);
        QTest::mouseClick(link, Qt::LeftButton);
    }
    EXPECT_THAT(gone, testing::ElementsAre(308, 308));
}

TEST(Cards, StandInRowsOrSideBySideWithNothingBetweenThemEmpty)
{
    MeasurementCards view;
    view.show(cardsOf(spot(), {}), 25, true);
    EXPECT_EQ(view.heightForWidth(396), 4 * 32);
    view.setWide(true);
    EXPECT_EQ(view.heightForWidth(900), 72);
}

TEST(Cards, AreHigherWhereACaptionNeedsASecondLine)
{
    MediaInfo media = spot();
    media.video->colorSpace.reset();
    MeasurementCards view;
    view.show(cardsOf(media, {withTarget()}), 25, true);
    const auto highAt = [&](bool wide, int width) {
        view.setWide(wide);
        return view.heightForWidth(width);
    };
    EXPECT_EQ(highAt(false, 400), 4 * 32);
    EXPECT_GT(highAt(false, 280), 4 * 32);
    EXPECT_EQ(highAt(true, 700), 72);
    EXPECT_GT(highAt(true, 420), 72);
}

TEST(Cards, SideBySideTitleAndFigureAreWholeBesideALongCaption)
{
    std::vector<Profile> profiles;
    for (const double target : {-24.0, -23.0, -18.0, -16.0}) {
        profiles.push_back(withTarget());
        profiles.back().loudness->targetLKFS = target;
    }
    MeasurementCards view;
    view.show(cardsOf(spot(), profiles), 25, true);
    view.setWide(true);
    view.resize(520, view.heightForWidth(520));
    view.layout()->activate();
    const QFontMetrics metrics(Type::text(Type::caption));
    int cards = 0;
    for (const auto* card : view.findChildren<QAbstractButton*>(Qt::FindDirectChildrenOnly)) {
        const QString title = card->accessibleName().section(u':', 0, 0);
        EXPECT_GT(card->width(), metrics.horizontalAdvance(title) + 40) << title.toStdString();
        EXPECT_GE(card->height(), card->heightForWidth(card->width())) << title.toStdString();
        ++cards;
    }
    EXPECT_EQ(cards, 4);
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

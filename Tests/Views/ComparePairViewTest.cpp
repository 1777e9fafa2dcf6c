#include "VantroqueApp/Views/Compare/PairNames.h"
#include "Views/CompareFixture.h"

namespace vantroque {
namespace {

using testing::Contains;
using testing::Not;

class CompareTogether : public CompareViewTest {
protected:
    /// Two versions whose frames are shades: their number.
    void wipe(CompareMode mode = CompareMode::wipe)
    {
        show({shaped(1920, 1080), shaped(1920, 1080)});
        compare().scrub(id(1), 2); // B is 50 frames lighter
        pair().setMode(mode);
        ASSERT_TRUE(soon([&] {
            return tile(0).pictures().shown()
                   && tile(1).pictures().shown().value_or(ShownFrame{}).frame == 50;
        }));
    }
    int shade(double share)
    {
        const QRectF picture = together().pictureRect();
        const QPoint at(qRound(picture.left() + share * picture.width()),
                        qRound(picture.bottom() - 20));
        return qGreen(together().grab().toImage().pixel(at));
    }
    void drag(double from, double to)
    {
        const QRectF picture = together().pictureRect();
        const auto at = [&](double share) {
            return QPoint(qRound(picture.left() + share * picture.width()),
                          qRound(picture.center().y()));
        };
        QTest::mousePress(&together(), Qt::LeftButton, {}, at(from));
        QTest::mouseMove(&together(), at(to));
        QTest::mouseRelease(&together(), Qt::LeftButton, {}, at(to));
    }
};

TEST_F(CompareTogether, KeysChooseHowVersionsAreSeen)
{
    show({video(4), video(4)});
    key(Qt::Key_2);
    EXPECT_EQ(pair().mode(), CompareMode::wipe);
    EXPECT_TRUE(together().isVisible());
    EXPECT_FALSE(named<QWidget>(u"Gain"_s).isEnabled());
    key(Qt::Key_3);
    EXPECT_EQ(pair().mode(), CompareMode::difference);
    EXPECT_TRUE(named<QWidget>(u"Gain"_s).isEnabled());
    key(Qt::Key_1);
    EXPECT_EQ(pair().mode(), CompareMode::tiles);
    EXPECT_TRUE(tileView(0).isVisible());
    click(u"Wipe"_s);
    EXPECT_EQ(pair().mode(), CompareMode::wipe);
}

TEST_F(CompareTogether, OnePictureAloneSaysWhyNot)
{
    show({video(4)});
    auto& button = named<QAbstractButton>(u"Wipe"_s);
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), u"There is only one picture to look at"_s);
    key(Qt::Key_3);
    EXPECT_EQ(pair().mode(), CompareMode::tiles);
}

TEST_F(CompareTogether, AIsLeftOfTheEdgeAndBRight)
{
    wipe();
    ASSERT_TRUE(soon([&] { return shade(0.75) == 50; }));
    EXPECT_EQ(shade(0.25), 0);
    key(Qt::Key_X);
    EXPECT_EQ(shade(0.25), 50);
    EXPECT_EQ(shade(0.75), 0);
}

TEST_F(CompareTogether, TheEdgeIsDragged)
{
    wipe();
    drag(0.5, 0.9);
    EXPECT_NEAR(pair().wipeEdge(), 0.9, 0.01);
    EXPECT_EQ(shade(0.75), 0);
    drag(0.3, 0.1);
    EXPECT_NEAR(pair().wipeEdge(), 0.9, 0.01) << "it was not taken hold of";
    QTest::mouseDClick(&together(), Qt::LeftButton, {}, together().rect().center());
    EXPECT_EQ(pair().wipeEdge(), 0.5);
}

TEST_F(CompareTogether, TheEdgeIsMovedWithTheKeyboard)
{
    wipe();
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_NEAR(pair().wipeEdge(), 0.51, 1e-9);
    key(Qt::Key_Left, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_NEAR(pair().wipeEdge(), 0.41, 1e-9);
    const double position = compare().position();
    key(Qt::Key_Right);
    EXPECT_NEAR(pair().wipeEdge(), 0.41, 1e-9);
    EXPECT_GT(compare().position(), position) << "plain arrows step";
}

TEST_F(CompareTogether, ADifferenceIsShownWithItsGain)
{
    wipe(CompareMode::difference);
    ASSERT_TRUE(soon([&] { return pair().isCurrent(); }));
    EXPECT_EQ(together().label(), u"A − B, gain 4"_s);
    EXPECT_EQ(together().accessibleName(), u"A − B, gain 4"_s);
    EXPECT_EQ(shade(0.5), 200);
    click(u"1"_s);
    ASSERT_TRUE(soon([&] { return pair().isCurrent(); }));
    EXPECT_EQ(together().label(), u"A − B, gain 1"_s);
    EXPECT_EQ(shade(0.5), 50);
    EXPECT_EQ(together().message(), std::nullopt);
}

TEST_F(CompareTogether, EqualPicturesAreSaidToBe)
{
    show({video(4), video(4)});
    pair().setMode(CompareMode::difference);
    ASSERT_TRUE(soon([&] { return pair().isCurrent(); }));
    EXPECT_EQ(together().message(), u"No difference on this frame"_s);
    EXPECT_EQ(together().accessibleDescription(), u"No difference on this frame"_s);
    m_films[0].hasAll = false;
    compare().seek(1);
    EXPECT_EQ(together().message(), std::nullopt) << "until it is known of this one";
}

TEST_F(CompareTogether, StillsAreSaidToHaveNoSamples)
{
    show({video(4), video(4)});
    pair().setMode(CompareMode::difference);
    m_films[1].become(HandFilm::State::failed);
    EXPECT_EQ(together().message(),
              u"1 is shown as stills, which cannot be compared sample by sample"_s);
}

TEST_F(CompareTogether, CaptionsSayWhichIsWhichAndHowBWasFitted)
{
    show({shaped(1920, 1080), shaped(1080, 1920)});
    pair().setMode(CompareMode::wipe);
    EXPECT_THAT(words(view()), Contains(u"A"_s));
    EXPECT_THAT(words(view()), Contains(u"1080x1920 · fitted into A's picture"_s));
    click(u"Swap A and B"_s);
    EXPECT_THAT(words(view()), Contains(u"1920x1080 · fitted into A's picture"_s));
    EXPECT_THAT(words(view()), Not(Contains(u"1080x1920 · fitted into A's picture"_s)));
}

TEST_F(CompareTogether, AClickOnATileMakesItB)
{
    show({video(4), video(4), video(4)});
    QTest::mouseClick(&tileView(2), Qt::LeftButton, {}, {20, 20});
    EXPECT_EQ(pair().b(), &tile(2));
    EXPECT_THAT(words(tileView(2)), Contains(u"B"_s));
    EXPECT_THAT(words(tileView(1)), Contains(u"A"_s));
    tileView(0).setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(pair().b(), &tile(0));
    EXPECT_EQ(pair().a(), &tile(2));
}

TEST(PairNames, AreToldApartInWholeWords)
{
    EXPECT_EQ(PairNames::apart(u"Spot_30s_v07.mov"_s, u"Spot_30s_v08.mp4"_s),
              std::pair(u"v07.mov"_s, u"v08.mp4"_s));
    EXPECT_EQ(PairNames::apart(u"Alpha.mov"_s, u"Alps.mov"_s),
              std::pair(u"Alpha.mov"_s, u"Alps.mov"_s));
    EXPECT_EQ(PairNames::apart(u"a.mov"_s, u"a.mov"_s), std::pair(u"a.mov"_s, u"a.mov"_s));
    EXPECT_EQ(PairNames::apart(u"spot "_s, u"spot 2"_s), std::pair(u"spot "_s, u"spot 2"_s));
    EXPECT_EQ(PairNames::apart({}, u"x"_s), std::pair(QString(), u"x"_s));
}

} // namespace
} // namespace vantroque

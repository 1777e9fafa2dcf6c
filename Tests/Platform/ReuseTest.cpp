#include "Painted.h"

#include <QPainter>

using namespace vantroque;
using namespace Qt::StringLiterals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr QSize wide{960, 540};
const PaintedText super{u"Fresh coffee every morning"_s, 36, {180, 200}};
const PaintedText second{u"Made for your family"_s, 30, {180, 420}};

} // namespace

TEST(Reuse, TheSamePictureIsNotReadTwice)
{
    const auto engine = recognizer();
    QImage picture = with(plain(wide, QColor(20, 40, 60)), super);
    picture = with(picture, {u"~ ++ ~"_s, 30, {180, 420}}); // looks like text, and is none
    const auto first = linesIn(picture, *engine);
    ASSERT_FALSE(first.empty());
    const int readings = engine->readings();
    EXPECT_EQ(linesIn(picture, *engine), first);
    EXPECT_EQ(engine->readings(), readings);
}

TEST(Reuse, ABusyPictureIsReadToTheEndOnceAndNotAgain)
{
    const auto engine = recognizer();
    const QImage picture = foliage({480, 270}, 3);
    int before = -1;
    int pictures = 0;
    for (; engine->readings() != before && pictures < 20; ++pictures) {
        before = engine->readings();
        EXPECT_THAT(linesIn(picture, *engine), IsEmpty());
    }
    EXPECT_LT(pictures, 20);
    EXPECT_GT(before, 0);
}

TEST(Reuse, ANewTextOnAPictureThatWasReadToTheEndIsFound)
{
    const auto engine = recognizer();
    const QImage picture = foliage({480, 270}, 3);
    for (int i = 0; i < 8; ++i)
        linesIn(picture, *engine);
    const PaintedText text{u"Made for your family"_s, 24, {60, 150}};
    EXPECT_EQ(textsIn(with(picture, text), *engine), QStringList{text.text});
}

TEST(Reuse, ATextThatStandsOverAnotherSceneIsNotReadAgain)
{
    const auto engine = recognizer();
    const QStringList first = textsIn(with(plain(wide, QColor(20, 40, 60)), super), *engine);
    const int readings = engine->readings();
    EXPECT_EQ(textsIn(with(plain(wide, QColor(90, 30, 20)), super), *engine), first);
    EXPECT_EQ(engine->readings(), readings);
}

TEST(Reuse, ATextThatSomethingCrossesIsLookedForWhereItWas)
{
    const QImage scene = plain(wide, QColor(20, 40, 60));
    QImage crossed = with(scene, super);
    // Joins all letters, so that none is seen as one.
    QPainter(&crossed).fillRect(0, super.place.y() - 2, wide.width(), 2, super.color);
    EXPECT_THAT(textsIn(crossed, *recognizer()), IsEmpty());
    const auto engine = recognizer();
    EXPECT_THAT(textsIn(with(scene, super), *engine), ElementsAre(super.text));
    EXPECT_THAT(textsIn(crossed, *engine), ElementsAre(super.text));
    EXPECT_THAT(textsIn(scene, *engine), IsEmpty());
}

TEST(Reuse, ANewTextOnAnUnchangedPictureIsFound)
{
    const auto engine = recognizer();
    const QImage picture = with(foliage(wide), super);
    linesIn(picture, *engine);
    const auto texts = textsIn(with(picture, second), *engine);
    EXPECT_THAT(texts, Contains(super.text));
    EXPECT_THAT(texts, Contains(second.text));
}

TEST(Reuse, AFaintSmallTextOnAnUnchangedPictureIsFound)
{
    const auto engine = recognizer();
    const QImage picture = plain(wide, QColor(100, 100, 100));
    linesIn(picture, *engine);
    const PaintedText faint{u"See store for details"_s, 12, {300, 500}, QColor(160, 160, 160)};
    EXPECT_EQ(lowerCase(textsIn(with(picture, faint), *engine)), lowerCase({faint.text}));
}

TEST(Reuse, ALineThatGrowsIsReadAgain)
{
    const auto engine = recognizer();
    const QImage picture = foliage(wide);
    PaintedText part = super;
    part.text = u"Fresh coffee"_s;
    EXPECT_EQ(textsIn(with(picture, part), *engine), QStringList{part.text});
    EXPECT_EQ(textsIn(with(picture, super), *engine), QStringList{super.text});
}

TEST(Reuse, ATextThatIsGoneIsNotFoundAgain)
{
    const auto engine = recognizer();
    const QImage picture = foliage(wide);
    linesIn(with(picture, super), *engine);
    EXPECT_THAT(linesIn(picture, *engine), IsEmpty());
    linesIn(with(picture, super), *engine);
    EXPECT_THAT(linesIn(plain(wide, super.color), *engine), IsEmpty());
}

TEST(Reuse, ATextThatIsReplacedIsReadAnew)
{
    const auto engine = recognizer();
    linesIn(with(foliage(wide), super), *engine);
    PaintedText other = super;
    other.text = u"Better sleep starts here"_s;
    EXPECT_EQ(lowerCase(textsIn(with(foliage(wide), other), *engine)), lowerCase({other.text}));
}

TEST(Reuse, APictureOfAnotherSizeIsReadAnew)
{
    const auto engine = recognizer();
    const QStringList first = textsIn(with(plain(wide, Qt::black), super), *engine);
    EXPECT_EQ(textsIn(with(plain({800, 600}, Qt::black), super), *engine), first);
}

TEST(Reuse, WhatIsForgottenIsReadAnew)
{
    const auto engine = recognizer();
    const QImage picture = with(foliage(wide), super);
    linesIn(picture, *engine);
    const int readings = engine->readings();
    engine->forget();
    EXPECT_EQ(textsIn(picture, *engine), QStringList{super.text});
    EXPECT_GT(engine->readings(), readings);
}

#include "Painted.h"

#include <QPainter>

#include <random>

using namespace vantroque;
using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

double overlap(const QRect& a, const QRect& b)
{
    const QRect common = a & b;
    const auto area = [](const QRect& rect) { return double(rect.width()) * rect.height(); };
    return area(common) / (area(a) + area(b) - area(common));
}

QRect inPixels(const NormalizedRect& box, QSize picture)
{
    return QRectF(box.x * picture.width(), box.y * picture.height(), box.width * picture.width(),
                  box.height * picture.height())
        .toRect();
}

constexpr QSize wide{960, 540};

/// Many bright curved strokes, some with a straight one.
QImage loops(QSize size, unsigned seed)
{
    QImage picture = plain(size, QColor(10, 25, 20));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    std::mt19937 random(seed);
    const auto between = [&](int low, int high) {
        return std::uniform_int_distribution(low, high)(random);
    };
    for (int i = 0; i < 2000; ++i) {
        const int saturation = between(20, 140);
        const int value = between(80, 255);
        painter.setPen(QPen(QColor::fromHsv(90, saturation, value), between(1, 3)));
        const int side = between(5, 30);
        const int x = between(0, size.width());
        const int y = between(0, size.height());
        const int start = between(0, 5760);
        painter.drawArc(x, y, side, side, start, between(900, 4000));
        if (between(0, 9) < 4)
            painter.drawLine(x, y, x, y + side);
    }
    return picture;
}

/// With a black outline.
QImage outlined(QImage picture, const PaintedText& text)
{
    constexpr int width = 3;
    PaintedText outline = text;
    outline.color = Qt::black;
    for (int x = -width; x <= width; ++x)
        for (int y = -width; y <= width; ++y) {
            outline.place = text.place + QPoint(x, y);
            picture = with(picture, outline);
        }
    return with(picture, text);
}

/// Fine type on a dark ground that becomes foliage after its end.
QImage reachingIntoFoliage(const PaintedText& text, unsigned seed)
{
    const QSize square(1080, 960);
    QImage picture = plain(square, QColor(30, 50, 25));
    QPainter(&picture).drawImage(520, 0, foliage(square, seed));
    return with(picture, text);
}

const PaintedText legal{
    u"Subject to credit approval. See store for details."_s, 16, {200, 900}, QColor(230, 240, 150)};

} // namespace

TEST(FrameText, ReadsASuperOverDetail)
{
    const auto engine = recognizer();
    const PaintedText super{u"Fresh coffee every morning"_s, 36, {180, 300}};
    const auto lines = linesIn(with(foliage(wide), super), *engine);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].text, super.text);
    EXPECT_GT(overlap(inPixels(lines[0].box, wide), inkOf(super, wide)), 0.85);
}

TEST(FrameText, ReadsDarkOnLightAndColoredType)
{
    const auto engine = recognizer();
    EXPECT_EQ(textsIn(with(plain(wide, QColor(235, 235, 225)),
                           {u"Better sleep starts here"_s, 30, {100, 200}, Qt::black}),
                      *engine),
              QStringList{u"Better sleep starts here"_s});
    EXPECT_EQ(textsIn(with(plain(wide, QColor(30, 40, 110)),
                           {u"Better sleep starts here"_s, 30, {100, 200}, QColor(255, 220, 40)}),
                      *engine),
              QStringList{u"Better sleep starts here"_s});
}

TEST(FrameText, ReadsTypeOfOneAndAHalfPercentOfTheHeight)
{
    const auto engine = recognizer();
    const PaintedText credit{
        u"Subject to credit approval. See store for details."_s, 15, {200, 900}};
    const QSize square(1080, 960);
    const auto lines = linesIn(with(plain(square, QColor(40, 60, 90)), credit), *engine);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_TRUE(lines[0].text.startsWith(u"Subject to credit"_s)) << lines[0].text.toStdString();
    EXPECT_GT(overlap(inPixels(lines[0].box, square), inkOf(credit, square)), 0.75);
}

TEST(FrameText, ReadsSmallTypeThatReachesIntoABusyScene)
{
    const auto engine = recognizer();
    const QImage picture = reachingIntoFoliage(legal, 2);
    const auto lines = linesIn(picture, *engine);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_GT(overlap(inPixels(lines[0].box, picture.size()), inkOf(legal, picture.size())), 0.75);
}

TEST(FrameText, ReadsTheEndOfALineThatMeltsIntoTheScene)
{
    const auto engine = recognizer();
    const auto texts = textsIn(reachingIntoFoliage(legal, 12), *engine);
    ASSERT_THAT(texts, SizeIs(1));
    EXPECT_TRUE(texts[0].endsWith(u"details."_s)) << texts[0].toStdString();
}

TEST(FrameText, WhatTheSceneIsReadAsBesideALineIsNotOfTheLine)
{
    const auto engine = recognizer();
    const QImage picture = reachingIntoFoliage(legal, 4);
    const auto lines = linesIn(picture, *engine);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_GT(overlap(inPixels(lines[0].box, picture.size()), inkOf(legal, picture.size())), 0.7);
}

TEST(FrameText, ReadsYellowTypeOverAGridAsLightAsIt)
{
    const auto engine = recognizer();
    QImage picture = plain(wide, QColor(205, 210, 200));
    QPainter painter(&picture);
    for (int row = 0; row < 27; ++row)
        for (int x = row % 2 * -25; x < wide.width(); x += 50)
            painter.fillRect(x, 20 * row, 46, 17, QColor(125, 62, 50));
    painter.end();
    const PaintedText super{u"Fresh coffee every morning"_s, 36, {180, 300}, QColor(255, 230, 60)};
    EXPECT_EQ(textsIn(with(picture, super), *engine), QStringList{super.text});
}

TEST(FrameText, ALineOfWhichOnlyAWordWasReadIsReadWithoutTheMarksAroundIt)
{
    const auto engine = recognizer();
    const PaintedText super{u"BEST FOR ONLY"_s, 32, {300, 300}, Qt::white, "Noto Serif"};
    const auto lines = linesIn(outlined(loops(wide, 7), super), *engine);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_GT(overlap(inPixels(lines[0].box, wide), inkOf(super, wide)), 0.75);
}

TEST(FrameText, AFewMarksBesideAShortTextDoNotHideIt)
{
    const auto engine = recognizer();
    const PaintedText super{u"50% OFF"_s, 34, {300, 300}, Qt::white, "Noto Sans"};
    EXPECT_EQ(textsIn(outlined(loops(wide, 7), super), *engine), QStringList{super.text});
}

TEST(FrameText, ReadsTypeOnAPlate)
{
    const auto engine = recognizer();
    QImage picture = plain(wide, QColor(150, 110, 70));
    QPainter(&picture).fillRect(QRect(330, 240, 240, 70), QColor(240, 235, 226));
    const PaintedText super{u"Crunchy"_s, 44, {360, 290}, QColor(110, 10, 15)};
    EXPECT_EQ(textsIn(with(picture, super), *engine), QStringList{super.text});
}

TEST(FrameText, LinesBelowOneAnotherAreReadApart)
{
    const auto engine = recognizer();
    QImage picture =
        with(plain(wide, QColor(60, 20, 40)), {u"Discover your next"_s, 40, {100, 200}});
    picture = with(picture, {u"great adventure"_s, 40, {100, 250}});
    auto texts = textsIn(picture, *engine);
    texts.sort();
    EXPECT_EQ(texts, (QStringList{u"Discover your next"_s, u"great adventure"_s}));
}

TEST(FrameText, ReadsUprightPictures)
{
    const auto engine = recognizer();
    EXPECT_EQ(textsIn(with(foliage({540, 960}), {u"Shop online today"_s, 40, {60, 480}}), *engine),
              QStringList{u"Shop online today"_s});
}

TEST(FrameText, ReadsAnImportantWordAlone)
{
    const auto engine = recognizer();
    EXPECT_EQ(
        textsIn(with(plain(wide, QColor(150, 20, 30)), {u"TONIGHT"_s, 48, {300, 300}}), *engine),
        QStringList{u"TONIGHT"_s});
}

TEST(FrameText, ReadsAccentsOfTheLanguageAskedFor)
{
    auto engine = TesseractRecognizer::make({"fra"});
    ASSERT_TRUE(engine);
    EXPECT_EQ(textsIn(with(plain(wide, Qt::black), {u"Préparé à la française"_s, 40, {200, 300}}),
                      **engine),
              QStringList{u"Préparé à la française"_s});
}

TEST(FrameText, FindsNoneWhereThereIsNone)
{
    const auto engine = recognizer();
    for (unsigned seed = 1; seed <= 5; ++seed)
        EXPECT_THAT(linesIn(foliage(wide, seed), *engine), IsEmpty()) << seed;
}

TEST(FrameText, ACropIsReadMoreReadily)
{
    const auto engine = recognizer();
    const QSize crop(320, 24);
    const auto lines = linesIn(
        with(plain(crop, QColor(50, 70, 60)), {u"Fresh coffee every morning"_s, 20, {8, 18}}),
        *engine, TextRecognizer::Subject::crop);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_GT(lines[0].box.width, 0.8);
    EXPECT_THAT(linesIn(plain(crop, QColor(50, 70, 60)), *engine, TextRecognizer::Subject::crop),
                IsEmpty());
}

#include "Draw/CaptionRenderer.h"

#include "Draw/CaptionStyle.h"
#include "Drawn.h"

namespace vantroque {
namespace {

using namespace Drawn;
using namespace Qt::StringLiterals;
using Placement = CaptionCue::Placement;

QImage drawn(const std::vector<CaptionCue>& cues, QSize size, const QColor& background = Qt::gray)
{
    return painted(size, background, [&](QPainter& painter, const QRectF& picture) {
        CaptionRenderer::draw(painter, cues, picture);
    });
}

CaptionCue cue(const QString& text, Placement placement = Placement::bottom)
{
    return CaptionCue::plain(1, 0, 1, text, placement);
}

CaptionCue styled(const CaptionCue::Run& run)
{
    CaptionCue cue;
    cue.runs = {run};
    return cue;
}

QRect whiteOf(const QImage& image)
{
    return boundsOf(image, [](QRgb pixel) { return qGray(pixel) > 240; });
}

QRect blackOf(const QImage& image)
{
    return boundsOf(image, [](QRgb pixel) { return qGray(pixel) < 15; });
}

class CaptionSizes : public testing::TestWithParam<QSize> {};

INSTANTIATE_TEST_SUITE_P(Rows, CaptionSizes, testing::ValuesIn(sizes), [](const auto& test) {
    return QStringLiteral("%1x%2").arg(test.param.width()).arg(test.param.height()).toStdString();
});

TEST_P(CaptionSizes, TypeKeepsItsProportion)
{
    const QSize size = GetParam();
    // A capital of the type is 0.727 of its size high; the edge covers nothing of it.
    const double font = std::max(0.042 * size.height(), 6.0);
    EXPECT_NEAR(whiteOf(drawn({cue(u"H"_s)}, size)).height(), 0.727 * font, 1.5);
}

TEST_P(CaptionSizes, TheEdgeIsBlackAndNineHundredthsWideAroundTheLetter)
{
    const QSize size = GetParam();
    const double font = std::max(0.042 * size.height(), 6.0);
    const QImage image = drawn({cue(u"H"_s)}, size, Qt::white);
    const QRect edge = boundsOf(image, [](QRgb pixel) { return qGray(pixel) < 60; });
    EXPECT_NEAR(edge.height(), (0.727 + 0.18) * font, 0.13 * font + 1.5);
}

TEST_P(CaptionSizes, BottomCuesEndAboveTheMarginAndTopCuesBeginUnderIt)
{
    const QSize size = GetParam();
    const double font = std::max(0.042 * size.height(), 6.0);
    const double margin = 0.065 * size.height();
    const QRect bottom = whiteOf(drawn({cue(u"H"_s)}, size));
    EXPECT_LT(bottom.bottom(), size.height() - margin);
    EXPECT_GT(bottom.bottom(), size.height() - margin - 0.6 * font - 1);
    const QRect top = whiteOf(drawn({cue(u"H"_s, Placement::top)}, size));
    EXPECT_GT(top.top(), margin);
    EXPECT_LT(top.top(), margin + 0.8 * font + 1);
}

TEST_P(CaptionSizes, LinesAreCentredAndNoWiderThanFourFifths)
{
    const QSize size = GetParam();
    const QString text = u"several words that do not fit into one line of any picture, not even in "
                         "the widest one of those that are tried here"_s;
    const QRect words = whiteOf(drawn({cue(text)}, size));
    EXPECT_LE(words.width(), 0.8 * size.width() + 1);
    EXPECT_NEAR(words.center().x() + 0.5, size.width() / 2.0, 2);
    EXPECT_GT(words.height(), 0.042 * size.height() * 1.18);
}

TEST_P(CaptionSizes, ThereIsNoBoxBehind)
{
    const QSize size = GetParam();
    const QImage image = drawn({cue(u"H      H"_s)}, size);
    const QRect words = whiteOf(image);
    // Between the letters the picture is as it was.
    EXPECT_EQ(image.pixelColor(words.center()), QColor(Qt::gray));
    const QRectF block = CaptionStyle::blockRect(cue(u"H      H"_s), size);
    EXPECT_EQ(image.pixelColor(block.topLeft().toPoint() + QPoint(1, 1)), QColor(Qt::gray));
}

TEST(CaptionStyle, TypeIsNeverSmallerThanSixPixels)
{
    EXPECT_EQ(CaptionStyle::fontSize(100), 6);
    EXPECT_EQ(CaptionStyle::fontSize(1), 6);
    EXPECT_NEAR(CaptionStyle::fontSize(1080), 45.36, 1e-9);
}

TEST(CaptionStyle, ABlockIsFourFifthsWideAndStandsAtItsMargin)
{
    const QRectF bottom = CaptionStyle::blockRect(cue(u"one"_s), {1920, 1080});
    EXPECT_NEAR(bottom.x(), 192, 1e-9);
    EXPECT_NEAR(bottom.width(), 1536, 1e-9);
    EXPECT_NEAR(bottom.bottom(), 1080 - 70.2, 1e-9);
    // The type's own line is 1.21 of its size.
    EXPECT_NEAR(bottom.height(), 45.36 * 1.21 * 1.18, 1.5);
    EXPECT_EQ(bottom.height(), std::ceil(bottom.height()));
    const QRectF top = CaptionStyle::blockRect(cue(u"one\ntwo"_s, Placement::top), {1920, 1080});
    EXPECT_NEAR(top.y(), 70.2, 1e-9);
    EXPECT_NEAR(top.height(), 2 * 45.36 * 1.21 * 1.18, 1.5);
}

TEST(CaptionStyle, EmptyLinesCount)
{
    const QSizeF size(1920, 1080);
    EXPECT_EQ(CaptionStyle::blockRect(cue(u"a\n\nb"_s), size).height(),
              CaptionStyle::blockRect(cue(u"a\nx\nb"_s), size).height());
}

TEST(CaptionRenderer, NoCuesAndNoPictureDrawNothing)
{
    EXPECT_EQ(drawn({}, {192, 108}), blank({192, 108}, Qt::gray));
    QImage image = blank({192, 108}, Qt::gray);
    QPainter painter(&image);
    CaptionRenderer::draw(painter, {cue(u"word"_s)}, QRectF(10, 10, 0, 50));
    painter.end();
    EXPECT_EQ(image, blank({192, 108}, Qt::gray));
}

TEST(CaptionRenderer, ReadsOnAnyPicture)
{
    for (const QColor& background : {QColor(Qt::white), QColor(Qt::black), QColor(Qt::yellow)}) {
        const QImage image = drawn({cue(u"HHHH"_s)}, {960, 540}, background);
        const QRect words = whiteOf(image.copy(0, 470, 960, 40));
        EXPECT_FALSE(words.isEmpty());
        // The bar of the letter is white and has black above.
        EXPECT_FALSE(blackOf(image).isEmpty());
    }
}

TEST(CaptionRenderer, CuesAtTheBottomStackUpwardAndCuesAtTheTopDownward)
{
    const QSize size(960, 540);
    const CaptionCue wide = cue(u"wide words in a long line"_s);
    const CaptionCue narrow = cue(u"I"_s);
    const auto widthAt = [&](const QImage& image, int from, int rows) {
        return whiteOf(image.copy(0, from, size.width(), rows)).width();
    };
    const double line = CaptionStyle::blockRect(narrow, size).height();
    const int lower = static_cast<int>(540 - 0.065 * 540 - line);
    const int upper = static_cast<int>(lower - line);
    const QImage image = drawn({wide, narrow}, size);
    EXPECT_GT(widthAt(image, lower, static_cast<int>(line)), 200);
    EXPECT_LT(widthAt(image, upper, static_cast<int>(line)), 20);
    CaptionCue wideTop = wide;
    CaptionCue narrowTop = narrow;
    wideTop.placement = narrowTop.placement = Placement::top;
    const QImage atTop = drawn({wideTop, narrowTop}, size);
    const int first = static_cast<int>(0.065 * 540);
    EXPECT_GT(widthAt(atTop, first, static_cast<int>(line)), 200);
    EXPECT_LT(widthAt(atTop, static_cast<int>(first + line + 1), static_cast<int>(line)), 20);
}

TEST(CaptionRenderer, RunsKeepTheirStyle)
{
    const QSize size(960, 540);
    const auto ink = [&](const CaptionCue::Run& run) {
        const QImage image = drawn({styled(run)}, size);
        int white = 0;
        for (int y = 0; y < size.height(); ++y)
            for (int x = 0; x < size.width(); ++x)
                white += grey(image, x, y) > 240;
        return white;
    };
    const int plain = ink({u"lllll"_s});
    EXPECT_GT(ink({.text = u"lllll"_s, .bold = true}), plain * 1.1);
    EXPECT_GT(ink({.text = u"lllll"_s, .underline = true}), plain * 1.1);
    // Slanted letters are wider than they stand.
    const QRect straight = whiteOf(drawn({styled({u"l"_s})}, size));
    const QRect slanted = whiteOf(drawn({styled({.text = u"l"_s, .italic = true})}, size));
    EXPECT_GT(slanted.width(), straight.width() * 1.5);
    // A line under the letters.
    const QRect underlined = whiteOf(drawn({styled({.text = u"l"_s, .underline = true})}, size));
    EXPECT_GT(underlined.bottom(), straight.bottom());
}

TEST(CaptionRenderer, ShowsWhatTheCaptionHolds)
{
    // Type for interfaces makes a multiplication sign of an x between digits.
    const QSize size(960, 540);
    EXPECT_NE(drawn({cue(u"1920x1080"_s)}, size), drawn({cue(u"1920×1080"_s)}, size));
    EXPECT_NE(drawn({cue(u"->"_s)}, size), drawn({cue(u"→"_s)}, size));
}

} // namespace
} // namespace vantroque

#include "Draw/GuideRenderer.h"

#include "Drawn.h"
#include "Framing/GuideBuilder.h"
#include "Records/Palette.h"

namespace vantroque {
namespace {

using namespace Drawn;
using namespace Qt::StringLiterals;
using Kind = Guide::Kind;
using Tint = Guide::Tint;
using LabelCorner = Guide::LabelCorner;

QImage drawn(const std::vector<Guide>& guides, QSize size, double scale,
             const QColor& background = Qt::black)
{
    return painted(size, background, [&](QPainter& painter, const QRectF& picture) {
        GuideRenderer::draw(painter, guides, picture, scale, scale);
    });
}

QImage drawn(const std::vector<Guide>& guides, QSize size, Qt::GlobalColor background = Qt::black)
{
    return drawn(guides, size, scaleOf(size), background);
}

Guide line(Kind kind, const NormalizedRect& rect, Tint tint = Tint::safe)
{
    return {.id = u"line"_s, .kind = kind, .rect = rect, .tint = tint};
}

Guide labelled(const NormalizedRect& rect, Tint tint = Tint::safe,
               LabelCorner corner = LabelCorner::topLeft)
{
    return {.id = u"box"_s, .rect = rect, .tint = tint, .label = u"label"_s, .labelCorner = corner};
}

/// Where the label of a guide stands; empty when it has none.
QRect labelBounds(const Guide& guide, QSize size, double scale)
{
    Guide silent = guide;
    silent.label.reset();
    return difference(drawn({guide}, size, scale), drawn({silent}, size, scale));
}

int lineWidth(QSize size)
{
    return static_cast<int>(std::max(scaleOf(size), 1.0));
}

class GuideSizes : public testing::TestWithParam<QSize> {};

INSTANTIATE_TEST_SUITE_P(Rows, GuideSizes, testing::ValuesIn(sizes), [](const auto& test) {
    return QStringLiteral("%1x%2").arg(test.param.width()).arg(test.param.height()).toStdString();
});

TEST_P(GuideSizes, ARectangleLiesOnWholePixels)
{
    const QSize size = GetParam();
    const NormalizedRect rect{0.035, 0.035, 0.93, 0.93};
    const QImage image = drawn({line(Kind::rect, rect)}, size);
    const int width = lineWidth(size);
    const int left = static_cast<int>(std::lround(rect.x * size.width()));
    const int right = left + static_cast<int>(std::lround(rect.width * size.width())) - 1;
    const int top = static_cast<int>(std::lround(rect.y * size.height()));
    const int bottom = top + static_cast<int>(std::lround(rect.height * size.height())) - 1;
    const int midX = size.width() / 2;
    const int midY = size.height() / 2;
    EXPECT_EQ(boundsOf(image, [](QRgb pixel) { return qGray(pixel) == 255; }),
              QRect(QPoint(left, top), QPoint(right, bottom)));
    for (int i = 0; i < width; ++i) {
        EXPECT_EQ(grey(image, left + i, midY), 255) << i;
        EXPECT_EQ(grey(image, right - i, midY), 255) << i;
        EXPECT_EQ(grey(image, midX, top + i), 255) << i;
        EXPECT_EQ(grey(image, midX, bottom - i), 255) << i;
    }
    EXPECT_EQ(grey(image, left + width, midY), 0);
    EXPECT_EQ(grey(image, midX, bottom - width), 0);
    EXPECT_EQ(grey(image, midX, midY), 0);
}

TEST_P(GuideSizes, ALineStandsWhereItIsAndIsNotMoved)
{
    const QSize size = GetParam();
    const QImage image = drawn({line(Kind::verticalLine, {0.3, 0, 0, 1})}, size);
    // Its middle is its centre of gravity.
    double sum = 0;
    double moment = 0;
    for (int x = 0; x < size.width(); ++x) {
        sum += grey(image, x, 0);
        moment += grey(image, x, 0) * (x + 0.5);
    }
    EXPECT_NEAR(sum / 255, lineWidth(size), 0.05);
    EXPECT_NEAR(moment / sum, 0.3 * size.width(), 0.05);
}

TEST_P(GuideSizes, EveryLineHasAShadowOfItsProportion)
{
    const QSize size = GetParam();
    const double scale = scaleOf(size);
    // In the middle of a pixel, or between two.
    const double y = std::round(size.height() / 2.0);
    const QImage image =
        drawn({line(Kind::horizontalLine, {0, y / size.height(), 1, 0})}, size, Qt::white);
    const double width = std::max(scale, 1.0);
    for (int below = static_cast<int>(width / 2) + 1; below < 8 * scale; ++below) {
        const double dark = 1 - grey(image, size.width() / 2, static_cast<int>(y) + below) / 255.0;
        EXPECT_NEAR(dark, 0.7 * shadow(below + 0.5, width, 2 * scale), 0.06) << below;
    }
    EXPECT_EQ(grey(image, size.width() / 2, static_cast<int>(y + 10 * scale)), 255);
}

TEST_P(GuideSizes, TheCrossHasArmsOfItsProportion)
{
    const QSize size = GetParam();
    const double arm = 14 * scaleOf(size);
    const QImage image = drawn({line(Kind::centerCross, {0.5, 0.5, 0, 0}, Tint::safe)}, size);
    const QRect bounds = boundsOf(image, [](QRgb pixel) { return qGray(pixel) > 127; });
    EXPECT_NEAR(bounds.width(), 2 * arm, 1.5);
    EXPECT_NEAR(bounds.height(), 2 * arm, 1.5);
    EXPECT_NEAR(bounds.center().x() + 0.5, size.width() / 2.0, 1);
    EXPECT_NEAR(bounds.center().y() + 0.5, size.height() / 2.0, 1);
}

TEST_P(GuideSizes, DashesKeepTheirProportion)
{
    const QSize size = GetParam();
    const double scale = scaleOf(size);
    Guide guide = line(Kind::verticalLine, {0.5, 0, 0, 1});
    guide.dashed = true;
    const QImage image = drawn({guide}, size);
    const int x = static_cast<int>(0.5 * size.width());
    double lit = 0;
    int runs = 0;
    bool wasLit = false;
    for (int y = 0; y < size.height(); ++y) {
        double row = 0;
        for (int column = x - 4; column < x + 4; ++column)
            row += grey(image, column, y) / 255.0 / std::max(scale, 1.0);
        lit += row;
        const bool isLit = row > 0.5;
        runs += isLit && !wasLit;
        wasLit = isLit;
    }
    EXPECT_NEAR(lit / size.height(), 0.6, 0.04);
    EXPECT_NEAR(runs, size.height() / (10 * scale), 1);
}

TEST_P(GuideSizes, ALabelKeepsItsProportionAndItsMargin)
{
    const QSize size = GetParam();
    const double scale = scaleOf(size);
    for (const auto corner : {LabelCorner::topLeft, LabelCorner::bottomRight}) {
        const QRect bounds = labelBounds(labelled({0, 0, 1, 1}, Tint::safe, corner), size, scale);
        ASSERT_FALSE(bounds.isEmpty());
        // Five letters of a monospaced font, each 0.6 wide; their shadow sticks out a little.
        EXPECT_NEAR(bounds.width(), 30 * scale, 8 * scale + 2);
        EXPECT_LT(bounds.height(), 20 * scale + 2);
        const double margin = 4 * scale;
        if (corner == LabelCorner::topLeft) {
            EXPECT_NEAR(bounds.left(), margin, 4 * scale + 1);
            EXPECT_NEAR(bounds.top(), margin, 4 * scale + 1);
        } else {
            EXPECT_NEAR(bounds.right() + 1, size.width() - margin, 4 * scale + 1);
            EXPECT_NEAR(bounds.bottom() + 1, size.height() - margin, 6 * scale + 1);
        }
    }
}

TEST(GuideRenderer, TintsAreTheirColours)
{
    EXPECT_EQ(GuideRenderer::color(Tint::safe), QColor(255, 255, 255));
    EXPECT_EQ(GuideRenderer::color(Tint::social), QColor::fromRgb(Palette::amber.argb()));
    EXPECT_EQ(GuideRenderer::color(Tint::alert), QColor(255, 89, 89));
    EXPECT_EQ(GuideRenderer::color(Tint::ok), QColor(89, 217, 115));
    EXPECT_EQ(GuideRenderer::color(Tint::neutral).rgb(), qRgb(255, 255, 255));
    EXPECT_NEAR(GuideRenderer::color(Tint::neutral).alphaF(), 0.55, 0.002);
}

TEST(GuideRenderer, LinesAreInTheirTint)
{
    const QImage image = drawn({line(Kind::rect, {0, 0, 1, 1}, Tint::alert)}, {96, 540});
    EXPECT_EQ(image.pixel(0, 270), qRgb(255, 89, 89));
    const QImage quiet = drawn({line(Kind::rect, {0, 0, 1, 1}, Tint::neutral)}, {96, 540});
    EXPECT_NEAR(grey(quiet, 0, 270), 140, 1);
}

TEST(GuideRenderer, AnAreaIsAVeilWithoutAnOutlineOrAShadow)
{
    const QImage image =
        drawn({line(Kind::exclusion, {0, 0.5, 1, 0.5}, Tint::neutral)}, {96, 540}, Qt::white);
    for (int y = 0; y < 270; ++y)
        ASSERT_EQ(grey(image, 48, y), 255) << y;
    for (int y = 270; y < 540; ++y)
        ASSERT_NEAR(grey(image, 48, y), 255 * 0.45, 1) << y;
}

TEST(GuideRenderer, AnAreaIsNotMovedToWholePixels)
{
    const QImage image =
        drawn({line(Kind::exclusion, {0, 0, 1, 0.5}, Tint::neutral)}, {10, 9}, Qt::white);
    EXPECT_NEAR(grey(image, 5, 3), 255 * 0.45, 1);
    EXPECT_NEAR(grey(image, 5, 4), 255 * (1 - 0.55 / 2), 2);
    EXPECT_EQ(grey(image, 5, 5), 255);
}

TEST(GuideRenderer, LabelsComeInTheColourOfTheirTintAfterAllLines)
{
    // A line through the label that is drawn later lies under it.
    const QSize size(960, 540);
    const Guide box = labelled({0, 0, 1, 1}, Tint::alert);
    const QRect words = labelBounds(box, size, 1);
    const double middle = words.center().y() + 0.5;
    const QImage image =
        drawn({box, line(Kind::horizontalLine, {0, middle / 540, 1, 0}, Tint::safe)}, size);
    int red = 0;
    for (int x = words.left(); x < words.right(); ++x) {
        const QColor pixel = image.pixelColor(x, words.center().y());
        red += pixel.red() - pixel.green() > 80;
    }
    EXPECT_GT(red, 3);
}

TEST(GuideRenderer, AWordlessGuideAndALineHaveNoLabel)
{
    Guide cross = line(Kind::verticalLine, {0.5, 0, 0, 1});
    cross.label = u"never"_s;
    EXPECT_TRUE(labelBounds(cross, {960, 540}, 1).isEmpty());
}

TEST(GuideRenderer, ALabelNeverCrowdsASmallArea)
{
    const QSize size(960, 540);
    const auto box = [&](double width, double height, double line = 1) {
        // The line takes its width off the rectangle.
        return labelled({0.1, 0.1, (width + line) / size.width(), (height + line) / size.height()});
    };
    EXPECT_TRUE(labelBounds(box(70, 100), size, 1).isEmpty());
    EXPECT_FALSE(labelBounds(box(71, 100), size, 1).isEmpty());
    EXPECT_TRUE(labelBounds(box(100, 26), size, 1).isEmpty());
    EXPECT_FALSE(labelBounds(box(100, 27), size, 1).isEmpty());
    EXPECT_TRUE(labelBounds(box(140, 100, 2), size, 2).isEmpty());
    EXPECT_FALSE(labelBounds(box(141, 100, 2), size, 2).isEmpty());
}

TEST(GuideRenderer, AtThumbnailScaleLabelsDropOut)
{
    const QSize size(960, 540);
    EXPECT_TRUE(labelBounds(labelled({0, 0, 100.0 / 960, 1}), size, 0.2).isEmpty());
    EXPECT_TRUE(labelBounds(labelled({0, 0, 1, 1}), {192, 108}, 0.2).isEmpty());
    EXPECT_FALSE(labelBounds(labelled({0, 0, 1, 1}), {384, 216}, 0.4).isEmpty());
}

TEST(GuideRenderer, LabelsStopGrowingAtFourHundredPixels)
{
    // The lower case with its ascenders is 0.73 of the size high.
    const QRect bounds = labelBounds(labelled({0, 0, 1, 1}), {3600, 1400}, 50);
    EXPECT_GT(bounds.height(), 260);
    EXPECT_LT(bounds.height(), 340);
}

TEST(GuideRenderer, GuidesStandInThePictureAndNotAtTheCornerOfTheWindow)
{
    const QRectF picture(100, 50, 96, 54);
    QImage image = blank({300, 200}, Qt::black);
    {
        QPainter painter(&image);
        GuideRenderer::draw(painter, {line(Kind::rect, {0, 0, 1, 1})}, picture, 0.1, 0.1);
    }
    EXPECT_EQ(boundsOf(image, [](QRgb pixel) { return qGray(pixel) > 127; }), picture.toRect());
}

} // namespace
} // namespace vantroque

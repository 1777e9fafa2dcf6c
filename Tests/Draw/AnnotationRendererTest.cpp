#include "Draw/AnnotationRenderer.h"

#include "Drawn.h"

namespace vantroque {
namespace {

using namespace Drawn;
using Tool = AnnotationStroke::Tool;
using Ink = AnnotationStroke::Ink;

QImage drawn(const std::vector<AnnotationStroke>& strokes, QSize size, double scale,
             const QColor& background = Qt::black)
{
    return painted(size, background, [&](QPainter& painter, const QRectF& picture) {
        AnnotationRenderer::draw(painter, strokes, picture, scale);
    });
}

AnnotationStroke stroke(Tool tool, const std::vector<NormalizedPoint>& points, Ink ink = Ink::white)
{
    return {.id = {}, .tool = tool, .points = points, .ink = ink};
}

/// Around everything that is more ink than not, on a picture of 540 rows and columns. Points are in
/// pixels.
QRect inkOf(Tool tool, std::vector<NormalizedPoint> points, double scale = 1)
{
    for (NormalizedPoint& point : points)
        point = {point.x / 540, point.y / 540};
    return boundsOf(drawn({stroke(tool, points)}, {540, 540}, scale),
                    [](QRgb pixel) { return qGray(pixel) > 127; });
}

class StrokeSizes : public testing::TestWithParam<QSize> {};

INSTANTIATE_TEST_SUITE_P(Rows, StrokeSizes, testing::ValuesIn(sizes), [](const auto& test) {
    return QStringLiteral("%1x%2").arg(test.param.width()).arg(test.param.height()).toStdString();
});

TEST_P(StrokeSizes, LinesAreAsWideAsThePictureAsks)
{
    const QSize size = GetParam();
    const QImage image = drawn({stroke(Tool::pen, {{0.1, 0.5}, {0.9, 0.5}})}, size, scaleOf(size));
    double sum = 0;
    for (int y = 0; y < size.height(); ++y)
        sum += grey(image, size.width() / 2, y);
    EXPECT_NEAR(sum / 255, std::max(2.5 * scaleOf(size), 1.5), 0.05);
}

TEST_P(StrokeSizes, InkHasAShadowOfItsProportion)
{
    const QSize size = GetParam();
    const double scale = scaleOf(size);
    const QImage image = drawn({stroke(Tool::pen, {{0, 0.5}, {1, 0.5}})}, size, scale, Qt::white);
    const double width = std::max(2.5 * scale, 1.5);
    const int middle = size.height() / 2;
    for (int below = static_cast<int>(width / 2) + 1; below < 10 * scale; ++below)
        EXPECT_NEAR(1 - grey(image, size.width() / 2, middle + below) / 255.0,
                    shadow(below + 0.5, width, 3 * scale), 0.08)
            << below;
    EXPECT_EQ(grey(image, size.width() / 2, static_cast<int>(middle + 12 * scale)), 255);
}

TEST_P(StrokeSizes, ADotIsAsLargeAsThePictureAsks)
{
    const QSize size = GetParam();
    const QImage image = drawn({stroke(Tool::pen, {{0.5, 0.5}})}, size, scaleOf(size));
    double sum = 0;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            sum += grey(image, x, y) / 255.0;
    const double diameter = 4 * scaleOf(size);
    EXPECT_NEAR(sum, 3.14159 / 4 * diameter * diameter, 0.08 * sum + 0.2);
}

TEST(AnnotationRenderer, InksAreTheirColours)
{
    EXPECT_EQ(AnnotationRenderer::color(Ink::red), QColor(240, 41, 41));
    EXPECT_EQ(AnnotationRenderer::color(Ink::amber), QColor(252, 211, 77));
    EXPECT_EQ(AnnotationRenderer::color(Ink::white), QColor(255, 255, 255));
    const QImage image =
        drawn({stroke(Tool::pen, {{0, 0.5}, {1, 0.5}}, Ink::red)}, {100, 540}, 1, Qt::white);
    EXPECT_EQ(image.pixel(50, 270), qRgb(240, 41, 41));
}

TEST(AnnotationRenderer, BarbsAreAPartOfTheArrowWithinLimits)
{
    constexpr double angle = 3.14159265358979 / 7;
    const auto height = [&](double barb) {
        return 2 * (barb * std::sin(angle) + 1.25 * std::cos(angle));
    };
    EXPECT_NEAR(inkOf(Tool::arrow, {{200, 200}, {210, 200}}).height(), height(9), 1.5);
    EXPECT_NEAR(inkOf(Tool::arrow, {{200, 200}, {250, 200}}).height(), height(14), 1.5);
    EXPECT_NEAR(inkOf(Tool::arrow, {{200, 200}, {300, 200}}).height(), height(18), 1.5);
    EXPECT_NEAR(inkOf(Tool::arrow, {{200, 200}, {500, 200}}).height(), height(18), 1.5);
}

TEST(AnnotationRenderer, TheBarbsOfAShortArrowReachBehindItsStart)
{
    const QRect ink = inkOf(Tool::arrow, {{200, 200}, {204, 200}});
    EXPECT_NEAR(ink.left(), 204 - 9 * std::cos(3.14159 / 7) - 1.25, 1);
    EXPECT_NEAR(ink.right() + 1, 205.25, 1);
}

TEST(AnnotationRenderer, AnArrowPointsFromTheFirstPointToTheSecond)
{
    const auto widthAt = [](const QImage& image, int x) {
        int lit = 0;
        for (int y = 0; y < image.height(); ++y)
            lit += grey(image, x, y) > 127;
        return lit;
    };
    const QImage image = drawn({stroke(Tool::arrow, {{0.2, 0.5}, {0.8, 0.5}})}, {540, 540}, 1);
    EXPECT_GT(boundsOf(image.copy(412, 0, 10, 540), [](QRgb p) { return qGray(p) > 127; }).height(),
              10);
    EXPECT_LE(widthAt(image, 120), 3);
}

TEST(AnnotationRenderer, AnEllipseFillsTheRectangleOfItsPoints)
{
    const QRect ink = inkOf(Tool::ellipse, {{400, 300}, {200, 100}});
    EXPECT_NEAR(ink.left(), 200 - 1.25, 1);
    EXPECT_NEAR(ink.top(), 100 - 1.25, 1);
    EXPECT_NEAR(ink.width(), 202.5, 1.5);
    EXPECT_NEAR(ink.height(), 202.5, 1.5);
    const QImage image = drawn({stroke(Tool::ellipse, {{0.2, 0.2}, {0.8, 0.8}})}, {540, 540}, 1);
    EXPECT_EQ(grey(image, 270, 270), 0) << "it is not filled";
}

TEST(AnnotationRenderer, WhatHasTooFewPointsIsNotDrawn)
{
    EXPECT_TRUE(inkOf(Tool::pen, {}).isEmpty());
    EXPECT_TRUE(inkOf(Tool::ellipse, {{200, 200}}).isEmpty());
    EXPECT_TRUE(inkOf(Tool::arrow, {{200, 200}}).isEmpty());
    EXPECT_FALSE(inkOf(Tool::pen, {{200, 200}}).isEmpty());
}

TEST(AnnotationRenderer, APenGoesThroughAllItsPoints)
{
    const QImage image =
        drawn({stroke(Tool::pen, {{0.1, 0.1}, {0.9, 0.1}, {0.9, 0.9}, {0.1, 0.9}})}, {540, 540}, 1);
    EXPECT_EQ(grey(image, 270, 54), 255);
    EXPECT_EQ(grey(image, 486, 270), 255);
    EXPECT_EQ(grey(image, 270, 486), 255);
    EXPECT_EQ(grey(image, 54, 270), 0) << "it is not closed";
}

TEST(AnnotationRenderer, LaterStrokesLieOnEarlierOnes)
{
    const QImage image = drawn({stroke(Tool::pen, {{0, 0.5}, {1, 0.5}}, Ink::red),
                                stroke(Tool::pen, {{0.5, 0}, {0.5, 1}}, Ink::white)},
                               {540, 540}, 1);
    EXPECT_EQ(image.pixel(270, 270), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(100, 270), qRgb(240, 41, 41));
}

TEST(AnnotationRenderer, StrokesStandInThePicture)
{
    QImage image = blank({300, 200}, Qt::black);
    {
        QPainter painter(&image);
        AnnotationRenderer::draw(painter, {stroke(Tool::pen, {{0.5, 0.5}})},
                                 QRectF(100, 50, 100, 100), 1);
    }
    const QRect ink = boundsOf(image, [](QRgb pixel) { return qGray(pixel) > 127; });
    EXPECT_EQ(ink, QRect(148, 98, 4, 4));
}

} // namespace
} // namespace vantroque

#include "Draw/FramePainter.h"

#include "Drawn.h"
#include "Framing/GuideBuilder.h"

namespace vantroque {
namespace {

using namespace Drawn;
using namespace Qt::StringLiterals;

Guide veil()
{
    return {.id = u"veil"_s, .kind = Guide::Kind::exclusion, .rect = {0, 0, 1, 1}};
}

AnnotationStroke cross(AnnotationStroke::Ink ink)
{
    return {
        .id = {}, .tool = AnnotationStroke::Tool::pen, .points = {{0, 0.5}, {1, 0.5}}, .ink = ink};
}

Overlay everything()
{
    Overlay overlay;
    overlay.captions = {CaptionCue::plain(1, 0, 1, u"One line"_s)};
    overlay.guides = GuideBuilder::guides({.safeAreas = true, .thirds = true}, {16, 9}, {});
    overlay.strokes = {cross(AnnotationStroke::Ink::red)};
    overlay.finding = Finding{{0.4, 0.2, 0.2, 0.1}, Verdict::fail, u"past 93%"_s};
    return overlay;
}

QRect whiteOf(const QImage& image)
{
    return boundsOf(image, [](QRgb pixel) { return qGray(pixel) > 240; });
}

} // namespace

TEST(FramePainter, GuidesLieOnCaptionsAndStrokesOnGuides)
{
    const QSize size(960, 540);
    Overlay overlay;
    overlay.captions = {CaptionCue::plain(1, 0, 1, u"HHHH"_s)};
    const QImage captions = FramePainter::burnIn(blank(size, Qt::gray), overlay, size);
    const QRect words = whiteOf(captions);
    ASSERT_FALSE(words.isEmpty());
    overlay.guides = {veil()};
    const QImage veiled = FramePainter::burnIn(blank(size, Qt::gray), overlay, size);
    EXPECT_TRUE(whiteOf(veiled).isEmpty()) << "the veil dims the captions";
    const double row = (words.center().y() + 0.5) / size.height();
    overlay.strokes = {cross(AnnotationStroke::Ink::white)};
    for (NormalizedPoint& point : overlay.strokes[0].points)
        point.y = row;
    const QImage inked = FramePainter::burnIn(blank(size, Qt::gray), overlay, size);
    EXPECT_EQ(grey(inked, 5, words.center().y()), 255);
    EXPECT_EQ(grey(inked, words.center().x(), words.center().y()), 255);
}

TEST(FramePainter, TheRingOfAFindingLiesOnTop)
{
    const QSize size(960, 540);
    Overlay overlay;
    overlay.strokes = {cross(AnnotationStroke::Ink::white)};
    overlay.finding = Finding{{0.25, 0.25, 0.5, 0.5}, Verdict::fail, {}};
    const QImage image = FramePainter::burnIn(blank(size, Qt::black), overlay, size);
    EXPECT_EQ(image.pixel(240 - 4, 270), qRgb(248, 113, 113));
    EXPECT_EQ(image.pixel(480, 270), qRgb(255, 255, 255));
}

TEST(FramePainter, TheHatchOfLevelsLiesUnderEverythingAndOverThePicture)
{
    const QSize size(960, 540);
    Overlay overlay;
    overlay.outOfRange = blank({2, 1}, Qt::transparent);
    overlay.outOfRange.setPixelColor(1, 0, Qt::blue);
    overlay.strokes = {cross(AnnotationStroke::Ink::white)};
    const QImage image = FramePainter::burnIn(blank(size, Qt::gray), overlay, size);
    EXPECT_EQ(image.pixelColor(240, 100), QColor(Qt::gray));
    EXPECT_EQ(image.pixelColor(720, 100), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(720, 270), QColor(Qt::white));
}

TEST(FramePainter, NothingIsDrawnBesideThePicture)
{
    const QRectF picture(100, 50, 320, 180);
    QImage image = blank({600, 300}, Qt::gray);
    Overlay overlay = everything();
    overlay.strokes.push_back({{}, AnnotationStroke::Tool::ellipse, {{-1, -1}, {2, 2}}, {}});
    overlay.strokes.push_back({{}, AnnotationStroke::Tool::pen, {{-1, 0.5}, {2, 0.5}}, {}});
    {
        QPainter painter(&image);
        FramePainter::draw(painter, overlay, picture);
    }
    const QRect touched = difference(image, blank({600, 300}, Qt::gray));
    EXPECT_FALSE(touched.isEmpty());
    EXPECT_TRUE(picture.toRect().contains(touched));
}

TEST(FramePainter, ThePainterIsAsItWas)
{
    QImage image = blank({320, 180}, Qt::gray);
    QPainter painter(&image);
    painter.setPen(Qt::green);
    FramePainter::draw(painter, everything(), QRectF(0, 0, 320, 180));
    EXPECT_EQ(painter.pen().color(), QColor(Qt::green));
    EXPECT_TRUE(painter.transform().isIdentity());
    EXPECT_FALSE(painter.hasClipping());
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

TEST(FramePainter, WhatIsSeenAtOneSizeIsSeenAtAnother)
{
    const auto at = [](QSize size) {
        return FramePainter::burnIn(blank(size, Qt::darkBlue), everything(), size)
            .scaled(QSize(240, 135), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage large = at({1920, 1080});
    const QImage larger = at({3840, 2160});
    EXPECT_TRUE(difference(large, larger, 24).isEmpty());
}

TEST(BurnIn, APictureWithNothingOnItComesBackAsItWas)
{
    QImage picture(64, 36, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    const QImage same = FramePainter::burnIn(picture, {}, picture.size());
    EXPECT_EQ(same, picture);
    EXPECT_EQ(same.format(), picture.format());
}

TEST(BurnIn, ThePictureGetsItsShape)
{
    // Pixels that are wider than high: 720x576 is shown 1024 wide.
    QImage picture(720, 576, QImage::Format_RGB32);
    picture.fill(Qt::black);
    Overlay overlay;
    overlay.strokes = {{{}, AnnotationStroke::Tool::ellipse, {{0.25, 0.25}, {0.75, 0.75}}, {}}};
    const QImage shown = FramePainter::burnIn(picture, overlay, {1024, 576});
    EXPECT_EQ(shown.size(), QSize(1024, 576));
    const QRect ink = boundsOf(shown, [](QRgb pixel) { return qRed(pixel) > 120; });
    EXPECT_NEAR(ink.width() - ink.height(), 1024 / 2 - 576 / 2, 2);
    EXPECT_EQ(FramePainter::burnIn(picture, {}, {1024, 576}).size(), QSize(1024, 576));
}

TEST(BurnIn, WhatShowsThroughStillDoes)
{
    const QImage picture = blank({96, 54}, Qt::transparent);
    const QImage image = FramePainter::burnIn(picture, everything(), picture.size());
    EXPECT_EQ(qAlpha(image.pixel(20, 14)), 0);
    EXPECT_GT(qAlpha(image.pixel(48, 27)), 250);
}

TEST(BurnIn, WithoutAPictureOrASizeThereIsNothing)
{
    EXPECT_TRUE(FramePainter::burnIn({}, everything(), {96, 54}).isNull());
    EXPECT_TRUE(FramePainter::burnIn(blank({96, 54}, Qt::gray), everything(), {0, 54}).isNull());
    EXPECT_TRUE(FramePainter::burnIn(blank({96, 54}, Qt::gray), everything(), {}).isNull());
}

TEST(FindingRing, TheLabelStaysInThePicture)
{
    const QSize size(480, 270);
    const QImage empty = blank(size, Qt::black);
    for (const NormalizedRect& box :
         {NormalizedRect{0, 0, 0.1, 0.1}, NormalizedRect{0.9, 0.9, 0.1, 0.1},
          NormalizedRect{0, 0, 1, 1}, NormalizedRect{0.95, 0.4, 0.05, 0.05},
          NormalizedRect{-0.5, 0.5, 2, 0.1}}) {
        Overlay overlay;
        overlay.finding = Finding{box, Verdict::warn, {}};
        const QImage ring = FramePainter::burnIn(empty, overlay, size);
        overlay.finding->label = u"reaches 98%, past 93%"_s;
        const QRect tag = difference(FramePainter::burnIn(empty, overlay, size), ring);
        // As wide and high as in the middle of the picture.
        EXPECT_NEAR(tag.height(), 9, 2);
        EXPECT_GT(tag.width(), 60);
        EXPECT_FALSE(difference(ring, empty).isEmpty());
    }
}

TEST(FindingRing, TheLabelHasAScaleOfItsOwn)
{
    const QSize size(480, 270);
    const auto tag = [&](double typeScale) {
        const auto drawn = [&](const QString& label) {
            Overlay overlay;
            overlay.finding = Finding{{0.25, 0.25, 0.25, 0.25}, Verdict::warn, label};
            QImage image = blank(size, Qt::black);
            QPainter painter(&image);
            FramePainter::draw(painter, overlay, QRectF({}, size), 0.5, typeScale);
            return image;
        };
        return difference(drawn(u"past 93%"_s), drawn({}));
    };
    EXPECT_NEAR(tag(1).height(), 18, 1);
    EXPECT_NEAR(tag(0.5).height(), 9, 1);
}

TEST(FindingRing, HasTheColourOfItsVerdict)
{
    const QSize size(960, 540);
    const auto colour = [&](Verdict verdict) {
        Overlay overlay;
        overlay.finding = Finding{{0.25, 0.25, 0.5, 0.5}, verdict, {}};
        return FramePainter::burnIn(blank(size, Qt::black), overlay, size).pixel(236, 270);
    };
    EXPECT_EQ(colour(Verdict::fail), qRgb(248, 113, 113));
    EXPECT_EQ(colour(Verdict::warn), qRgb(252, 211, 77));
    EXPECT_EQ(colour(Verdict::pass), qRgb(74, 222, 128));
    EXPECT_EQ(colour(Verdict::info), qRgb(255, 255, 255));
}

} // namespace vantroque

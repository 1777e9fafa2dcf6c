#include "Draw/OverlayCache.h"

#include "Drawn.h"
#include "Framing/GuideBuilder.h"

namespace vantroque {
namespace {

using namespace Drawn;
using namespace Qt::StringLiterals;

Overlay overlay()
{
    Overlay overlay;
    overlay.captions = {CaptionCue::plain(1, 0, 1, u"One line"_s)};
    overlay.guides = GuideBuilder::guides({.safeAreas = true, .thirds = true}, {16, 9}, {});
    overlay.strokes = {{{}, AnnotationStroke::Tool::arrow, {{0.2, 0.7}, {0.4, 0.3}}, {}}};
    overlay.finding = Finding{{0.6, 0.2, 0.2, 0.1}, Verdict::fail, u"past 93%"_s};
    return overlay;
}

constexpr QSize window(500, 300);
const QRectF place(10, 10, 480, 270);

OverlayPlace placeOf(const QRectF& picture, double ratio)
{
    return {.picture = picture,
            .visible = picture.toAlignedRect() & QRect({}, window),
            .scale = picture.height() / 540,
            .typeScale = picture.height() / 540,
            .pixelRatio = ratio};
}

/// What shows at once.
QImage laid(OverlayCache& cache, const Overlay& overlay, const QRectF& picture = place,
            double ratio = 1)
{
    QImage image = blank(window * ratio, Qt::darkCyan);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    cache.draw(painter, overlay, placeOf(picture, ratio));
    return image;
}

void take(OverlayCache& cache, const OverlayCache::Orders& orders)
{
    std::vector<OverlayCache::Drawn> layers;
    for (const auto& [layer, overlay] : orders.layers)
        layers.push_back({layer, OverlayLayer(overlay, orders.place)});
    cache.take(layers);
}

/// What shows when all is drawn.
QImage cached(OverlayCache& cache, const Overlay& overlay, const QRectF& picture = place,
              double ratio = 1)
{
    laid(cache, overlay, picture, ratio);
    take(cache, cache.missing(overlay, placeOf(picture, ratio)));
    EXPECT_TRUE(cache.missing(overlay, placeOf(picture, ratio)).layers.empty());
    return laid(cache, overlay, picture, ratio);
}

AnnotationStroke stroke(double y)
{
    return {{}, AnnotationStroke::Tool::pen, {{0.1, y}, {0.9, y}}, {}};
}

QImage direct(const Overlay& overlay, const QRectF& picture = place, double ratio = 1)
{
    QImage image = blank(window * ratio, Qt::darkCyan);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    FramePainter::draw(painter, overlay, picture);
    return image;
}

/// Layers are blended once more, which rounds once more.
constexpr int rounding = 4;

} // namespace

TEST(OverlayCache, ShowsWhatIsDrawn)
{
    OverlayCache cache;
    for (int time = 0; time < 3; ++time)
        EXPECT_EQ(difference(cached(cache, overlay()), direct(overlay()), rounding), QRect());
}

TEST(OverlayCache, DrawsAnewWhatChanges)
{
    OverlayCache cache;
    cached(cache, overlay());
    Overlay other = overlay();
    other.captions = {CaptionCue::plain(2, 1, 2, u"Another"_s)};
    EXPECT_EQ(difference(cached(cache, other), direct(other), rounding), QRect());
    other.strokes.clear();
    EXPECT_EQ(difference(cached(cache, other), direct(other), rounding), QRect());
    other.guides[0].tint = Guide::Tint::alert;
    other.finding.reset();
    other.outOfRange = blank({4, 4}, QColor(0, 0, 255, 100));
    EXPECT_EQ(difference(cached(cache, other), direct(other), rounding), QRect());
    EXPECT_EQ(difference(cached(cache, {}), direct({})), QRect());
}

TEST(OverlayCache, FollowsThePicture)
{
    OverlayCache cache;
    cached(cache, overlay());
    for (const QRectF& moved : {QRectF(20, 5, 480, 270), QRectF(20, 5, 240, 135),
                                // Larger than the window, as when it is zoomed.
                                QRectF(-700, -300, 1920, 1080)})
        EXPECT_EQ(difference(cached(cache, overlay(), moved), direct(overlay(), moved), rounding),
                  QRect());
}

TEST(OverlayCache, IsAsSharpAsTheScreen)
{
    OverlayCache cache;
    EXPECT_EQ(difference(cached(cache, overlay(), place, 2), direct(overlay(), place, 2), rounding),
              QRect());
}

TEST(OverlayCache, OutsideTheWindowThereIsNothing)
{
    OverlayCache cache;
    const QRectF beside(2000, 0, 480, 270);
    EXPECT_EQ(difference(cached(cache, overlay(), beside), direct({})), QRect());
}

TEST(OverlayCache, WhatIsNotDrawnYetIsSeenAsItWasAndGoesWithThePicture)
{
    OverlayCache cache;
    cached(cache, overlay());
    const QRectF twice(10, 10, 960, 540);
    const QImage seen = laid(cache, overlay(), twice);
    const QRect ring = difference(seen, laid(cache, {}, twice)) & QRect(300, 100, 200, 200);
    EXPECT_FALSE(ring.isEmpty());
    EXPECT_THAT(cache.missing(overlay(), placeOf(twice, 1)).layers, testing::SizeIs(4));
    EXPECT_EQ(difference(cached(cache, overlay(), twice), direct(overlay(), twice), rounding),
              QRect());
}

TEST(OverlayCache, AMovedPictureTakesItsLayersAlong)
{
    Overlay strokes;
    strokes.strokes = {stroke(0.5)};
    OverlayCache cache;
    cached(cache, strokes);
    const QRectF moved = place.translated(7, -5);
    EXPECT_EQ(difference(laid(cache, strokes, moved), direct(strokes, moved), rounding)
                  & QRect(10, 10, 400, 200),
              QRect());
}

TEST(OverlayCache, WhatIsGoneGoesAtOnceAndDoesNotComeBack)
{
    OverlayCache cache;
    cached(cache, overlay());
    Overlay other;
    other.guides = overlay().guides;
    EXPECT_EQ(difference(laid(cache, other), direct(other), rounding), QRect());
    Overlay later = other;
    later.captions = {CaptionCue::plain(2, 1, 2, u"Another"_s)};
    EXPECT_EQ(difference(laid(cache, later), direct(other), rounding), QRect())
        << "it is on its way";
}

TEST(OverlayCache, WhatComesTooLateIsNotShown)
{
    OverlayCache cache;
    laid(cache, overlay());
    const auto orders = cache.missing(overlay(), placeOf(place, 1));
    laid(cache, {});
    Overlay another;
    another.captions = {CaptionCue::plain(2, 1, 2, u"Another"_s)};
    laid(cache, another);
    take(cache, orders);
    EXPECT_EQ(difference(laid(cache, another), direct({})), QRect());
    EXPECT_EQ(difference(cached(cache, another), direct(another), rounding), QRect());
}

TEST(OverlayCache, AStrokeShowsFromTheMomentThatItIsDrawn)
{
    OverlayCache cache;
    Overlay strokes;
    for (const double y : {0.2, 0.4, 0.6, 0.8}) {
        strokes.strokes.push_back(stroke(y));
        EXPECT_EQ(difference(laid(cache, strokes), direct(strokes), rounding), QRect()) << y;
        cached(cache, strokes);
    }
    strokes.strokes.push_back(stroke(0.5));
    EXPECT_EQ(difference(laid(cache, strokes), direct(strokes), rounding), QRect());
    take(cache, cache.missing(strokes, placeOf(place, 1)));
    EXPECT_EQ(difference(laid(cache, strokes), direct(strokes), rounding), QRect())
        << "once, and not twice";
}

} // namespace vantroque

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

QImage cached(OverlayCache& cache, const Overlay& overlay, const QRectF& picture = place,
              double ratio = 1)
{
    QImage image = blank(window * ratio, Qt::darkCyan);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    cache.draw(painter, overlay, picture, picture.height() / 540);
    return image;
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

} // namespace vantroque

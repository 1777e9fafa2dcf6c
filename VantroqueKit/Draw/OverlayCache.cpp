#include "Draw/OverlayCache.h"

#include "Draw/FramePainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantroque {

namespace {

/// What changes together; the hatch is an image already.
std::array<Overlay, 4> layersOf(const Overlay& overlay)
{
    std::array<Overlay, 4> layers;
    layers[0].captions = overlay.captions;
    layers[1].guides = overlay.guides;
    layers[2].strokes = overlay.strokes;
    layers[3].finding = overlay.finding;
    return layers;
}

bool isEmpty(const QImage& image, const QRect& part)
{
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (std::any_of(row + part.left(), row + part.right() + 1,
                        [](QRgb pixel) { return pixel != 0; }))
            return false;
    }
    return true;
}

} // namespace

std::vector<OverlayCache::Tile> OverlayCache::tiles(const Overlay& overlay, const Place& place)
{
    constexpr int side = 64;
    std::vector<Tile> tiles;
    if (overlay.isEmpty() || place.visible.isEmpty())
        return tiles;
    const double ratio = place.pixelRatio;
    QImage whole(static_cast<int>(std::ceil(place.visible.width() * ratio)),
                 static_cast<int>(std::ceil(place.visible.height() * ratio)),
                 QImage::Format_ARGB32_Premultiplied);
    whole.setDevicePixelRatio(ratio);
    whole.fill(Qt::transparent);
    {
        QPainter painter(&whole);
        painter.translate(-place.visible.topLeft());
        FramePainter::draw(painter, overlay, place.picture, place.scale);
    }
    for (int y = 0; y < whole.height(); y += side)
        for (int x = 0; x < whole.width(); x += side) {
            const QRect part = QRect(x, y, side, side) & whole.rect();
            if (!isEmpty(whole, part))
                tiles.push_back(
                    {place.visible.topLeft() + QPointF(x, y) / ratio, whole.copy(part)});
        }
    return tiles;
}

void OverlayCache::draw(QPainter& painter, const Overlay& overlay, const QRectF& picture,
                        double scale)
{
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    const QRect visible = picture.toAlignedRect()
                          & painter.worldTransform().inverted().mapRect(device).toAlignedRect();
    const Place place{picture, visible, scale, painter.device()->devicePixelRatioF()};
    const bool isElsewhere = std::exchange(m_place, place) != place;
    Overlay hatch;
    hatch.outOfRange = overlay.outOfRange;
    FramePainter::draw(painter, hatch, picture, scale);
    auto layers = layersOf(overlay);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        Layer& layer = m_layers[i];
        if (isElsewhere || layer.drawn != layers[i])
            layer = {layers[i], tiles(layers[i], place)};
        for (const Tile& tile : layer.tiles)
            painter.drawImage(tile.place, tile.image);
    }
}

} // namespace vantroque

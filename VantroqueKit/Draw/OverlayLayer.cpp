#include "Draw/OverlayLayer.h"

#include "Draw/FramePainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantroque {

namespace {

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

OverlayLayer::OverlayLayer(Overlay overlay, const OverlayPlace& place)
    : m_overlay(std::move(overlay)), m_place(place)
{
    constexpr int side = 64;
    if (m_overlay.isEmpty() || place.visible.isEmpty())
        return;
    const double ratio = place.pixelRatio;
    QImage whole(static_cast<int>(std::ceil(place.visible.width() * ratio)),
                 static_cast<int>(std::ceil(place.visible.height() * ratio)),
                 QImage::Format_ARGB32_Premultiplied);
    whole.setDevicePixelRatio(ratio);
    whole.fill(Qt::transparent);
    {
        QPainter painter(&whole);
        painter.translate(-place.visible.topLeft());
        FramePainter::draw(painter, m_overlay, place.picture, place.scale, place.typeScale);
    }
    for (int y = 0; y < whole.height(); y += side)
        for (int x = 0; x < whole.width(); x += side) {
            const QRect part = QRect(x, y, side, side) & whole.rect();
            if (!isEmpty(whole, part))
                m_tiles.push_back(
                    {place.visible.topLeft() + QPointF(x, y) / ratio, whole.copy(part)});
        }
}

void OverlayLayer::paint(QPainter& painter, const OverlayPlace& place) const
{
    if (m_place == place) {
        for (const Tile& tile : m_tiles)
            painter.drawImage(tile.place, tile.image);
        return;
    }
    if (m_place.picture.isEmpty())
        return;
    painter.save();
    painter.setClipRect(place.picture, Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing, false); // would show where tiles meet
    painter.translate(place.picture.topLeft());
    painter.scale(place.picture.width() / m_place.picture.width(),
                  place.picture.height() / m_place.picture.height());
    painter.translate(-m_place.picture.topLeft());
    for (const Tile& tile : m_tiles)
        painter.drawImage(tile.place, tile.image);
    painter.restore();
}

} // namespace vantroque

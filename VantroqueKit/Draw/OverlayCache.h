#pragma once

#include "Draw/Overlay.h"

#include <QPainter>

#include <array>

namespace vantroque {

/// Draws what `FramePainter` draws, and remembers it, so that a moving picture costs no more than
/// laying finished layers over it. What changes is drawn anew, layer by layer. One for each place
/// on the screen, on one thread.
class OverlayCache {
public:
    /// As `FramePainter::draw`, for a painter that only moves and enlarges.
    void draw(QPainter& painter, const Overlay& overlay, const QRectF& picture, double scale);

private:
    /// Where on which screen it is drawn.
    struct Place {
        QRectF picture;
        QRect visible;
        double scale = 0;
        double pixelRatio = 1;
        bool operator==(const Place&) const = default;
    };
    /// A part that holds something, and where.
    struct Tile {
        QPointF place;
        QImage image;
    };
    struct Layer {
        Overlay drawn;
        std::vector<Tile> tiles;
    };

    static std::vector<Tile> tiles(const Overlay& overlay, const Place& place);

    Place m_place;
    std::array<Layer, 4> m_layers;
};

} // namespace vantroque

#pragma once

#include "Draw/Overlay.h"

#include <QPainter>

#include <vector>

namespace vantroque {

/// Where on which screen a picture stands.
struct OverlayPlace {
    QRectF picture;       ///< May reach beyond what can be seen.
    QRect visible;        ///< The part of it that can.
    double scale = 0;     ///< Of lines; 1 on a picture of 540 rows.
    double typeScale = 1; ///< Of labels; 1 for type as large as that around the picture.
    double pixelRatio = 1;
    bool operator==(const OverlayPlace&) const = default;
};

/// A part of what lies on a picture, drawn for one place. It is kept in tiles, so that laying it
/// over a picture costs no more than what is there.
class OverlayLayer {
public:
    OverlayLayer() = default;
    /// Draws it. Any thread; text needs a QGuiApplication.
    OverlayLayer(Overlay overlay, const OverlayPlace& place);

    const Overlay& overlay() const { return m_overlay; }
    bool isFor(const Overlay& overlay, const OverlayPlace& place) const
    {
        return m_place == place && m_overlay == overlay;
    }
    /// For another place than it was drawn for, it goes with the picture.
    void paint(QPainter& painter, const OverlayPlace& place) const;

private:
    /// A part that holds something, and where.
    struct Tile {
        QPointF place;
        QImage image;
    };

    Overlay m_overlay;
    OverlayPlace m_place;
    std::vector<Tile> m_tiles;
};

} // namespace vantroque

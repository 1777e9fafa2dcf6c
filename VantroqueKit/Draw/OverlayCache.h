#pragma once

#include "Draw/OverlayLayer.h"

#include <array>

namespace vantroque {

/// Lays what `FramePainter` draws over a moving picture. It only lays finished layers; whoever has
/// the time draws those that are not, on any thread, and brings them. One for each place on the
/// screen, on one thread.
class OverlayCache {
public:
    /// A layer that is to be drawn.
    struct Order {
        std::size_t layer = 0;
        Overlay overlay;
        bool operator==(const Order&) const = default;
    };
    /// The layers that are to be drawn for a place.
    struct Orders {
        std::vector<Order> layers;
        OverlayPlace place;
        bool operator==(const Orders&) const = default;
    };
    struct Drawn {
        std::size_t layer = 0;
        OverlayLayer picture;
    };

    /// What is not finished yet is seen as it last was, at its place on the picture. What is gone
    /// goes at once, and the newest strokes come at once.
    void draw(QPainter& painter, const Overlay& overlay, const OverlayPlace& place);
    /// What must be drawn before `draw` shows all of it.
    Orders missing(const Overlay& overlay, const OverlayPlace& place) const;
    /// Takes what was drawn, in the order in which it was wanted.
    void take(const std::vector<Drawn>& layers);

private:
    static constexpr std::size_t count = 4;

    static std::array<Overlay, count> layersOf(const Overlay& overlay);
    void drawNewStrokes(QPainter& painter, const Overlay& wanted, const OverlayPlace& place) const;

    std::array<OverlayLayer, count> m_layers;
    std::array<Overlay, count> m_wanted; ///< At the last drawing.
};

} // namespace vantroque

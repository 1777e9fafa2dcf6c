#include "VantroqueApp/Views/Player/LaidOverlay.h"

#include <utility>

namespace vantroque {

namespace {

std::vector<OverlayCache::Drawn> drawn(const OverlayCache::Orders& orders,
                                       const std::stop_token& end)
{
    std::vector<OverlayCache::Drawn> layers;
    for (const auto& [layer, overlay] : orders.layers)
        if (!end.stop_requested())
            layers.push_back({layer, OverlayLayer(overlay, orders.place)});
    return layers;
}

} // namespace

void LaidOverlay::paint(QPainter& painter, const Overlay& overlay, const OverlayPlace& place)
{
    m_overlays.draw(painter, overlay, place);
}

void LaidOverlay::drawRest(const Overlay& overlay, const OverlayPlace& place)
{
    OverlayCache::Orders orders = m_overlays.missing(overlay, place);
    if (m_ordered == orders)
        return;
    m_ordered = std::move(orders);
    if (m_ordered.layers.empty())
        return;
    m_drawing.run([orders = m_ordered, end = m_end.get_token()] { return drawn(orders, end); },
                  [this](const std::vector<OverlayCache::Drawn>& layers) {
                      m_overlays.take(layers);
                      m_update();
                  });
}

} // namespace vantroque

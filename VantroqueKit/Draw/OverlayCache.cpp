#include "Draw/OverlayCache.h"

#include "Draw/AnnotationRenderer.h"
#include "Draw/FramePainter.h"

#include <algorithm>

namespace vantroque {

namespace {

constexpr std::size_t strokesLayer = 2;

} // namespace

/// What changes together; the hatch is an image already.
std::array<Overlay, OverlayCache::count> OverlayCache::layersOf(const Overlay& overlay)
{
    std::array<Overlay, count> layers;
    layers[0].captions = overlay.captions;
    layers[1].guides = overlay.guides;
    layers[strokesLayer].strokes = overlay.strokes;
    layers[3].finding = overlay.finding;
    return layers;
}

void OverlayCache::draw(QPainter& painter, const Overlay& overlay, const OverlayPlace& place)
{
    Overlay hatch;
    hatch.outOfRange = overlay.outOfRange;
    FramePainter::draw(painter, hatch, place.picture, place.scale, place.typeScale);
    m_wanted = layersOf(overlay);
    for (std::size_t i = 0; i < count; ++i) {
        if (m_wanted[i].isEmpty())
            m_layers[i] = {};
        m_layers[i].paint(painter, place);
        if (i == strokesLayer)
            drawNewStrokes(painter, m_wanted[i], place);
    }
}

/// Nobody's stroke vanishes between the hand that drew it and its layer. More than a few at once
/// were not drawn just now.
void OverlayCache::drawNewStrokes(QPainter& painter, const Overlay& wanted,
                                  const OverlayPlace& place) const
{
    constexpr std::size_t few = 2;
    const auto& strokes = wanted.strokes;
    const auto& drawn = m_layers[strokesLayer].overlay().strokes;
    const auto [oneMore, end] = std::ranges::mismatch(strokes, drawn);
    if (end != drawn.end() || strokes.size() > drawn.size() + few)
        return;
    painter.save();
    painter.setClipRect(place.picture, Qt::IntersectClip);
    AnnotationRenderer::draw(painter, {oneMore, strokes.end()}, place.picture, place.scale);
    painter.restore();
}

OverlayCache::Orders OverlayCache::missing(const Overlay& overlay, const OverlayPlace& place) const
{
    Orders orders{.layers = {}, .place = place};
    auto wanted = layersOf(overlay);
    for (std::size_t i = 0; i < count; ++i)
        if (!wanted[i].isEmpty() && !m_layers[i].isFor(wanted[i], place))
            orders.layers.push_back({i, std::move(wanted[i])});
    return orders;
}

void OverlayCache::take(const std::vector<Drawn>& layers)
{
    for (const Drawn& drawn : layers) {
        OverlayLayer& layer = m_layers.at(drawn.layer);
        // What is not wanted any more is better than what is older, but not than nothing.
        if (drawn.picture.overlay() == m_wanted.at(drawn.layer) || !layer.overlay().isEmpty())
            layer = drawn.picture;
    }
}

} // namespace vantroque

#pragma once

#include "Draw/OverlayCache.h"
#include "VantroqueApp/Model/Background/LatestOnly.h"

#include <functional>
#include <stop_token>

namespace vantroque {

/// What lies on a picture of a view. It is drawn in the background and shows as soon as it is
/// there. Main thread.
class LaidOverlay {
public:
    /// `update` is called when there is more to be seen.
    explicit LaidOverlay(std::function<void()> update) : m_update(std::move(update)) {}
    ~LaidOverlay() { m_end.request_stop(); }
    LaidOverlay(const LaidOverlay&) = delete;
    LaidOverlay& operator=(const LaidOverlay&) = delete;

    /// Lays what is drawn by now.
    void paint(QPainter& painter, const Overlay& overlay, const OverlayPlace& place);
    /// Has the rest drawn.
    void drawRest(const Overlay& overlay, const OverlayPlace& place);
    bool isWhole(const Overlay& overlay, const OverlayPlace& place) const
    {
        return m_overlays.missing(overlay, place).layers.empty();
    }

private:
    std::function<void()> m_update;
    OverlayCache m_overlays;
    OverlayCache::Orders m_ordered; ///< The last that were.
    std::stop_source m_end;
    LatestOnly m_drawing; ///< Ends first.
};

} // namespace vantroque

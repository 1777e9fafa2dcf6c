#include "VantroqueApp/Model/Playback/PictureZoom.h"

#include <algorithm>

namespace vantroque {

void PictureZoom::set(const ZoomState& zoom)
{
    m_zoom = zoom;
    Q_EMIT changed();
}

bool PictureZoom::showsActualPixels() const
{
    constexpr double slack = 0.999;
    return m_zoom.scale >= m_zoom.pixelScale(videoWidth()) * slack;
}

void PictureZoom::apply(ZoomCommand command)
{
    switch (command) {
    case ZoomCommand::fit: return setZoom(1);
    case ZoomCommand::actualPixels: return setZoom(std::max(m_zoom.pixelScale(videoWidth()), 1.0));
    case ZoomCommand::zoomIn: return setZoom(m_zoom.scale * 2);
    case ZoomCommand::zoomOut: return setZoom(m_zoom.scale / 2);
    }
}

void PictureZoom::setZoom(double scale, std::optional<QPointF> anchor)
{
    ZoomState zoom = m_zoom;
    zoom.set(scale, anchor);
    set(zoom);
}

void PictureZoom::toggleZoom(QPointF at)
{
    ZoomState zoom = m_zoom;
    zoom.toggle(at, videoWidth());
    set(zoom);
}

void PictureZoom::pan(QPointF by, QPointF from)
{
    ZoomState zoom = m_zoom;
    zoom.panBy(by, from);
    set(zoom);
}

void PictureZoom::setContainerSize(QSizeF size)
{
    if (size == m_zoom.viewportSize || size.isEmpty() || m_shape.isEmpty())
        return;
    ZoomState zoom = m_zoom;
    zoom.viewportSize = size;
    zoom.pictureSize = ZoomState::fittedPicture(size, m_shape.squareWidth(), m_shape.height);
    zoom.set(zoom.scale);
    set(zoom);
}

} // namespace vantroque

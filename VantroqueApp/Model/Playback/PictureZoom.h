#pragma once

#include "Framing/FrameShape.h"
#include "Framing/ZoomState.h"
#include "VantroqueApp/Model/Playback/ZoomCommand.h"

#include <QObject>

namespace vantroque {

/// How close the picture of one player is looked at. Main thread.
class PictureZoom : public QObject {
    Q_OBJECT

public:
    explicit PictureZoom(const FrameShape& shape) : m_shape(shape) {}

    const ZoomState& zoom() const { return m_zoom; }
    /// For `ZoomState`: the picture's width in square pixels.
    int videoWidth() const { return m_shape.squareWidth(); }
    /// At least a point of the screen for each pixel.
    bool showsActualPixels() const;
    std::vector<ZoomState::Stop> stops() const { return m_zoom.stops(videoWidth()); }

    void apply(ZoomCommand command);
    void setZoom(double scale, std::optional<QPointF> anchor = {});
    void toggleZoom(QPointF at);
    void pan(QPointF by, QPointF from);
    /// Keeps the zoom and, as far as may be, the place.
    void setContainerSize(QSizeF size);

Q_SIGNALS:
    void changed();

private:
    void set(const ZoomState& zoom);

    const FrameShape m_shape;
    ZoomState m_zoom;
};

} // namespace vantroque

#pragma once

#include "Draw/Overlay.h"

#include <QPainter>

/// The one place that draws on a picture, so that what is exported is what was seen. Any thread
/// that owns the painter; text needs a QGuiApplication.
namespace vantroque::FramePainter {

/// Lines, ink and labels are measured on a picture of 540 rows and keep their proportion.
constexpr double referenceRows = 540;

/// Draws all of it, cut to `picture`: where the picture stands in the painter's coordinates, in the
/// shape in which it is shown. `scale` is 1 on a picture of 540 rows; labels follow `typeScale`.
void draw(QPainter& painter, const Overlay& overlay, const QRectF& picture, double scale,
          double typeScale);
/// In the picture's own proportion.
void draw(QPainter& painter, const Overlay& overlay, const QRectF& picture);

/// The picture brought to `pixelSize`, with all of it drawn in. Null when there is no picture or no
/// image has that size. Without anything to draw, a picture of that size comes back as it was.
QImage burnIn(const QImage& picture, const Overlay& overlay, QSize pixelSize);

} // namespace vantroque::FramePainter

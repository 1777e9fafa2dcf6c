#pragma once

#include <QPainter>
#include <QPainterPath>

#include <functional>

/// Soft black shadows without an offset, so that what is drawn reads on any picture. As is usual,
/// `blur` is twice the standard deviation of the blur.
namespace vantroque::Shadow {

/// What lies under a line with round ends. Its cost is that of the line and not of the area around
/// it.
void ofLine(QPainter& painter, const QPainterPath& path, const QPen& pen, double blur,
            double opacity);

/// The line as well, whose ends and turns are round: no more work than its shadow alone.
void withLine(QPainter& painter, const QPainterPath& path, const QPen& pen, double blur);

/// What lies under anything within `bounds`: `draw` draws it, in whatever colours.
void ofDrawing(QPainter& painter, const QRectF& bounds, double blur, double opacity,
               const std::function<void(QPainter&)>& draw);

} // namespace vantroque::Shadow

#pragma once

#include <QPainterPath>
#include <QRectF>

class QPainter;

/// What timelines of either height draw. Lengths are in points.
namespace vantroque::TimelineShapes {

/// A drop with its point at the foot.
QPainterPath pin(const QRectF& rect);
/// A hairline with a head.
void paintPlayhead(QPainter& painter, double x, double top, double bottom);

/// The time between two long marks of a scale, in seconds, so that they are at least so far apart.
double markDistance(double seconds, double width, double leastPoints);

} // namespace vantroque::TimelineShapes

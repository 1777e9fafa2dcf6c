#include "Draw/AnnotationRenderer.h"

#include "Draw/Colors.h"
#include "Draw/Shadow.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vantroque::AnnotationRenderer {

namespace {

using Tool = AnnotationStroke::Tool;

/// A stroke as a line on the picture.
struct Line {
    QPainterPath path;
    double width = 0;
};

/// Where a stroke's points lie. A painter counts in 16 bits and some, so those far outside are
/// drawn in.
std::vector<QPointF> placed(const std::vector<NormalizedPoint>& points, const QRectF& picture)
{
    constexpr double farOutside = 4; // pictures
    std::vector<QPointF> places;
    for (const NormalizedPoint& point : points)
        if (std::isfinite(point.x) && std::isfinite(point.y))
            places.emplace_back(
                picture.x() + std::clamp(point.x, -farOutside, farOutside) * picture.width(),
                picture.y() + std::clamp(point.y, -farOutside, farOutside) * picture.height());
    return places;
}

/// A line without length, whose round ends make a dot.
QPainterPath dot(QPointF place)
{
    QPainterPath path(place);
    path.lineTo(place + QPointF(0.001, 0));
    return path;
}

QPainterPath polyline(const std::vector<QPointF>& points)
{
    constexpr double visible = 0.25; // pixels between points
    QPainterPath path(points.front());
    for (const QPointF& point : points)
        if (QLineF(path.currentPosition(), point).length() >= visible || &point == &points.back())
            path.lineTo(point);
    return path.elementCount() == 1 ? dot(points.front()) : path;
}

QPainterPath arrow(QPointF from, QPointF to, double scale)
{
    constexpr double spread = std::numbers::pi / 7;
    const double length = std::hypot(to.x() - from.x(), to.y() - from.y());
    const double barb = std::clamp(0.28 * length, 9 * scale, 18 * scale);
    const double angle = std::atan2(to.y() - from.y(), to.x() - from.x());
    QPainterPath path(from);
    path.lineTo(to);
    for (const double side : {angle - spread, angle + spread}) {
        path.moveTo(to);
        path.lineTo(to - barb * QPointF(std::cos(side), std::sin(side)));
    }
    return path;
}

/// Empty when there is nothing to draw.
Line line(const AnnotationStroke& stroke, const QRectF& picture, double scale)
{
    const auto points = placed(stroke.points, picture);
    Line line{.path = {}, .width = std::max(2.5 * scale, 1.5)};
    if (stroke.tool == Tool::pen) {
        if (points.size() == 1)
            return {dot(points[0]), 4 * scale};
        if (!points.empty())
            line.path = polyline(points);
    } else if (points.size() >= 2 && points.size() == stroke.points.size()) {
        if (stroke.tool == Tool::arrow)
            line.path = arrow(points[0], points[1], scale);
        else
            line.path.addEllipse(QRectF(points[0], points[1]).normalized());
    }
    return line;
}

} // namespace

QColor color(AnnotationStroke::Ink ink)
{
    switch (ink) {
    case AnnotationStroke::Ink::red: return painted(Palette::inkRed);
    case AnnotationStroke::Ink::amber: return painted(Palette::amber);
    case AnnotationStroke::Ink::white: break;
    }
    return painted(Palette::white);
}

void draw(QPainter& painter, const std::vector<AnnotationStroke>& strokes, const QRectF& picture,
          double scale)
{
    if (strokes.empty() || !(scale > 0))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const AnnotationStroke& stroke : strokes) {
        const auto [path, width] = line(stroke, picture, scale);
        if (path.isEmpty())
            continue;
        Shadow::withLine(painter, path, QPen(color(stroke.ink), width), 3 * scale);
    }
    painter.restore();
}

} // namespace vantroque::AnnotationRenderer

#include "VantroqueApp/Views/Player/TimelineShapes.h"

#include "VantroqueApp/Views/Style/Theme.h"

#include <QPainter>

#include <array>

namespace vantroque::TimelineShapes {

QPainterPath pin(const QRectF& rect)
{
    const double radius = rect.width() / 2;
    const QPointF centre(rect.center().x(), rect.top() + radius);
    QPainterPath path(QPointF(centre.x(), rect.bottom()));
    path.lineTo(centre.x() - radius, centre.y() + radius * 0.35);
    path.arcTo(QRectF(centre.x() - radius, rect.top(), rect.width(), rect.width()), 200, -220);
    path.closeSubpath();
    return path;
}

void paintPlayhead(QPainter& painter, double x, double top, double bottom)
{
    constexpr double half = 5;
    constexpr double headHeight = 8;
    constexpr double shoulder = 4; ///< Between the head's sides and its point.
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::dark().accent);
    painter.drawRect(QRectF(x - 0.75, top, 1.5, bottom - top));
    const double sides = top + headHeight - shoulder;
    painter.drawPolygon(
        QPolygonF({QPointF(x - half, top), QPointF(x + half, top), QPointF(x + half, sides),
                   QPointF(x, top + headHeight), QPointF(x - half, sides)}));
}

double markDistance(double seconds, double width, double leastPoints)
{
    constexpr std::array steps{1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 60.0, 300.0, 600.0, 1800.0, 3600.0};
    for (const double step : steps)
        if (step / seconds * width >= leastPoints)
            return step;
    return seconds;
}

} // namespace vantroque::TimelineShapes

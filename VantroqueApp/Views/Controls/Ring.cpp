#include "VantroqueApp/Views/Controls/Ring.h"

#include "Base/Numbers.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QPainter>

#include <algorithm>

namespace vantroque::Ring {

void draw(QPainter& painter, const QRectF& rect, double width, double fraction)
{
    constexpr int turn = 360 * 16; // in the painter's unit
    const QRectF line = rect.adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::current().controlEdge, width));
    painter.drawEllipse(line);
    painter.setPen(QPen(Theme::current().accent, width, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(
        line, turn / 4,
        -static_cast<int>(Numbers::roundedToInt(std::clamp(fraction, 0.0, 1.0) * turn)));
}

} // namespace vantroque::Ring

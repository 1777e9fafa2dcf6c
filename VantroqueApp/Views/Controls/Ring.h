#pragma once

class QPainter;
class QRectF;

/// A ring that fills up.
namespace vantroque::Ring {

/// `fraction` is of a whole turn, from the top clockwise.
void draw(QPainter& painter, const QRectF& rect, double width, double fraction);

} // namespace vantroque::Ring

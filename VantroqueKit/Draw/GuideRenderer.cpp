#include "Draw/GuideRenderer.h"

#include "Draw/Colors.h"
#include "Draw/Shadow.h"
#include "Draw/TextShape.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <map>
#include <mutex>

namespace vantroque::GuideRenderer {

namespace {

using Kind = Guide::Kind;
using LabelCorner = Guide::LabelCorner;

double lineWidth(double scale)
{
    return std::max(scale, 1.0);
}

QRectF placed(const NormalizedRect& rect, QSizeF size)
{
    return {rect.x * size.width(), rect.y * size.height(), rect.width * size.width(),
            rect.height * size.height()};
}

/// A line around whole pixels that lies inside them.
QRectF snapped(const NormalizedRect& rect, QSizeF size, double scale)
{
    const QRectF exact = placed(rect, size);
    const double line = lineWidth(scale);
    return {std::round(exact.x()) + line / 2, std::round(exact.y()) + line / 2,
            std::round(exact.width()) - line, std::round(exact.height()) - line};
}

/// The line that a guide is, if it is one.
QPainterPath line(const Guide& guide, QSizeF size, double scale)
{
    constexpr double crossArm = 14;
    QPainterPath path;
    const auto add = [&](QPointF from, QPointF to) {
        path.moveTo(from);
        path.lineTo(to);
    };
    const QRectF rect = placed(guide.rect, size);
    const QPointF middle(size.width() / 2, size.height() / 2);
    switch (guide.kind) {
    case Kind::verticalLine: add({rect.x(), 0}, {rect.x(), size.height()}); break;
    case Kind::horizontalLine: add({0, rect.y()}, {size.width(), rect.y()}); break;
    case Kind::centerCross:
        add(middle - QPointF(crossArm * scale, 0), middle + QPointF(crossArm * scale, 0));
        add(middle - QPointF(0, crossArm * scale), middle + QPointF(0, crossArm * scale));
        break;
    case Kind::rect: path.addRect(snapped(guide.rect, size, scale)); break;
    case Kind::exclusion: break;
    }
    return path;
}

QPen pen(const Guide& guide, double scale)
{
    constexpr double dash = 6;
    constexpr double gap = 4;
    const double width = lineWidth(scale);
    QPen pen(color(guide.tint), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    if (guide.dashed) // is told in widths of the pen
        pen.setDashPattern({dash * scale / width, gap * scale / width});
    return pen;
}

void drawShape(QPainter& painter, const Guide& guide, QSizeF size, double scale)
{
    constexpr double shadowOpacity = 0.7;
    constexpr double veilOpacity = 0.55;
    if (guide.kind == Kind::exclusion) {
        painter.fillRect(placed(guide.rect, size), painted(Palette::black, veilOpacity));
        return;
    }
    const QPainterPath path = line(guide, size, scale);
    Shadow::ofLine(painter, path, pen(guide, scale), 2 * scale, shadowOpacity);
    painter.strokePath(path, pen(guide, scale));
}

/// Labels are few and always the same, and laying them out costs more than drawing them.
TextShape labelShape(const QString& text)
{
    static std::mutex mutex;
    static std::map<QString, TextShape> shapes;
    const std::scoped_lock lock(mutex);
    const auto known = shapes.find(text);
    return known != shapes.end() ? known->second
                                 : shapes.emplace(text, TextShape::label(text)).first->second;
}

QPointF labelOrigin(LabelCorner corner, const QRectF& rect, QSizeF label, double scale)
{
    const double margin = 4 * scale;
    const bool isLeft = corner == LabelCorner::topLeft || corner == LabelCorner::bottomLeft;
    const bool isTop = corner == LabelCorner::topLeft || corner == LabelCorner::topRight;
    return {isLeft ? rect.left() + margin : rect.right() - margin - label.width(),
            isTop ? rect.top() + margin : rect.bottom() - margin - label.height()};
}

void drawLabel(QPainter& painter, const Guide& guide, QSizeF size, double scale, double typeScale)
{
    constexpr double leastSize = 4;
    constexpr double mostSize = 400;
    constexpr double shadowOpacity = 0.9;
    constexpr double shadowBlur = 0.3; // of the font's size
    const double fontSize = 10 * typeScale;
    const QRectF rect = snapped(guide.rect, size, scale);
    // Smaller type is not read, and at the least size it would fill a thumbnail.
    if (fontSize < leastSize || !(rect.width() > 70 * typeScale && rect.height() > 26 * typeScale))
        return;
    const double drawnSize = std::min(fontSize, mostSize);
    const TextShape shape = labelShape(*guide.label);
    const QPointF origin =
        labelOrigin(guide.labelCorner, rect, shape.size() * drawnSize, typeScale);
    const QRectF bounds(origin, shape.size() * drawnSize);
    const auto write = [&](QPainter& onto) {
        shape.fill(onto, origin, drawnSize, color(guide.tint));
    };
    Shadow::ofDrawing(painter, bounds, shadowBlur * drawnSize, shadowOpacity, write);
    write(painter);
}

} // namespace

QColor color(Guide::Tint tint)
{
    switch (tint) {
    case Guide::Tint::safe: break;
    case Guide::Tint::social: return painted(Palette::amber);
    case Guide::Tint::alert: return painted(Palette::guideAlert);
    case Guide::Tint::ok: return painted(Palette::guideOk);
    case Guide::Tint::neutral: return painted(Palette::white, 0.55);
    }
    return painted(Palette::white);
}

void draw(QPainter& painter, const std::vector<Guide>& guides, const QRectF& picture, double scale,
          double typeScale)
{
    if (!(scale > 0 && typeScale > 0))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(picture.topLeft());
    for (const Guide& guide : guides)
        drawShape(painter, guide, picture.size(), scale);
    for (const Guide& guide : guides)
        if (guide.label && (guide.kind == Kind::rect || guide.kind == Kind::exclusion))
            drawLabel(painter, guide, picture.size(), scale, typeScale);
    painter.restore();
}

} // namespace vantroque::GuideRenderer

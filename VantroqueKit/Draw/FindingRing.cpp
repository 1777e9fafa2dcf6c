#include "Draw/FindingRing.h"

#include "Draw/Colors.h"
#include "Draw/Shadow.h"
#include "Draw/TextShape.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace vantroque::FindingRing {

namespace {

constexpr double cornerRadius = 3;

QColor color(Verdict verdict)
{
    switch (verdict) {
    case Verdict::pass: return painted(Palette::green);
    case Verdict::warn: return painted(Palette::amber);
    case Verdict::fail: return painted(Palette::red);
    case Verdict::info: break;
    }
    return painted(Palette::white);
}

void drawTag(QPainter& painter, const Finding& finding, const QRectF& ring, const QRectF& picture,
             double scale)
{
    constexpr double height = 18;
    constexpr double fontSize = 11;
    constexpr double padding = 6;
    constexpr double gap = 4;
    const TextShape words = TextShape::tag(finding.label);
    const QSizeF size = words.size() * fontSize * scale;
    QRectF tag(ring.left(), ring.bottom() + gap * scale, size.width() + 2 * padding * scale,
               height * scale);
    if (tag.bottom() > picture.bottom())
        tag.moveBottom(ring.top() - gap * scale);
    tag.moveLeft(std::max(std::min(tag.left(), picture.right() - tag.width()), picture.left()));
    tag.moveTop(std::max(std::min(tag.top(), picture.bottom() - tag.height()), picture.top()));
    QPainterPath path;
    path.addRoundedRect(tag, cornerRadius * scale, cornerRadius * scale);
    painter.fillPath(path, color(finding.verdict));
    words.fill(painter, {tag.left() + padding * scale, tag.center().y() - size.height() / 2},
               fontSize * scale, painted(Palette::black));
}

} // namespace

void draw(QPainter& painter, const Finding& finding, const QRectF& picture, double scale,
          double typeScale)
{
    constexpr double width = 2;
    constexpr double room = 4; // between what was found and the ring
    const NormalizedRect box = finding.box.intersected({0, 0, 1, 1});
    // Written so that what is no number is refused.
    if (!(box.width >= 0 && box.height >= 0 && box.right() <= 1 && box.bottom() <= 1 && scale > 0
          && typeScale > 0))
        return;
    const double outset = room * scale;
    const double inset = width * scale / 2;
    const QRectF around =
        QRectF(picture.x() + box.x * picture.width(), picture.y() + box.y * picture.height(),
               box.width * picture.width(), box.height * picture.height())
            .adjusted(-outset, -outset, outset, outset)
        & picture.adjusted(inset, inset, -inset, -inset);
    if (around.isEmpty())
        return;
    QPainterPath path;
    path.addRoundedRect(around, cornerRadius * scale, cornerRadius * scale);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QPen pen(color(finding.verdict), width * scale);
    Shadow::ofLine(painter, path, pen, 2 * scale, 0.7);
    painter.strokePath(path, pen);
    if (!finding.label.isEmpty())
        drawTag(painter, finding, around, picture, typeScale);
    painter.restore();
}

} // namespace vantroque::FindingRing

#include "VantroqueApp/Views/Compare/PicturePaint.h"

#include "Draw/FramePainter.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainterPath>

#include <algorithm>

namespace vantroque::PicturePaint {

void draw(QPainter& painter, const QRectF& place, const QImage& picture)
{
    if (picture.isNull())
        return painter.fillRect(place, Qt::black);
    // As many pixels as there are, or more, need no smoothing.
    const double ratio = painter.device()->devicePixelRatioF();
    painter.setRenderHint(QPainter::SmoothPixmapTransform,
                          place.width() * ratio != picture.width());
    painter.drawImage(place, picture);
}

/// Cheaper than painting a picture through a round hole.
void roundCorners(QPainter& painter, const QRectF& place)
{
    constexpr double radius = 4;
    QPainterPath corners;
    corners.addRect(place);
    QPainterPath inside;
    inside.addRoundedRect(place, radius, radius);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(corners.subtracted(inside), Theme::current().window);
    painter.restore();
}

void drawMessage(QPainter& painter, const QRectF& picture, const QString& words)
{
    constexpr double inset = 12;
    constexpr double radius = 6;
    constexpr int opacity = 217;
    const Theme& theme = Theme::dark(); // on a picture it is always dark
    const QFont font = Type::text(Type::body, QFont::Medium);
    const QFontMetricsF metrics(font);
    const QRectF room = picture.adjusted(inset * 2, 0, -inset * 2, 0);
    QRectF text = metrics.boundingRect(room, Qt::AlignCenter | Qt::TextWordWrap, words);
    const QRectF box = text.adjusted(-inset, -inset / 2, inset, inset / 2);
    painter.save();
    painter.setClipRect(picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor ground = theme.ground;
    ground.setAlpha(opacity);
    painter.setBrush(ground);
    painter.drawRoundedRect(box, radius, radius);
    painter.setPen(theme.text1);
    painter.setFont(font);
    painter.drawText(text.adjusted(-1, 0, 1, 0), Qt::AlignCenter | Qt::TextWordWrap, words);
    painter.restore();
}

OverlayPlace overlayPlace(const QRectF& picture, double pixelRatio)
{
    return {.picture = picture,
            .visible = picture.toAlignedRect(),
            .scale = picture.height() / FramePainter::referenceRows,
            .pixelRatio = pixelRatio};
}

} // namespace vantroque::PicturePaint

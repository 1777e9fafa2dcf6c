#include "Draw/FramePainter.h"

#include "Draw/AnnotationRenderer.h"
#include "Draw/CaptionRenderer.h"
#include "Draw/FindingRing.h"
#include "Draw/GuideRenderer.h"

#include <cmath>

namespace vantroque::FramePainter {

namespace {

bool isPlace(const QRectF& picture)
{
    return std::isfinite(picture.x()) && std::isfinite(picture.y())
           && std::isfinite(picture.width()) && std::isfinite(picture.height())
           && !picture.isEmpty();
}

} // namespace

void draw(QPainter& painter, const Overlay& overlay, const QRectF& picture, double scale,
          double typeScale)
{
    if (!isPlace(picture))
        return;
    painter.save();
    painter.setClipRect(picture, Qt::IntersectClip);
    if (!overlay.outOfRange.isNull())
        painter.drawImage(picture, overlay.outOfRange);
    CaptionRenderer::draw(painter, overlay.captions, picture);
    GuideRenderer::draw(painter, overlay.guides, picture, scale, typeScale);
    AnnotationRenderer::draw(painter, overlay.strokes, picture, scale);
    if (overlay.finding)
        FindingRing::draw(painter, *overlay.finding, picture, scale, typeScale);
    painter.restore();
}

void draw(QPainter& painter, const Overlay& overlay, const QRectF& picture)
{
    const double scale = picture.height() / referenceRows;
    draw(painter, overlay, picture, scale, scale);
}

QImage burnIn(const QImage& picture, const Overlay& overlay, QSize pixelSize)
{
    constexpr int mostPixels = 32767; // of a side, for a painter
    if (picture.isNull() || pixelSize.isEmpty() || pixelSize.width() > mostPixels
        || pixelSize.height() > mostPixels)
        return {};
    if (overlay.isEmpty() && picture.size() == pixelSize)
        return picture;
    QImage image = picture.size() == pixelSize
                       ? picture
                       : picture.scaled(pixelSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    image = std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.setDevicePixelRatio(1);
    QPainter painter(&image);
    draw(painter, overlay, QRectF(QPointF(), pixelSize));
    return image;
}

} // namespace vantroque::FramePainter

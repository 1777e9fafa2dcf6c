#pragma once

#include "Draw/OverlayLayer.h"

#include <QPainter>

/// How pictures of versions are painted, one beside the other or one over the other.
namespace vantroque::PicturePaint {

/// Into that place; black where there is no picture yet.
void draw(QPainter& painter, const QRectF& place, const QImage& picture);
/// Makes the corners of what was painted round, on the colour of the window.
void roundCorners(QPainter& painter, const QRectF& place);
/// A few words in the middle, on a dark ground that lets them be read on any picture.
void drawMessage(QPainter& painter, const QRectF& picture, const QString& words);
/// Where lines and labels are measured on a picture of that size on the screen.
OverlayPlace overlayPlace(const QRectF& picture, double pixelRatio);

} // namespace vantroque::PicturePaint

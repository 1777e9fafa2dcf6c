#pragma once

#include "Framing/Guide.h"

#include <QPainter>

#include <vector>

namespace vantroque::GuideRenderer {

QColor color(Guide::Tint tint);

/// Lines and areas in order, then their labels. A label is left out where it would crowd its area,
/// and where it could not be read. `scale` is 1 on a picture of 540 rows; labels follow
/// `typeScale`.
void draw(QPainter& painter, const std::vector<Guide>& guides, const QRectF& picture, double scale,
          double typeScale);

} // namespace vantroque::GuideRenderer

#pragma once

#include "Draw/Overlay.h"

#include <QPainter>

namespace vantroque::FindingRing {

/// A ring around the place in the colour of the verdict, with its label on a tag below, or above
/// where there is no room; the tag stays inside the picture. `scale` is 1 on a picture of 540 rows;
/// the tag follows `typeScale`.
void draw(QPainter& painter, const Finding& finding, const QRectF& picture, double scale,
          double typeScale);

} // namespace vantroque::FindingRing

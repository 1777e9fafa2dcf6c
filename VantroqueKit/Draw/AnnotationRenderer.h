#pragma once

#include "Records/FileReview.h"

#include <QPainter>

#include <vector>

namespace vantroque::AnnotationRenderer {

QColor color(AnnotationStroke::Ink ink);

/// The operator's strokes in order. What has too few points to be drawn is left out; points that
/// are no numbers do not count. `scale` is 1 on a picture of 540 rows.
void draw(QPainter& painter, const std::vector<AnnotationStroke>& strokes, const QRectF& picture,
          double scale);

} // namespace vantroque::AnnotationRenderer

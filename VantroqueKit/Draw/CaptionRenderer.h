#pragma once

#include "Records/CaptionCue.h"

#include <QPainter>

#include <vector>

namespace vantroque::CaptionRenderer {

/// White with a black edge and no box behind. Cues at the top stand one under the other, cues at
/// the bottom one above the other, in order.
void draw(QPainter& painter, const std::vector<CaptionCue>& cues, const QRectF& picture);

} // namespace vantroque::CaptionRenderer

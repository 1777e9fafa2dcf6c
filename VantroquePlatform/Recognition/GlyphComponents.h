#pragma once

#include "VantroquePlatform/Recognition/TextMaps.h"

#include <vector>

namespace vantroque {

/// A connected patch of a map that can be a letter, or a few that touch.
struct Glyph {
    cv::Rect box;
    cv::Vec3f color;  ///< Of the middle of its strokes.
    float step = 0;   ///< In luma against its surroundings; positive for light type on dark.
    float stroke = 0; ///< About how wide its strokes are.
};

/// The patches of letter size that stand out from what is around them, from left to right.
std::vector<Glyph> findGlyphs(const cv::Mat1b& map, const cv::Mat3b& picture, const cv::Mat1b& luma,
                              const TextScale& scale);

} // namespace vantroque

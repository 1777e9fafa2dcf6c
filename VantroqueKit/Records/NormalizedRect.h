#pragma once

#include "Base/Record.h"

#include <algorithm>

namespace vantroque {

/// A rectangle in fractions of the picture, 0 to 1, from the top left corner.
struct NormalizedRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    static NormalizedRect fromEdges(double left, double top, double right, double bottom)
    {
        return {left, top, std::max(right - left, 0.0), std::max(bottom - top, 0.0)};
    }

    double right() const { return x + width; }
    double bottom() const { return y + height; }
    double centerX() const { return x + width / 2; }
    double centerY() const { return y + height / 2; }
    double area() const { return width * height; }

    /// The smallest rectangle that holds both.
    NormalizedRect united(const NormalizedRect& other) const
    {
        return fromEdges(std::min(x, other.x), std::min(y, other.y),
                         std::max(right(), other.right()), std::max(bottom(), other.bottom()));
    }
    /// What both cover; without size where they do not meet.
    NormalizedRect intersected(const NormalizedRect& other) const
    {
        return fromEdges(std::max(x, other.x), std::max(y, other.y),
                         std::min(right(), other.right()), std::min(bottom(), other.bottom()));
    }
    /// `margin` wider on each side, and cut to the picture.
    NormalizedRect grown(double margin) const
    {
        return NormalizedRect{x - margin, y - margin, width + 2 * margin, height + 2 * margin}
            .intersected({0, 0, 1, 1});
    }

    VANTROQUE_RECORD(NormalizedRect, x, y, width, height)
};

} // namespace vantroque

#pragma once

#include "Records/TextRegion.h"
#include "Support/TestFolder.h"
#include "Text/TextSample.h"

#include <gmock/gmock.h>

#include <cmath>

// Rectangles and regions in tests: how they print, and when they are the same.

namespace vantroque {

inline void PrintTo(const NormalizedRect& rect, std::ostream* out)
{
    *out << rect.x << "," << rect.y << " " << rect.width << "x" << rect.height;
}

inline void PrintTo(const TextRegion& region, std::ostream* out)
{
    *out << region.text.toStdString() << " " << region.start << "-" << region.end << " at ";
    PrintTo(region.rect(), out);
}

inline void PrintTo(const TextSample::Box& box, std::ostream* out)
{
    *out << box.text.toStdString() << " at ";
    PrintTo(box.rect, out);
}

inline bool isSame(double a, double b)
{
    return std::abs(a - b) < 1e-9;
}

/// Edges are sums, which are not exact.
inline bool isSame(const NormalizedRect& a, const NormalizedRect& b)
{
    return isSame(a.x, b.x) && isSame(a.y, b.y) && isSame(a.width, b.width)
           && isSame(a.height, b.height);
}

MATCHER_P(Covers, rect, testing::PrintToString(rect))
{
    return isSame(arg, rect);
}

MATCHER_P(IsRegion, region, testing::PrintToString(region))
{
    return isSame(arg.start, region.start) && isSame(arg.end, region.end)
           && isSame(arg.rect(), region.rect()) && arg.text == region.text;
}

MATCHER_P2(IsBox, rect, text, testing::PrintToString(rect))
{
    return isSame(arg.rect, rect) && arg.text == text;
}

} // namespace vantroque

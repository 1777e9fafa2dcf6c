#pragma once

#include "Picture/Bitmap.h"
#include "Records/ScopeFrame.h"

/// What the scopes share.
namespace vantroque::ScopeRenderer {

constexpr Rgba gridColor{70, 74, 82, 255};
/// The trace of a scope whose traces have no colours of their own.
constexpr Rgba traceColor{220, 226, 232, 255};

/// Dashed lines are three pixels on and three off.
constexpr bool isDash(int x)
{
    return x / 3 % 2 == 0;
}

/// An image to draw `frame` on. Nothing when the frame has no pixels, when one of its planes does
/// not reach to the last of them, or when no image has that size.
std::optional<Bitmap> canvas(const ScopeFrame& frame, int width, int height,
                             Rgba fill = Bitmap::background);

} // namespace vantroque::ScopeRenderer

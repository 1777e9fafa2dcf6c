#include "Picture/Canvas.h"

namespace vantroque::ScopeRenderer {

std::optional<Bitmap> canvas(const ScopeFrame& frame, int width, int height, Rgba fill)
{
    if (frame.width < 1 || frame.height < 1)
        return std::nullopt;
    const auto pixels =
        static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
    if (frame.y.size() < pixels || frame.cb.size() < pixels || frame.cr.size() < pixels)
        return std::nullopt;
    return Bitmap::make(width, height, fill);
}

} // namespace vantroque::ScopeRenderer

#include "Records/ScopeFrame.h"

#include <algorithm>

namespace vantroque {

std::optional<ScopeFrame> ScopeFrame::fromYuv444(std::string_view data, int width, int height,
                                                 bool fullRange, ColorMatrix matrix)
{
    if (width < 1 || height < 1)
        return std::nullopt;
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (data.size() < pixels * 3)
        return std::nullopt;
    const auto plane = [&](std::size_t index) {
        const std::string_view bytes = data.substr(index * pixels, pixels);
        return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
    };
    return ScopeFrame{width, height, plane(0), plane(1), plane(2), fullRange, matrix};
}

ScopeFrame ScopeFrame::thinned(int columns) const
{
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (width <= columns || columns < 1 || std::min({y.size(), cb.size(), cr.size()}) < pixels)
        return *this;
    const std::int64_t wide = width;
    const auto rows = std::max<std::int64_t>(std::int64_t(height) * columns / wide, 1);
    const auto thinnedPlane = [&](const std::vector<std::uint8_t>& plane) {
        std::vector<std::uint8_t> taken;
        taken.reserve(static_cast<std::size_t>(columns * rows));
        for (std::int64_t row = 0; row < rows; ++row)
            for (std::int64_t column = 0; column < columns; ++column)
                taken.push_back(plane[static_cast<std::size_t>(row * height / rows * wide
                                                               + column * wide / columns)]);
        return taken;
    };
    return {columns,
            static_cast<int>(rows),
            thinnedPlane(y),
            thinnedPlane(cb),
            thinnedPlane(cr),
            fullRange,
            matrix};
}

} // namespace vantroque

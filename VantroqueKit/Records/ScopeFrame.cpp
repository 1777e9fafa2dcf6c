#include "Records/ScopeFrame.h"

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

} // namespace vantroque

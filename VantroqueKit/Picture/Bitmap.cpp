#include "Picture/Bitmap.h"

namespace vantroque {

std::optional<Bitmap> Bitmap::make(int width, int height, Rgba fill)
{
    constexpr std::int64_t mostPixels = std::int64_t{1} << 28; // 1 GiB
    if (width < 1 || height < 1 || std::int64_t{width} * height > mostPixels)
        return std::nullopt;
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return Bitmap{width, height, std::vector<Rgba>(pixels, fill)};
}

void Bitmap::set(int x, int y, Rgba color)
{
    if (x >= 0 && x < width && y >= 0 && y < height)
        at(x, y) = color;
}

} // namespace vantroque

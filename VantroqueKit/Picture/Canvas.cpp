#include "Picture/Canvas.h"

namespace vantroque::ScopeRenderer {

QImage canvas(const ScopeFrame& frame, int width, int height, QImage::Format format, Rgba fill)
{
    if (frame.width < 1 || frame.height < 1)
        return {};
    const auto pixels =
        static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
    if (frame.y.size() < pixels || frame.cb.size() < pixels || frame.cr.size() < pixels)
        return {};
    return emptyCanvas(width, height, format, fill);
}

QImage emptyCanvas(int width, int height, QImage::Format format, Rgba fill)
{
    constexpr std::int64_t mostPixels = std::int64_t{1} << 28; // 1 GiB
    if (width < 1 || height < 1 || std::int64_t{width} * height > mostPixels)
        return {};
    QImage image(width, height, format);
    image.fill(fill.argb());
    return image;
}

void set(QImage& image, int x, int y, Rgba color)
{
    if (image.valid(x, y))
        pixelRow(image, y)[x] = color.argb();
}

} // namespace vantroque::ScopeRenderer

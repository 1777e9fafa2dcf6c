#include "Picture/Trace.h"

#include <algorithm>

namespace vantroque::ScopeRenderer {

namespace {

std::uint8_t brightened(std::uint8_t base, std::uint32_t samples, int step)
{
    return static_cast<std::uint8_t>(
        std::min<std::int64_t>(base + std::int64_t{samples} * step, 255));
}

} // namespace

Trace::Trace(int width, int height)
    : m_width(width),
      m_height(height),
      m_hits(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
{
}

void Trace::paint(Bitmap& bitmap, int left, int strength, Rgba color) const
{
    const int r = strength * color.r / 255;
    const int g = strength * color.g / 255;
    const int b = strength * color.b / 255;
    auto hits = m_hits.begin();
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x, ++hits) {
            Rgba& pixel = bitmap.at(left + x, y);
            pixel.r = brightened(pixel.r, *hits, r);
            pixel.g = brightened(pixel.g, *hits, g);
            pixel.b = brightened(pixel.b, *hits, b);
        }
}

} // namespace vantroque::ScopeRenderer

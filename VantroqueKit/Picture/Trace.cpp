#include "Picture/Trace.h"

#include "Picture/Canvas.h"

#include <algorithm>

namespace vantroque::ScopeRenderer {

namespace {

int brightened(int base, std::uint32_t samples, int step)
{
    return static_cast<int>(std::min<std::int64_t>(base + std::int64_t{samples} * step, 255));
}

} // namespace

Trace::Trace(int width, int height)
    : m_width(width),
      m_height(height),
      m_hits(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
{
}

void Trace::paint(QImage& image, int left, int strength, Rgba color) const
{
    const int r = strength * color.r / 255;
    const int g = strength * color.g / 255;
    const int b = strength * color.b / 255;
    auto hits = m_hits.begin();
    for (int y = 0; y < m_height; ++y) {
        QRgb* pixel = pixelRow(image, y) + left;
        for (int x = 0; x < m_width; ++x, ++pixel, ++hits)
            *pixel = qRgb(brightened(qRed(*pixel), *hits, r), brightened(qGreen(*pixel), *hits, g),
                          brightened(qBlue(*pixel), *hits, b));
    }
}

} // namespace vantroque::ScopeRenderer

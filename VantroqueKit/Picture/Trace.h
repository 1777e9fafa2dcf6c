#pragma once

#include "Records/Palette.h"

#include <QImage>

#include <cstdint>
#include <vector>

namespace vantroque::ScopeRenderer {

/// How many samples fell on each pixel of an area of an image.
class Trace {
public:
    Trace(int width, int height);

    /// Ignores samples outside.
    void add(int x, int y)
    {
        if (x >= 0 && x < m_width && y >= 0 && y < m_height)
            ++m_hits[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width)
                     + static_cast<std::size_t>(x)];
    }

    /// Lays the area over `image` from column `left` on: each sample adds to the brightness of its
    /// pixel, 255 of `strength` being the whole of `color`.
    void paint(QImage& image, int left, int strength, Rgba color) const;

private:
    int m_width;
    int m_height;
    std::vector<std::uint32_t> m_hits;
};

} // namespace vantroque::ScopeRenderer

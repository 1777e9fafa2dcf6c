#pragma once

#include "Records/Palette.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

/// An image in raster order. The pixels lie as bytes R, G, B and A in memory.
struct Bitmap {
    static constexpr Rgba background{28, 30, 35, 255};

    int width = 0;
    int height = 0;
    std::vector<Rgba> pixels;

    /// One colour all over. Nothing when it would be empty or larger than any screen.
    static std::optional<Bitmap> make(int width, int height, Rgba fill = background);

    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width)
               + static_cast<std::size_t>(x);
    }
    Rgba at(int x, int y) const { return pixels[index(x, y)]; }
    Rgba& at(int x, int y) { return pixels[index(x, y)]; }
    /// Ignores what lies outside.
    void set(int x, int y, Rgba color);

    bool operator==(const Bitmap&) const = default;
};

static_assert(sizeof(Rgba) == 4);

} // namespace vantroque

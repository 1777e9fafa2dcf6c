#pragma once

#include "Records/ColorMatrix.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vantroque {

/// One picture in planar 4:4:4 with 8-bit samples, in raster order.
struct ScopeFrame {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> y;
    std::vector<std::uint8_t> cb;
    std::vector<std::uint8_t> cr;
    bool fullRange = false;
    ColorMatrix matrix = ColorMatrix::bt709;

    /// The planes Y, Cb and Cr, one after the other. Nothing when the picture is empty or the data
    /// too short for it.
    static std::optional<ScopeFrame> fromYuv444(std::string_view data, int width, int height,
                                                bool fullRange, ColorMatrix matrix);

    /// No wider than so many columns; one whose planes are too short stays as it is. Real samples,
    /// none blended: a scope must not show levels that the picture does not have.
    ScopeFrame thinned(int columns) const;

    bool operator==(const ScopeFrame&) const = default;
};

} // namespace vantroque

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vantroque {

/// The shape of the small pictures in which flashes are looked for: planar 4:2:0 of 10 bits in
/// video range. A cell is a square of four samples of luma with its one sample of colour.
struct FlashPicture {
    int width = 320; ///< Samples of luma; both even.
    int height = 180;

    /// As many samples as 320 by 180 have, in another shape; 16:9 for what is no shape.
    static FlashPicture ofAspect(double widthByHeight);

    int columns() const { return width / 2; }
    int rows() const { return height / 2; }
    std::size_t cells() const
    {
        return static_cast<std::size_t>(columns()) * static_cast<std::size_t>(rows());
    }
    std::size_t samples() const { return cells() * 6; }

    bool operator==(const FlashPicture&) const = default;
};

/// The samples of one picture, all of luma first.
using FlashSamples = std::span<const std::uint16_t>;

} // namespace vantroque

#pragma once

#include <cstddef>
#include <cstdint>

namespace vantroque {

/// How a bi-planar picture in 4:2:0 lies in a slot: rows of luma, then rows of chroma, each row
/// beginning on a cache line.
struct PictureLayout {
    int width = 0;
    int height = 0;
    int sampleBits = 8; ///< 8, or 10 in the upper bits of words of 16.

    static constexpr int largestSide = 16384;

    constexpr bool isPossible() const
    {
        return width > 0 && height > 0 && width <= largestSide && height <= largestSide
               && (sampleBits == 8 || sampleBits == 10);
    }
    constexpr std::size_t sampleBytes() const { return sampleBits > 8 ? 2 : 1; }
    constexpr int chromaWidth() const { return (width + 1) / 2; } ///< In pairs of Cb and Cr.
    constexpr int chromaHeight() const { return (height + 1) / 2; }
    /// Bytes from row to row, of either plane.
    constexpr std::size_t stride() const
    {
        constexpr std::size_t line = 64;
        const std::size_t bytes = 2 * static_cast<std::size_t>(chromaWidth()) * sampleBytes();
        return (bytes + line - 1) / line * line;
    }
    constexpr std::size_t lumaBytes() const { return stride() * static_cast<std::size_t>(height); }
    constexpr std::size_t bytes() const
    {
        return lumaBytes() + stride() * static_cast<std::size_t>(chromaHeight());
    }

    bool operator==(const PictureLayout&) const = default;
};

} // namespace vantroque

#pragma once

#include <cstddef>
#include <cstdint>

namespace vantroque {

/// The planes of a picture in 4:2:0 as decoders hand it over: luma, then Cb and Cr by turns at half
/// of each side, rounded up. The pixels are the file's own, neither turned nor stretched. A view:
/// whoever makes it says how long the planes stay.
struct BiPlanarPicture {
    int width = 0;
    int height = 0;
    /// 8, or 10 in the upper bits of words of 16, little-endian and aligned.
    int sampleBits = 8;
    const std::uint8_t* luma = nullptr;
    std::ptrdiff_t lumaStride = 0; ///< Bytes from row to row.
    const std::uint8_t* chroma = nullptr;
    std::ptrdiff_t chromaStride = 0;
};

} // namespace vantroque

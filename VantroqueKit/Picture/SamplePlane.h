#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vantroque {

/// Samples of one kind, in words of 16 bits whatever their depth: codes stand in the upper bits, so
/// that what scaling computes between two codes has a place.
struct SamplePlane {
    int width = 0;
    int height = 0;
    std::vector<std::uint16_t> samples; ///< Row by row.

    SamplePlane() = default;
    SamplePlane(int w, int h)
        : width(w), height(h), samples(static_cast<std::size_t>(w) * static_cast<std::size_t>(h))
    {
    }

    std::uint16_t* row(int y) { return samples.data() + offset(y); }
    const std::uint16_t* row(int y) const { return samples.data() + offset(y); }

private:
    std::ptrdiff_t offset(int y) const { return std::ptrdiff_t{width} * y; }
};

/// Where a picture comes to lie along one side of another: both lengths and the place are in
/// samples, and a sample may be only half a one where chroma has an odd side.
struct ScaledSide {
    double sourceLength = 0;
    double start = 0; ///< Of the place.
    double length = 0;
    int samples = 0; ///< Of the result, from 0 on.
};

/// The plane laid into the place that both sides give; `outside` all around. Every sample has its
/// part in a smaller result, and flat areas keep their value.
SamplePlane scaled(const SamplePlane& source, const ScaledSide& across, const ScaledSide& down,
                   std::uint16_t outside);

} // namespace vantroque

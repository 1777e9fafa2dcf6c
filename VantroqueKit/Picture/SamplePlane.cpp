#include "Picture/SamplePlane.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

/// So that a whole of words of 16 bits fits into 31.
constexpr int weightBits = 14;

/// What one sample of the result is made of.
struct Taps {
    int first = 0;
    std::vector<std::int32_t> weights; ///< They add up to a whole; none outside the place.
};

/// A triangle over the nearest samples, as wide as the distance of two results where these are
/// fewer.
Taps taps(double centre, double reach, int available)
{
    const double most = available - 1; // A clamped double fits into an int.
    const auto first = static_cast<int>(std::clamp(std::ceil(centre - reach), 0.0, most));
    const auto last =
        static_cast<int>(std::clamp(std::floor(centre + reach), static_cast<double>(first), most));
    std::vector<double> heights;
    double sum = 0;
    for (int i = first; i <= last; ++i) {
        heights.push_back(std::max(1 - std::abs(i - centre) / reach, 1e-6));
        sum += heights.back();
    }
    Taps made{.first = first, .weights = {}};
    std::int32_t left = 1 << weightBits;
    for (const double height : heights) {
        made.weights.push_back(
            static_cast<std::int32_t>(std::floor(height / sum * (1 << weightBits))));
        left -= made.weights.back();
    }
    *std::ranges::max_element(made.weights) += left;
    return made;
}

std::vector<Taps> tapsOf(const ScaledSide& side, int available)
{
    std::vector<Taps> all(static_cast<std::size_t>(side.samples));
    const double ratio = side.sourceLength / side.length;
    if (!(ratio > 0) || !std::isfinite(ratio))
        return all;
    for (int i = 0; i < side.samples; ++i) {
        const double within = i + 0.5 - side.start;
        if (within >= 0 && within < side.length)
            all[static_cast<std::size_t>(i)] =
                taps(within * ratio - 0.5, std::max(ratio, 1.0), available);
    }
    return all;
}

/// Of a word's weighted sum.
std::uint16_t word(std::int32_t sum)
{
    constexpr std::int32_t half = 1 << (weightBits - 1);
    return static_cast<std::uint16_t>((sum + half) >> weightBits);
}

SamplePlane scaledAcross(const SamplePlane& source, const std::vector<Taps>& columns,
                         std::uint16_t outside)
{
    SamplePlane result(static_cast<int>(columns.size()), source.height);
    for (int y = 0; y < source.height; ++y) {
        const std::uint16_t* from = source.row(y);
        std::uint16_t* to = result.row(y);
        for (const Taps& column : columns) {
            std::int32_t sum = 0;
            for (std::size_t i = 0; i < column.weights.size(); ++i)
                sum += column.weights[i] * from[column.first + std::ptrdiff_t(i)];
            *to++ = column.weights.empty() ? outside : word(sum);
        }
    }
    return result;
}

SamplePlane scaledDown(const SamplePlane& source, const std::vector<Taps>& rows,
                       std::uint16_t outside)
{
    SamplePlane result(source.width, static_cast<int>(rows.size()));
    std::vector<std::int32_t> sums(static_cast<std::size_t>(source.width));
    for (int y = 0; y < result.height; ++y) {
        const Taps& taps = rows[static_cast<std::size_t>(y)];
        std::uint16_t* to = result.row(y);
        if (taps.weights.empty()) {
            std::fill_n(to, result.width, outside);
            continue;
        }
        std::ranges::fill(sums, 0);
        for (std::size_t i = 0; i < taps.weights.size(); ++i) {
            const std::uint16_t* from = source.row(taps.first + static_cast<int>(i));
            for (std::size_t x = 0; x < sums.size(); ++x)
                sums[x] += taps.weights[i] * from[x];
        }
        std::ranges::transform(sums, to, word);
    }
    return result;
}

} // namespace

SamplePlane scaled(const SamplePlane& source, const ScaledSide& across, const ScaledSide& down,
                   std::uint16_t outside)
{
    return scaledDown(scaledAcross(source, tapsOf(across, source.width), outside),
                      tapsOf(down, source.height), outside);
}

} // namespace vantroque

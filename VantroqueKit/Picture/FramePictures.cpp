#include "Picture/Canvas.h"
#include "Picture/ScopeRenderer.h"
#include "Records/EbuR103.h"
#include "Records/PercentScale.h"

#include <algorithm>

namespace vantroque::ScopeRenderer {

namespace {

constexpr Rgba transparent{0, 0, 0, 0};
constexpr Rgba rejected{248, 113, 113, 200};
constexpr Rgba notPreferred{252, 211, 77, 200};

/// Of the luma, red, green and blue of a pixel the one furthest out decides.
Rgba mark(const PercentLevels& levels)
{
    const auto [low, high] = std::minmax({levels.luma, levels.red, levels.green, levels.blue});
    if (low < EbuR103::rejectLow || high > EbuR103::rejectHigh)
        return rejected;
    if (low < EbuR103::strictLow || high > EbuR103::strictHigh)
        return notPreferred;
    return transparent;
}

/// Branchless, so that the loop over all pixels runs in vectors. Negative values only round towards
/// zero or stay below it, and are cut.
std::uint8_t byte(float percent)
{
    const float value = percent * 2.55F;
    const int whole = static_cast<int>(value);
    const int rounded = whole + static_cast<int>(value - static_cast<float>(whole) >= 0.5F);
    return static_cast<std::uint8_t>(std::clamp(rounded, 0, 255));
}

} // namespace

std::optional<Bitmap> outOfRangeImage(const ScopeFrame& frame)
{
    auto bitmap = canvas(frame, frame.width, frame.height, transparent);
    if (!bitmap)
        return std::nullopt;
    const PercentScale scale(frame.matrix, frame.fullRange);
    std::size_t i = 0;
    for (int y = 0; y < frame.height; ++y)
        for (int x = 0; x < frame.width; ++x, ++i)
            if ((x + y) / 3 % 2 == 0)
                bitmap->pixels[i] = mark(scale.levels(frame.y[i], frame.cb[i], frame.cr[i]));
    return bitmap;
}

std::optional<Bitmap> picture(const ScopeFrame& frame)
{
    auto bitmap = canvas(frame, frame.width, frame.height);
    if (!bitmap)
        return std::nullopt;
    const PercentScale scale(frame.matrix, frame.fullRange);
    // Plain pointers: stores of bytes could change a vector's, for all that the compiler knows.
    const auto* y = frame.y.data();
    const auto* cb = frame.cb.data();
    const auto* cr = frame.cr.data();
    const std::size_t pixels = bitmap->pixels.size();
    Rgba* out = bitmap->pixels.data();
    for (std::size_t i = 0; i < pixels; ++i) {
        const PercentLevels levels = scale.levels(y[i], cb[i], cr[i]);
        out[i] = {byte(levels.red), byte(levels.green), byte(levels.blue), 255};
    }
    return bitmap;
}

} // namespace vantroque::ScopeRenderer

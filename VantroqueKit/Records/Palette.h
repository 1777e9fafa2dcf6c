#pragma once

#include <cstdint>

namespace vantroque {

/// A colour in sRGB, 8 bits each; alpha is straight, not premultiplied.
struct Rgba {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    std::uint8_t a = 255;
    bool operator==(const Rgba&) const = default;

    /// 0xAARRGGBB
    constexpr std::uint32_t argb() const
    {
        return (std::uint32_t{a} << 24) | (std::uint32_t{r} << 16) | (std::uint32_t{g} << 8) | b;
    }
};

/// The colours that mean the same wherever they are seen: in the window, on a picture, on paper and
/// in an editing system's timeline. Each place converts them into its own notation.
namespace Palette {

constexpr Rgba white{255, 255, 255};
constexpr Rgba black{0, 0, 0};

// Verdicts on dark ground, and the colours of markers.
constexpr Rgba green{74, 222, 128};
constexpr Rgba amber{252, 211, 77};
constexpr Rgba red{248, 113, 113};
constexpr Rgba cyan{108, 199, 240};

// Verdicts on paper.
constexpr Rgba paperGreen{26, 122, 51};
constexpr Rgba paperAmber{153, 102, 0};
constexpr Rgba paperRed{199, 26, 26};

/// The operator's pen, beside amber and white.
constexpr Rgba inkRed{240, 41, 41};

// Guides whose words say that something is amiss, or fine.
constexpr Rgba guideAlert{255, 89, 89};
constexpr Rgba guideOk{89, 217, 115};

} // namespace Palette

} // namespace vantroque

#pragma once

#include "Picture/ScopeRenderer.h"
#include "Records/Palette.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

namespace vantroque {

inline void PrintTo(Rgba color, std::ostream* out)
{
    *out << '(' << int{color.r} << ", " << int{color.g} << ", " << int{color.b} << ", "
         << int{color.a} << ')';
}

namespace ScopeRenderer {

/// Pixels as they are stored: straight alpha.
inline Rgba at(const QImage& image, int x, int y)
{
    const QRgb pixel = reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    return {byte(qRed(pixel)), byte(qGreen(pixel)), byte(qBlue(pixel)), byte(qAlpha(pixel))};
}

/// In raster order.
inline std::vector<Rgba> pixels(const QImage& image)
{
    std::vector<Rgba> all;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            all.push_back(at(image, x, y));
    return all;
}

/// The colours of the graticules.
constexpr Rgba background{28, 30, 35, 255};
constexpr Rgba green{74, 222, 128, 255};
constexpr Rgba amber{252, 211, 77, 255};
constexpr Rgba grey{70, 74, 82, 255};
constexpr Rgba full{255, 255, 255, 255};

/// The codes of one pixel.
struct Codes {
    int y = 126;
    int cb = 128;
    int cr = 128;
};

/// A frame of one colour.
inline ScopeFrame frameOf(Codes codes, int width, int height, bool fullRange = false,
                          ColorMatrix matrix = ColorMatrix::bt709)
{
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const auto plane = [&](int code) {
        return std::vector<std::uint8_t>(pixels, static_cast<std::uint8_t>(code));
    };
    return {width, height, plane(codes.y), plane(codes.cb), plane(codes.cr), fullRange, matrix};
}

/// A frame in black, its first `count` pixels of another colour.
inline ScopeFrame blackBut(std::size_t count, Codes codes, int width, int height)
{
    ScopeFrame frame = frameOf({16, 128, 128}, width, height);
    for (std::size_t i = 0; i < count; ++i) {
        frame.y[i] = static_cast<std::uint8_t>(codes.y);
        frame.cb[i] = static_cast<std::uint8_t>(codes.cb);
        frame.cr[i] = static_cast<std::uint8_t>(codes.cr);
    }
    return frame;
}

} // namespace ScopeRenderer

} // namespace vantroque

#pragma once

#include "Picture/ComparedFrame.h"

#include <QRgb>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

namespace vantroque {

struct YCbCr {
    int y = 0;
    int cb = 0;
    int cr = 0;
};

/// A picture of its own planes, in codes of its depth; rows have bytes of noise after them.
class PlanarPicture {
public:
    PlanarPicture(int width, int height, int bits)
        : m_width(width),
          m_height(height),
          m_bits(bits),
          m_stride(2 * ((width + 1) / 2) * bytes() + 6)
    {
        std::mt19937 chance(7);
        for (auto* plane : {&m_luma, &m_chroma}) {
            plane->resize(static_cast<std::size_t>(m_stride)
                          * static_cast<std::size_t>(height + 1));
            std::ranges::generate(*plane, [&] { return static_cast<std::uint8_t>(chance()); });
        }
        fill([](int, int) { return YCbCr{}; });
    }

    /// The chroma of a pixel is that of the upper left one of its four.
    void fill(const std::function<YCbCr(int x, int y)>& color)
    {
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x) {
                const YCbCr one = color(x, y);
                setLuma(x, y, one.y);
                if (x % 2 == 0 && y % 2 == 0) {
                    setChroma(x, y, 0, one.cb);
                    setChroma(x, y, 1, one.cr);
                }
            }
    }
    void fillAtRandom(unsigned seed)
    {
        std::mt19937 chance(seed);
        std::uniform_int_distribution<int> code(0, (1 << m_bits) - 1);
        fill([&](int, int) { return YCbCr{code(chance), code(chance), code(chance)}; });
    }

    int luma(int x, int y) const { return get(m_luma, x, y); }
    /// `which` is 0 for Cb and 1 for Cr.
    int chroma(int x, int y, int which) const { return get(m_chroma, x / 2 * 2 + which, y / 2); }
    void setLuma(int x, int y, int code) { put(m_luma, x, y, code); }
    void setChroma(int x, int y, int which, int code)
    {
        put(m_chroma, x / 2 * 2 + which, y / 2, code);
    }

    /// Sets what a word of ten bits has below its code.
    void setUnusedBits()
    {
        for (auto* plane : {&m_luma, &m_chroma})
            for (std::size_t i = 0; i < plane->size(); i += 2)
                (*plane)[i] |= 0x3F;
    }

    ComparedFrame frame(ColorMatrix matrix = ColorMatrix::bt709, bool fullRange = false,
                        Orientation orientation = {}) const
    {
        return {.picture = {.width = m_width,
                            .height = m_height,
                            .sampleBits = m_bits,
                            .luma = m_luma.data(),
                            .lumaStride = m_stride,
                            .chroma = m_chroma.data(),
                            .chromaStride = m_stride},
                .matrix = matrix,
                .fullRange = fullRange,
                .orientation = orientation};
    }

private:
    int bytes() const { return m_bits == 10 ? 2 : 1; }
    std::size_t at(int x, int y) const
    {
        return static_cast<std::size_t>(m_stride * y + x * bytes());
    }
    int get(const std::vector<std::uint8_t>& plane, int x, int y) const
    {
        const std::size_t i = at(x, y);
        return m_bits == 10 ? (plane[i] + 256 * plane[i + 1]) >> 6 : plane[i];
    }
    void put(std::vector<std::uint8_t>& plane, int x, int y, int code) const
    {
        const std::size_t i = at(x, y);
        const int word = m_bits == 10 ? code << 6 : code;
        plane[i] = static_cast<std::uint8_t>(word);
        if (m_bits == 10)
            plane[i + 1] = static_cast<std::uint8_t>(word >> 8);
    }

    int m_width;
    int m_height;
    int m_bits;
    std::ptrdiff_t m_stride;
    std::vector<std::uint8_t> m_luma;
    std::vector<std::uint8_t> m_chroma;
};

} // namespace vantroque

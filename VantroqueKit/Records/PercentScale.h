#pragma once

#include "Records/ColorMatrix.h"

#include <cstdint>

namespace vantroque {

/// A pixel in percent of the nominal range: 0 is black, 100 is white.
struct PercentLevels {
    float luma = 0;
    float red = 0;
    float green = 0;
    float blue = 0;
};

/// From YCbCr to RGB, per unit of chroma.
struct ChromaWeights {
    float crToR;
    float cbToG;
    float crToG;
    float cbToB;

    static ChromaWeights of(ColorMatrix matrix)
    {
        switch (matrix) {
        case ColorMatrix::bt601: return {1.402F, 0.3441F, 0.7141F, 1.772F};
        case ColorMatrix::bt2020: return {1.4746F, 0.16455F, 0.57135F, 1.8814F};
        case ColorMatrix::bt709: break;
        }
        return {1.5748F, 0.1873F, 0.4681F, 1.8556F};
    }
};

/// From 8-bit codes to percent, in single precision, so that the loops over all pixels run in
/// vectors.
class PercentScale {
public:
    PercentScale(ColorMatrix matrix, bool fullRange)
        : m_matrix(ChromaWeights::of(matrix)),
          m_black(fullRange ? 0.0F : 16.0F),
          m_luma(fullRange ? 100.0F / 255.0F : 100.0F / 219.0F),
          m_chroma(fullRange ? 100.0F / 255.0F : 100.0F / 224.0F)
    {
    }

    float luma(std::uint8_t y) const { return m_luma * (static_cast<float>(y) - m_black); }

    PercentLevels levels(std::uint8_t y, std::uint8_t cb, std::uint8_t cr) const
    {
        const float yp = luma(y);
        const float cbp = chroma(cb);
        const float crp = chroma(cr);
        return {yp, yp + m_matrix.crToR * crp, yp - m_matrix.cbToG * cbp - m_matrix.crToG * crp,
                yp + m_matrix.cbToB * cbp};
    }

private:
    float chroma(std::uint8_t code) const { return m_chroma * (static_cast<float>(code) - 128.0F); }

    ChromaWeights m_matrix;
    float m_black;
    float m_luma;
    float m_chroma;
};

} // namespace vantroque

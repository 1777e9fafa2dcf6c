#pragma once

#include "Flashes/FlashPicture.h"
#include "Records/ColorMatrix.h"
#include "Records/FlashInfo.h"

#include <array>
#include <vector>

namespace vantroque {

/// The light that each cell of a picture gives off a screen, in cd/m2. The primaries are scaled so
/// that all three at some value make white of that value.
struct CellLight {
    std::vector<float> luminance;
    std::vector<float> red;
    std::vector<float> green;
    std::vector<float> blue;
};

/// From codes to light. Light is averaged, never codes: half white and half black is half the light
/// of white.
class ScreenLight {
public:
    ScreenLight(const FlashPicture& picture, FlashLight curve, ColorMatrix matrix);

    static double peakOf(FlashLight curve);
    /// What a screen makes of a grey of that 10-bit code.
    double ofGrey(int code) const;
    /// The cells of a picture, valid until the next one.
    const CellLight& of(FlashSamples samples);

private:
    void addRow(FlashSamples samples, std::size_t row);
    /// What the whole picture's system adds to the light of single primaries.
    float gain(float luminance) const;

    FlashPicture m_picture;
    FlashLight m_curve;
    ColorMatrix m_matrix;
    std::array<float, 1024> m_light{}; ///< Of one primary by its 10-bit code in video range.
    std::array<float, 1025> m_gain{};  ///< Of HLG, by the luminance of the scene.
    CellLight m_cells;
};

/// The weights of the primaries in luminance.
struct LuminanceWeights {
    float red;
    float green;
    float blue;

    static LuminanceWeights of(ColorMatrix matrix);
};

} // namespace vantroque

#include "Flashes/ScreenLight.h"

#include "Records/PercentScale.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr double black = 64; // of 10 bits in video range
constexpr double range = 876;
constexpr float colourless = 512;
/// From a step of a colour code to one of luma.
constexpr float colourScale = 876.0F / 896.0F;

double bt1886(double level)
{
    return 200 * std::pow(std::max(level, 0.0), 2.4);
}

/// The curve of older tests, which has gamma 2.2 and some light at black.
double legacy(double level)
{
    const double code = std::clamp(level, 0.0, 1.0) * 255;
    return 413.435 * std::pow(0.002745 * code + 0.0189623, 2.2);
}

/// SMPTE ST 2084.
double pq(double level)
{
    constexpr double m1 = 2610.0 / 16384;
    constexpr double m2 = 2523.0 / 4096 * 128;
    constexpr double c1 = 3424.0 / 4096;
    constexpr double c2 = 2413.0 / 4096 * 32;
    constexpr double c3 = 2392.0 / 4096 * 32;
    const double power = std::pow(std::clamp(level, 0.0, 1.0), 1 / m2);
    return 10'000 * std::pow(std::max(power - c1, 0.0) / (c2 - c3 * power), 1 / m1);
}

/// ARIB STD-B67: light of the scene, 1 at white.
double hlgScene(double level)
{
    constexpr double a = 0.17883277;
    constexpr double b = 0.28466892;
    constexpr double c = 0.55991073;
    const double signal = std::clamp(level, 0.0, 1.0);
    return signal <= 0.5 ? signal * signal / 3 : (std::exp((signal - c) / a) + b) / 12;
}

double lightOf(FlashLight curve, double level)
{
    switch (curve) {
    case FlashLight::legacy: return legacy(level);
    case FlashLight::hlg: return hlgScene(level);
    case FlashLight::pq: return pq(level);
    case FlashLight::bt1886: break;
    }
    return bt1886(level);
}

} // namespace

LuminanceWeights LuminanceWeights::of(ColorMatrix matrix)
{
    // What is coded by BT.601 has primaries near those of BT.709; its weights of luma are of older
    // ones.
    if (matrix == ColorMatrix::bt2020)
        return {0.2627F, 0.6780F, 0.0593F};
    return {0.2126F, 0.7152F, 0.0722F};
}

double ScreenLight::peakOf(FlashLight curve)
{
    switch (curve) {
    case FlashLight::hlg: return 1000;
    case FlashLight::pq: return 10'000;
    case FlashLight::bt1886:
    case FlashLight::legacy: break;
    }
    return 200;
}

ScreenLight::ScreenLight(const FlashPicture& picture, FlashLight curve, ColorMatrix matrix)
    : m_picture(picture), m_curve(curve), m_matrix(matrix)
{
    for (std::size_t code = 0; code < m_light.size(); ++code)
        m_light[code] =
            static_cast<float>(lightOf(curve, (static_cast<double>(code) - black) / range));
    // The system gamma of HLG on a screen of 1,000 cd/m2 is 1.2.
    for (std::size_t i = 0; i < m_gain.size(); ++i)
        m_gain[i] = static_cast<float>(
            peakOf(FlashLight::hlg)
            * std::pow(static_cast<double>(i) / static_cast<double>(m_gain.size() - 1), 0.2));
    for (auto* plane : {&m_cells.luminance, &m_cells.red, &m_cells.green, &m_cells.blue})
        plane->resize(picture.cells());
}

float ScreenLight::gain(float luminance) const
{
    const float place = std::clamp(luminance, 0.0F, 1.0F) * static_cast<float>(m_gain.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, m_gain.size() - 1);
    const float part = place - static_cast<float>(below);
    return m_gain[below] * (1 - part) + m_gain[above] * part;
}

double ScreenLight::ofGrey(int code) const
{
    const float light = m_light[static_cast<std::size_t>(std::clamp(code, 0, 1023))];
    return m_curve == FlashLight::hlg ? light * gain(light) : light;
}

const CellLight& ScreenLight::of(FlashSamples samples)
{
    for (int row = 0; row < m_picture.rows(); ++row)
        addRow(samples, static_cast<std::size_t>(row));
    return m_cells;
}

void ScreenLight::addRow(FlashSamples samples, std::size_t row)
{
    const auto width = static_cast<std::size_t>(m_picture.width);
    const auto columns = static_cast<std::size_t>(m_picture.columns());
    const std::uint16_t* luma = samples.data() + row * 2 * width;
    const std::uint16_t* cb = samples.data() + m_picture.cells() * 4 + row * columns;
    const std::uint16_t* cr = cb + m_picture.cells();
    const ChromaWeights chroma = ChromaWeights::of(m_matrix);
    const LuminanceWeights weights = LuminanceWeights::of(m_matrix);
    const bool isHlg = m_curve == FlashLight::hlg;
    const auto light = [this](int code) {
        return m_light[static_cast<std::size_t>(std::clamp(code, 0, 1023))];
    };
    // Rounded; a call of the library for it would take a tenth of all the time.
    const auto codes = [](float step) { return static_cast<int>(step + 2048.5F) - 2048; };
    for (std::size_t column = 0; column < columns; ++column) {
        const float blueness = (static_cast<float>(cb[column]) - colourless) * colourScale;
        const float redness = (static_cast<float>(cr[column]) - colourless) * colourScale;
        const int toRed = codes(chroma.crToR * redness);
        const int toGreen = codes(-chroma.cbToG * blueness - chroma.crToG * redness);
        const int toBlue = codes(chroma.cbToB * blueness);
        float red = 0;
        float green = 0;
        float blue = 0;
        for (const std::size_t at :
             {column * 2, column * 2 + 1, column * 2 + width, column * 2 + 1 + width}) {
            const int code = luma[at];
            float r = light(code + toRed);
            float g = light(code + toGreen);
            float b = light(code + toBlue);
            if (isHlg) {
                const float system = gain(weights.red * r + weights.green * g + weights.blue * b);
                r *= system;
                g *= system;
                b *= system;
            }
            red += r;
            green += g;
            blue += b;
        }
        const std::size_t cell = row * columns + column;
        m_cells.red[cell] = red / 4;
        m_cells.green[cell] = green / 4;
        m_cells.blue[cell] = blue / 4;
        m_cells.luminance[cell] =
            (weights.red * red + weights.green * green + weights.blue * blue) / 4;
    }
}

} // namespace vantroque

#include "Picture/Canvas.h"
#include "Picture/ScopeRenderer.h"
#include "Picture/Trace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace vantroque::ScopeRenderer {

namespace {

/// Chroma of half the nominal range stands at 42 % of the square, on the circle.
constexpr float radius = 0.42F;
constexpr float diameter = 0.84F;

/// The luma weights of blue and red.
struct Weights {
    float kb;
    float kr;
};

Weights weights(ColorMatrix matrix)
{
    switch (matrix) {
    case ColorMatrix::bt601: return {0.114F, 0.299F};
    case ColorMatrix::bt2020: return {0.0593F, 0.2627F};
    case ColorMatrix::bt709: break;
    }
    return {0.0722F, 0.2126F};
}

/// How far from the centre chroma of -0.5 to 0.5 stands.
int offset(float chroma, int size)
{
    return static_cast<int>(chroma * static_cast<float>(size) * diameter);
}

void drawAxes(QImage& image, int centre)
{
    for (int x = 0; x < image.width(); ++x)
        if (isDash(x))
            set(image, x, centre, gridColor);
    for (int y = 0; y < image.height(); ++y)
        set(image, centre, y, gridColor);
}

void drawCircle(QImage& image, int centre)
{
    const float r = radius * static_cast<float>(image.width());
    for (int degree = 0; degree < 360; ++degree) {
        const float angle = static_cast<float>(degree) * std::numbers::pi_v<float> / 180.0F;
        set(image, centre + static_cast<int>(r * std::cos(angle)),
            centre - static_cast<int>(r * std::sin(angle)), gridColor);
    }
}

void drawCross(QImage& image, int x, int y)
{
    constexpr int arm = 5;
    for (int i = -arm; i <= arm; ++i) {
        set(image, x + i, y, Palette::amber);
        set(image, x, y + i, Palette::amber);
    }
}

void drawTargets(QImage& image, int centre, ColorMatrix matrix)
{
    struct Color {
        float r;
        float g;
        float b;
    };
    constexpr std::array<Color, 6> bars{{{0.75F, 0, 0},
                                         {0, 0.75F, 0},
                                         {0, 0, 0.75F},
                                         {0.75F, 0.75F, 0},
                                         {0, 0.75F, 0.75F},
                                         {0.75F, 0, 0.75F}}};
    const auto [kb, kr] = weights(matrix);
    for (const auto [r, g, b] : bars) {
        const float y = r * kr + g * (1 - kr - kb) + b * kb;
        drawCross(image, centre + offset((b - y) / (2 * (1 - kb)), image.width()),
                  centre - offset((r - y) / (2 * (1 - kr)), image.width()));
    }
}

/// For each chroma code how far from the centre it stands.
std::array<int, 256> chromaOffsets(const ScopeFrame& frame, int size)
{
    const float scale = 1.0F / (frame.fullRange ? 255.0F : 224.0F);
    std::array<int, 256> offsets{};
    for (std::size_t code = 0; code < offsets.size(); ++code)
        offsets[code] = offset(scale * (static_cast<float>(code) - 128.0F), size);
    return offsets;
}

int strength(std::size_t pixels)
{
    const std::size_t per = std::max<std::size_t>(pixels / 64, 1);
    return static_cast<int>(std::max<std::size_t>(10200 / per, 6));
}

} // namespace

QImage vectorscope(const ScopeFrame& frame, int size)
{
    QImage image = canvas(frame, size, size);
    if (image.isNull())
        return {};
    const int centre = size / 2;
    drawAxes(image, centre);
    drawCircle(image, centre);
    drawTargets(image, centre, frame.matrix);

    Trace trace(size, size);
    const auto offsets = chromaOffsets(frame, size);
    const auto pixels =
        static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
    for (std::size_t i = 0; i < pixels; ++i)
        trace.add(centre + offsets[frame.cb[i]], centre - offsets[frame.cr[i]]);
    trace.paint(image, 0, strength(pixels), traceColor);
    return image;
}

} // namespace vantroque::ScopeRenderer

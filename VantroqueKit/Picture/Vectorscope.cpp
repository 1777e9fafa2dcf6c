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

/// Chroma, each from -0.5 to 0.5.
struct Chroma {
    float cb;
    float cr;
};

struct Bar {
    const char* letters;
    float r;
    float g;
    float b;
};
constexpr std::array<Bar, 6> bars{{{"R", 0.75F, 0, 0},
                                   {"G", 0, 0.75F, 0},
                                   {"B", 0, 0, 0.75F},
                                   {"Yl", 0.75F, 0.75F, 0},
                                   {"Cy", 0, 0.75F, 0.75F},
                                   {"Mg", 0.75F, 0, 0.75F}}};

Chroma chromaOf(const Bar& bar, ColorMatrix matrix)
{
    const auto [kb, kr] = weights(matrix);
    const float y = bar.r * kr + bar.g * (1 - kr - kb) + bar.b * kb;
    return {(bar.b - y) / (2 * (1 - kb)), (bar.r - y) / (2 * (1 - kr))};
}

void drawGraticule(QImage& image, ColorMatrix matrix)
{
    const int centre = image.width() / 2;
    drawAxes(image, centre);
    drawCircle(image, centre);
    for (const Bar& bar : bars) {
        const auto [cb, cr] = chromaOf(bar, matrix);
        drawCross(image, centre + offset(cb, image.width()), centre - offset(cr, image.width()));
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

QImage emptyVectorscope(int size, ColorMatrix matrix)
{
    QImage image = emptyCanvas(size, size);
    drawGraticule(image, matrix);
    return image;
}

std::vector<Target> targets(ColorMatrix matrix)
{
    std::vector<Target> all;
    for (const Bar& bar : bars) {
        const auto [cb, cr] = chromaOf(bar, matrix);
        all.push_back(
            {QString::fromLatin1(bar.letters), QPointF(0.5 + cb * diameter, 0.5 - cr * diameter)});
    }
    return all;
}

QImage vectorscope(const ScopeFrame& frame, int size)
{
    QImage image = canvas(frame, size, size);
    if (image.isNull())
        return {};
    drawGraticule(image, frame.matrix);

    const int centre = size / 2;
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

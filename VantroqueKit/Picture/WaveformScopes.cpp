#include "Picture/Canvas.h"
#include "Picture/ScopeRenderer.h"
#include "Picture/Trace.h"
#include "Records/EbuR103.h"
#include "Records/PercentScale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vantroque::ScopeRenderer {

namespace {

constexpr Rgba red{248, 113, 113, 255};
constexpr Rgba green{74, 222, 128, 255};
constexpr Rgba blue{96, 165, 250, 255};

enum class Line { solid, dashed };

void drawLevel(QImage& image, float level, Line line, Rgba color)
{
    const int y = row(level, image.height());
    for (int x = 0; x < image.width(); ++x)
        if (line == Line::solid || isDash(x))
            set(image, x, y, color);
}

/// Black and white, the tolerance of EBU R 103, and a grid between.
void drawGraticule(QImage& image)
{
    for (const float level : {0.0F, 100.0F})
        drawLevel(image, level, Line::solid, green);
    for (const float level : {EbuR103::rejectLow, EbuR103::rejectHigh})
        drawLevel(image, level, Line::dashed, Palette::amber);
    for (const float level : {20.0F, 40.0F, 60.0F, 80.0F})
        drawLevel(image, level, Line::dashed, gridColor);
}

void drawColumn(QImage& image, int x)
{
    for (int y = 0; y < image.height(); ++y)
        set(image, x, y, gridColor);
}

/// With edges between the three colours.
void drawParadeGraticule(QImage& image)
{
    drawGraticule(image);
    const int third = image.width() / 3;
    drawColumn(image, third);
    drawColumn(image, 2 * third);
}

/// A small frame has few samples in a column, and each must count for more to be seen.
int strength(const ScopeFrame& frame)
{
    constexpr int tallFrame = 383;
    return frame.height < tallFrame ? 3060 / frame.height : 8;
}

/// For each column of the frame the one of a graph that is `width` wide.
std::vector<int> columns(const ScopeFrame& frame, int width)
{
    std::vector<int> columns(static_cast<std::size_t>(frame.width));
    for (int x = 0; x < frame.width; ++x)
        columns[static_cast<std::size_t>(x)] =
            static_cast<int>(std::int64_t{x} * width / frame.width);
    return columns;
}

/// For each luma code its row.
std::array<int, 256> lumaRows(const ScopeFrame& frame, int height)
{
    const PercentScale scale(frame.matrix, frame.fullRange);
    std::array<int, 256> rows{};
    for (std::size_t code = 0; code < rows.size(); ++code)
        rows[code] = row(scale.luma(static_cast<std::uint8_t>(code)), height);
    return rows;
}

} // namespace

int row(float level, int height)
{
    constexpr float farOutside = 1 << 24;
    const float position = (110.0F - level) / 120.0F * static_cast<float>(height - 1) + 0.5F;
    return std::isnan(position) ? -1
                                : static_cast<int>(std::clamp(position, -farOutside, farOutside));
}

QImage emptyWaveform(int width, int height)
{
    QImage image = emptyCanvas(width, height);
    drawGraticule(image);
    return image;
}

QImage emptyParade(int width, int height)
{
    QImage image = emptyCanvas(width, height);
    drawParadeGraticule(image);
    return image;
}

QImage waveform(const ScopeFrame& frame, int width, int height)
{
    QImage image = canvas(frame, width, height);
    if (image.isNull())
        return {};
    drawGraticule(image);
    Trace trace(width, height);
    const auto rows = lumaRows(frame, height);
    const auto xs = columns(frame, width);
    auto y = frame.y.begin();
    for (int line = 0; line < frame.height; ++line)
        for (const int x : xs)
            trace.add(x, rows[*y++]);
    trace.paint(image, 0, strength(frame), traceColor);
    return image;
}

QImage parade(const ScopeFrame& frame, int width, int height)
{
    QImage image = canvas(frame, width, height);
    const int third = width / 3;
    if (image.isNull() || third < 1)
        return {};
    drawParadeGraticule(image);

    const PercentScale scale(frame.matrix, frame.fullRange);
    Trace reds(third, height);
    Trace greens(third, height);
    Trace blues(third, height);
    const auto xs = columns(frame, third);
    std::size_t i = 0;
    for (int line = 0; line < frame.height; ++line)
        for (const int x : xs) {
            const PercentLevels levels = scale.levels(frame.y[i], frame.cb[i], frame.cr[i]);
            reds.add(x, row(levels.red, height));
            greens.add(x, row(levels.green, height));
            blues.add(x, row(levels.blue, height));
            ++i;
        }
    const int k = strength(frame);
    reds.paint(image, 0, k, red);
    greens.paint(image, third, k, green);
    blues.paint(image, 2 * third, k, blue);
    return image;
}

} // namespace vantroque::ScopeRenderer

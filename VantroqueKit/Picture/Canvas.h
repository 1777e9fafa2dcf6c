#pragma once

#include "Records/Palette.h"
#include "Records/ScopeFrame.h"

#include <QImage>

/// What the scopes share.
namespace vantroque::ScopeRenderer {

constexpr Rgba backgroundColor{28, 30, 35};
constexpr Rgba gridColor{70, 74, 82};
/// The trace of a scope whose traces have no colours of their own.
constexpr Rgba traceColor{220, 226, 232};

/// Dashed lines are three pixels on and three off.
constexpr bool isDash(int x)
{
    return x / 3 % 2 == 0;
}

/// An image in one colour to draw `frame` on; alpha is kept where the format has it. Null when the
/// frame has no pixels, when one of its planes does not reach to the last of them, or when the
/// image would be empty or larger than any screen.
QImage canvas(const ScopeFrame& frame, int width, int height,
              QImage::Format format = QImage::Format_RGB32, Rgba fill = backgroundColor);

/// The same without a frame.
QImage emptyCanvas(int width, int height, QImage::Format format = QImage::Format_RGB32,
                   Rgba fill = backgroundColor);

/// Colours one pixel, or none when the place is outside.
void set(QImage& image, int x, int y, Rgba color);

/// The pixels of a row, each as 0xAARRGGBB.
inline QRgb* pixelRow(QImage& image, int y)
{
    return reinterpret_cast<QRgb*>(image.scanLine(y));
}

} // namespace vantroque::ScopeRenderer

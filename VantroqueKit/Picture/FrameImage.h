#pragma once

#include "Records/BiPlanarPicture.h"
#include "Records/ColorMatrix.h"
#include "Records/Orientation.h"

#include <QImage>

/// Pictures for the screen. Any thread.
namespace vantroque::FrameImage {

/// The picture in red, green and blue, at most a code off what `ScopeRenderer::picture` makes of
/// the same samples. Chroma is that of the nearest sample. Null when the picture is empty, larger
/// than an image may be, or without planes.
QImage of(const BiPlanarPicture& picture, ColorMatrix matrix, bool fullRange);

/// The stored picture as it is shown.
QImage oriented(const QImage& image, const Orientation& orientation);

} // namespace vantroque::FrameImage

#pragma once

#include "Picture/Bitmap.h"
#include "Records/ScopeFrame.h"

#include <optional>

/// Video scopes of one frame. Pure. Levels are in percent of the nominal range, so that limited and
/// full-range pictures read the same. An empty image, a frame without pixels and one whose planes
/// are shorter than its size draw nothing.
namespace vantroque::ScopeRenderer {

/// The row of a level in percent on a scale from 110 at the top to -10 at the bottom; outside the
/// image for levels beyond that.
int row(float level, int height);

/// Luma over the picture's width; the more samples of a level, the brighter.
std::optional<Bitmap> waveform(const ScopeFrame& frame, int width, int height);
/// Red, green and blue over the picture's width, side by side.
std::optional<Bitmap> parade(const ScopeFrame& frame, int width, int height);
/// Cb to the right and Cr upwards in a square, with crosses on the six colours of 75 % bars.
std::optional<Bitmap> vectorscope(const ScopeFrame& frame, int size);
/// A hatch of the frame's size over the pixels that EBU R 103 does not prefer, and another over
/// those that it does not tolerate; transparent elsewhere.
std::optional<Bitmap> outOfRangeImage(const ScopeFrame& frame);
/// The frame itself.
std::optional<Bitmap> picture(const ScopeFrame& frame);

} // namespace vantroque::ScopeRenderer

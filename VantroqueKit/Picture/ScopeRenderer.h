#pragma once

#include "Records/ScopeFrame.h"

#include <QByteArray>
#include <QImage>
#include <QPointF>
#include <QString>

#include <vector>

/// Video scopes of one frame. Pure. Levels are in percent of the nominal range, so that limited and
/// full-range pictures read the same. An empty image, a frame without pixels and one whose planes
/// are shorter than its size draw nothing: a null image. What is opaque has the format RGB32, the
/// hatch ARGB32.
namespace vantroque::ScopeRenderer {

/// The row of a level in percent on a scale from 110 at the top to -10 at the bottom; outside the
/// image for levels beyond that.
int row(float level, int height);

/// Luma over the picture's width; the more samples of a level, the brighter.
QImage waveform(const ScopeFrame& frame, int width, int height);
/// Red, green and blue over the picture's width, side by side.
QImage parade(const ScopeFrame& frame, int width, int height);
/// Cb to the right and Cr upwards in a square, with crosses on the six colours of 75 % bars.
QImage vectorscope(const ScopeFrame& frame, int size);

/// The scopes as they stand before there is a frame.
QImage emptyWaveform(int width, int height);
QImage emptyParade(int width, int height);
QImage emptyVectorscope(int size, ColorMatrix matrix);

/// One of the six colours of 75 % bars in a vectorscope.
struct Target {
    QString letters;
    QPointF place; ///< From the top left corner, in fractions of the square.
};
std::vector<Target> targets(ColorMatrix matrix);

/// A hatch of the frame's size over the pixels that EBU R 103 does not prefer, and another over
/// those that it does not tolerate; transparent elsewhere.
QImage outOfRangeImage(const ScopeFrame& frame);
/// The frame itself.
QImage picture(const ScopeFrame& frame);

/// An image as a PNG; empty for a null one.
QByteArray pngData(const QImage& image);

} // namespace vantroque::ScopeRenderer

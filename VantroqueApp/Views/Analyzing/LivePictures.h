#pragma once

#include "Records/ScopeFrame.h"

#include <QImage>

/// What the live instruments show of one frame. Pure, and meant for a worker: at full size a frame
/// takes longer to draw than a window may stand still.
namespace vantroque::LivePictures {

constexpr QSize waveformSize{256, 128};
constexpr QSize paradeSize{384, 128};
constexpr int vectorscopeSize = 128;

/// How the samples of a frame become the picture that a player shows: as with ffmpeg's display
/// matrix, the degrees count against the clock, and only quarter turns are shown.
struct Shape {
    int rotation = 0;
    double pixelAspect = 1; ///< How wide a sample is shown for its height.
    bool operator==(const Shape&) const = default;
};

struct Images {
    QImage picture; ///< As large as its place, with its corners cut and bars where it is smaller.
    QImage waveform;
    QImage vectorscope;
    QImage parade;
};

/// `place` is in device-independent pixels, each of them `ratio` device pixels wide. What cannot be
/// drawn stays null.
Images draw(const ScopeFrame& frame, const Shape& shape, QSize place, double ratio);

} // namespace vantroque::LivePictures

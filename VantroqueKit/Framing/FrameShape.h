#pragma once

#include "Profiles/PlatformZones.h"
#include "Records/MediaInfo.h"
#include "Records/Report.h"

namespace vantroque {

/// The picture as it is shown: turned as its tag says, and its pixels as wide as they are meant.
struct FrameShape {
    int width = 0; ///< Pixels of the turned picture.
    int height = 0;
    double pixelAspect = 1; ///< How wide a pixel is shown for its height.

    static FrameShape of(const VideoStreamInfo& video);
    static FrameShape of(const VideoSummary& video);

    bool isEmpty() const { return width < 1 || height < 1; }
    /// In square pixels, the same number of rows; 1 to 32767.
    int squareWidth() const;
    AspectFamily family() const;
};

} // namespace vantroque

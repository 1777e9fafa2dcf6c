#pragma once

#include "Records/BiPlanarPicture.h"
#include "Records/ColorMatrix.h"
#include "Records/Orientation.h"

namespace vantroque {

/// A decoded frame with all that says how it is meant to be seen. A view, as its picture is.
struct ComparedFrame {
    BiPlanarPicture picture;
    ColorMatrix matrix = ColorMatrix::bt709;
    bool fullRange = false;
    Orientation orientation;

    int shownWidth() const { return orientation.isOnItsSide() ? picture.height : picture.width; }
    int shownHeight() const { return orientation.isOnItsSide() ? picture.width : picture.height; }
    bool isPicture() const
    {
        constexpr int mostPixels = 32767; // of a side, for a painter
        return picture.luma != nullptr && picture.chroma != nullptr && picture.width > 0
               && picture.height > 0 && picture.width <= mostPixels && picture.height <= mostPixels
               && (picture.sampleBits == 8 || picture.sampleBits == 10);
    }
};

} // namespace vantroque

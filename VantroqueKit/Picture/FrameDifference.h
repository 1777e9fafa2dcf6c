#pragma once

#include "Picture/ComparedFrame.h"
#include "Records/NormalizedRect.h"

#include <QImage>

#include <array>

/// Where two frames differ. Any thread.
namespace vantroque::FrameDifference {

/// With the highest, the change of a sample by one code of 8 or of 10 bits is seen.
inline constexpr std::array gains{1, 4, 16};

struct Difference {
    QImage image;         ///< As A is shown, black where they are equal; null without two pictures.
    bool isEqual = false; ///< Not a sample differs.
};

/// What is left when B is taken from A: of red, green and blue each the size of the difference,
/// times the gain and at most 255. It is that of decoded samples, not of pictures for a screen. B
/// is brought to A's size, matrix and range; `place` is where it lies in A's picture as that is
/// shown, and around it there is black. Of two depths the larger counts.
Difference of(const ComparedFrame& a, const ComparedFrame& b, const NormalizedRect& place,
              int gain);

} // namespace vantroque::FrameDifference

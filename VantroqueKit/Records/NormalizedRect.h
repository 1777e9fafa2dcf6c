#pragma once

#include "Base/Record.h"

namespace vantroque {

/// A rectangle in fractions of the picture, origin at the top left, y growing downward.
struct NormalizedRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    VANTROQUE_RECORD(NormalizedRect, x, y, width, height)
};

} // namespace vantroque

#pragma once

#include "Records/NormalizedRect.h"

#include <QString>

namespace vantroque {

/// Text that stood in the picture at one place from `start` to `end` seconds. The box is in
/// fractions of the picture, origin at the top left.
struct TextRegion {
    double start = 0;
    double end = 0;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    QString text; ///< The commonest reading.

    NormalizedRect rect() const { return {x, y, width, height}; }
    double duration() const { return end - start; }

    VANTROQUE_RECORD(TextRegion, start, end, x, y, width, height, text)
};

} // namespace vantroque

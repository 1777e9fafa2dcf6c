#pragma once

#include "Base/Record.h"

#include <algorithm>

namespace vantroque {

/// A passage of the file, in seconds.
struct TimeSpan {
    double start = 0;
    double end = 0;

    /// Never negative.
    double duration() const { return std::max(end - start, 0.0); }

    VANTROQUE_RECORD(TimeSpan, start, end)
};

} // namespace vantroque

#pragma once

#include "Records/NormalizedRect.h"

#include <QString>

#include <vector>

namespace vantroque {

/// What was read in one sampled frame.
struct TextSample {
    struct Box {
        NormalizedRect rect;
        QString text;
        bool operator==(const Box&) const = default;
    };

    double time = 0; ///< Seconds.
    std::vector<Box> boxes;
    bool operator==(const TextSample&) const = default;
};

} // namespace vantroque

#pragma once

#include "Records/MediaInfo.h"

namespace vantroque {

/// Where a film shows or sounds nothing, or nothing new, in seconds from the first frame: in order,
/// none before the first frame. Empty where it was not measured.
struct EmptyPassages {
    std::vector<TimeSpan> black;
    std::vector<TimeSpan> frozen;
    std::vector<TimeSpan> silent;

    static EmptyPassages of(const MediaInfo& media);

    bool operator==(const EmptyPassages&) const = default;
};

} // namespace vantroque

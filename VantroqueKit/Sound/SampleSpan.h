#pragma once

#include <cstdint>

namespace vantroque {

/// A passage in samples, its end excluded.
struct SampleSpan {
    std::int64_t start = 0;
    std::int64_t end = 0;
    bool operator==(const SampleSpan&) const = default;
};

} // namespace vantroque

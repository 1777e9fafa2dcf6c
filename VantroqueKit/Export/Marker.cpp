#include "Export/Marker.h"

#include "Base/Numbers.h"
#include "Base/Timecode.h"

#include <cmath>
#include <limits>

namespace vantroque {

namespace {

/// Stored frame numbers may be anything, and a sum beyond the type is its greatest value.
std::int64_t sum(std::int64_t a, std::int64_t b)
{
    std::int64_t result = 0;
    if (__builtin_add_overflow(a, b, &result))
        return a > 0 ? std::numeric_limits<std::int64_t>::max()
                     : std::numeric_limits<std::int64_t>::min();
    return result;
}

} // namespace

std::int64_t Marker::end() const
{
    return sum(frame, duration);
}

std::int64_t MarkerContext::timebase() const
{
    return Numbers::roundedToInt(frameRate);
}

bool MarkerContext::isNTSC() const
{
    constexpr double tolerance = 0.001;
    return std::abs(frameRate - static_cast<double>(timebase())) > tolerance;
}

QString MarkerContext::timecode(std::int64_t frame) const
{
    return Timecode(sum(startFrame, frame), frameRate).text();
}

} // namespace vantroque

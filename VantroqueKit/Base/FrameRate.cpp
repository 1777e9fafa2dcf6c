#include "Base/FrameRate.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

std::optional<FrameRate> FrameRate::of(double perSecond)
{
    if (!std::isfinite(perSecond) || perSecond <= 0)
        return std::nullopt;
    return FrameRate(perSecond);
}

std::int64_t FrameRate::timecodeBase() const
{
    // Keeps the frames of a day within 64 bits at any rate.
    constexpr std::int64_t most = 1'000'000'000'000;
    return std::clamp<std::int64_t>(Numbers::roundedToInt(m_perSecond), 1, most);
}

std::int64_t FrameRate::frameAt(double seconds) const
{
    return Numbers::roundedToInt(seconds * m_perSecond);
}

} // namespace vantroque

#include "Check/TwoPop.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vantroque::Checker {

std::optional<TimeSpan> lonePopIsland(const SignalInfo& signal, double leaderEnd, double fps)
{
    if (!signal.audioIslands || fps <= 1)
        return std::nullopt;
    const double frame = 1 / fps;
    std::vector<TimeSpan> islands;
    std::ranges::copy_if(
        *signal.audioIslands, std::back_inserter(islands),
        [&](const TimeSpan& island) { return Numbers::below(island.start, leaderEnd - frame); });
    if (islands.size() != 1)
        return std::nullopt;

    // The log gives times to 10 microseconds, and a tone that starts at zero is heard a sample
    // late.
    constexpr double logSlack = 0.0001;
    const TimeSpan& island = islands.front();
    const double offset = std::abs(island.start - (leaderEnd - 2));
    const double reach = frame * 3 + logSlack;
    if (Numbers::above(island.duration(), reach) || Numbers::above(offset, reach))
        return std::nullopt;
    return island;
}

bool isTwoPop(const SignalInfo& signal)
{
    // The centroid of a 1 kHz burst moves with its length and its edges.
    return signal.leaderToneHz && *signal.leaderToneHz >= 800 && *signal.leaderToneHz <= 1300;
}

} // namespace vantroque::Checker

#include "Records/Profile.h"

#include <algorithm>

namespace vantroque {

std::optional<BitrateLadderStep> BitrateLadderRule::step(int width, int height) const
{
    const int lines = std::min(width, height);
    std::optional<BitrateLadderStep> best;
    for (const BitrateLadderStep& candidate : steps)
        if (candidate.minLines <= lines && (!best || candidate.minLines > best->minLines))
            best = candidate;
    return best;
}

std::optional<BitrateLadderRule::Recommendation>
BitrateLadderRule::recommendedMbps(int width, int height, double fps, bool hdr) const
{
    auto found = step(width, height);
    if (!found)
        return std::nullopt;
    const bool high = fps > highFrameRateAbove;
    const double sdr = high ? found->sdrHighMbps : found->sdrMbps;
    const auto hdrRate = high ? found->hdrHighMbps : found->hdrMbps;
    const double mbps = hdr ? hdrRate.value_or(sdr) : sdr;
    return Recommendation{*std::move(found), mbps};
}

} // namespace vantroque

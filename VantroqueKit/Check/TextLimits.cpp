#include "Check/TextLimits.h"

#include "Base/Numbers.h"
#include "Signal/Leader.h"
#include "Text/TextPlacement.h"

#include <algorithm>

namespace vantroque::TextLimits {

std::vector<TextRegion> regionsOfTheAd(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    constexpr double allowance = 0.5;
    const double begin = Leader::end(media, profiles) - allowance;
    std::vector<TextRegion> regions = *media.signal->textRegions;
    std::erase_if(
        regions, [begin](const TextRegion& region) { return Numbers::below(region.start, begin); });
    return regions;
}

bool isBeyond(const TextRegion& region, double fraction)
{
    constexpr double hair = 0.004;
    return Numbers::above(TextPlacement::reach(region.rect()), fraction + hair);
}

bool isUnderControls(double coverage)
{
    constexpr double share = 0.05;
    return !Numbers::below(coverage, share);
}

AspectFamily family(const VideoStreamInfo& video)
{
    constexpr double tolerance = 0.02;
    return classify(video.shownWidth(), video.shownHeight(), tolerance);
}

} // namespace vantroque::TextLimits

#pragma once

#include "Profiles/PlatformZones.h"
#include "Records/MediaInfo.h"
#include "Records/Profile.h"

#include <vector>

/// What the row and the events of text placement agree on. Pure.
namespace vantroque::TextLimits {

/// Half a second before the leader ends, text is taken for the ad's.
std::vector<TextRegion> regionsOfTheAd(const MediaInfo& media,
                                       const std::vector<Profile>& profiles);
/// Whether text reaches past a safe area, given as a fraction of the picture. A hair counts as
/// inside.
bool isBeyond(const TextRegion& region, double fraction);
/// Whether so large a share of a text under a platform's controls matters.
bool isUnderControls(double coverage);
AspectFamily family(const VideoStreamInfo& video);

} // namespace vantroque::TextLimits

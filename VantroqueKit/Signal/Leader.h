#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"

#include <vector>

/// The leader of a broadcast master: a slate, then black, then the ad.
namespace vantroque::Leader {

/// Where the ad begins, in seconds, by the longest leader that some profile describes and whose
/// black the file has; 0 when there is none. Pure, callable from any thread.
double end(const MediaInfo& media, const std::vector<Profile>& profiles);

} // namespace vantroque::Leader

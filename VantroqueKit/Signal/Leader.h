#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"

#include <vector>

/// The leader of a broadcast master: a slate, then black, then the ad.
namespace vantroque::Leader {

using Layout = LeaderLengths;

/// The leaders of the profiles that ship with this program.
const std::vector<Layout>& layoutsInUse();

/// Whether the black lasts long enough to part a slate from an ad: less is a gap between shots.
bool partsSlateFromAd(const TimeSpan& black, const Layout& layout);

/// Where the ad begins, in seconds, by the longest leader that some profile describes and whose
/// black the file has; 0 when there is none. Pure, callable from any thread.
double end(const MediaInfo& media, const std::vector<Profile>& profiles);

} // namespace vantroque::Leader

#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <vector>

/// The places on the timeline where text stands too far out, or under a platform's controls. Pure,
/// callable from any thread.
namespace vantroque::TextEvents {

/// First those beyond the tightest safe area that some profile enforces, then those under the
/// controls of the zones that some profile names; text on a slate is left out. Empty without
/// measurement.
std::vector<SignalEvent> events(const MediaInfo& media, const std::vector<Profile>& profiles);

} // namespace vantroque::TextEvents

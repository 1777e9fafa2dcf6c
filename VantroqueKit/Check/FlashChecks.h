#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <vector>

/// What is said of flashes that may harm, after the leader. It is advice: no test that a
/// broadcaster takes. Pure, callable from any thread.
namespace vantroque::FlashChecks {

/// The passages, for the profiles that ask; each once.
std::vector<SignalEvent> events(const MediaInfo& media, const std::vector<Profile>& profiles);

} // namespace vantroque::FlashChecks

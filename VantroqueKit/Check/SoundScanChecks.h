#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <vector>

/// What every sample of the sound was looked at for. Pure, callable from any thread.
namespace vantroque::SoundScanChecks {

/// The places in a film with a picture, when some profile asks for them.
std::vector<SignalEvent> events(const MediaInfo& media, const std::vector<Profile>& profiles);

} // namespace vantroque::SoundScanChecks

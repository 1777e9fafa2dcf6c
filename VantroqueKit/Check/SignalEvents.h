#pragma once

#include "Records/MediaInfo.h"
#include "Records/Report.h"

#include <vector>

/// The places on the timeline that the decoding pass points at. Pure, callable from any thread.
namespace vantroque::SignalEvents {

/// More events than a reviewer steps through.
constexpr int cap = 200;

/// The events of a file whose ad begins at `leaderEnd` seconds (0 without leader), in the order of
/// their frames; empty without measurement. After the first `cap` of a longer list one more tells
/// how many were left out.
std::vector<SignalEvent> events(const MediaInfo& media, double leaderEnd);

} // namespace vantroque::SignalEvents

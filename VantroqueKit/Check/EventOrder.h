#pragma once

#include "Records/Report.h"

#include <vector>

/// The order of an event list, and the names of its events in it.
namespace vantroque::EventOrder {

/// The events by frame, those of one frame as they came. Each gets the id "{kind}-{frame}-{place}",
/// which is unique in this list and holds for it alone.
std::vector<SignalEvent> byFrame(std::vector<SignalEvent> events);

} // namespace vantroque::EventOrder

#pragma once

#include "Records/Profile.h"
#include "Records/Report.h"

#include <optional>
#include <vector>

/// Which rows of a report point at a place in the file. Pure.
namespace vantroque::RowMoments {

/// The event to look at for a row that does not pass: of those that its check raised the gravest,
/// and of these the one that the row speaks of: the text that reaches furthest, the longest run,
/// else the first. `profile` is the one whose row it is; null for a section of no platform.
std::optional<SignalEvent> of(const CheckResult& row, const Profile* profile,
                              const std::vector<SignalEvent>& events);

} // namespace vantroque::RowMoments

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

/// Gives the rows of a report the moments of its events, unless they have one. `profile` as above.
void mark(ProfileReport& report, const Profile* profile, const std::vector<SignalEvent>& events);
/// All rows of a file, by its own events. `profiles` are those of the report.
void mark(FileReport& report, const std::vector<Profile>& profiles);

/// The event at the moment of a row of that check.
std::optional<SignalEvent> eventAt(const QString& check, const CheckMoment& moment,
                                   const std::vector<SignalEvent>& events);

} // namespace vantroque::RowMoments

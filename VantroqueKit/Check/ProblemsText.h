#pragma once

#include "Check/Problems.h"

/// The plain text form of a report by cause. Pure, callable from any thread.
namespace vantroque::ProblemsText {

/// Lines, each ended by a line feed. `profiles` are those of the report.
QString render(const FileReport& report, const std::vector<Profile>& profiles);
/// One of its problems. Its moment counts frames at `frameRate`.
QString render(const Problem& problem, double frameRate);

} // namespace vantroque::ProblemsText

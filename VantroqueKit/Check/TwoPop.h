#pragma once

#include "Records/SignalInfo.h"

#include <optional>

/// The 2-pop: one burst of tone of at most three frames, two seconds before the ad. Pure, callable
/// from any thread.
namespace vantroque::Checker {

/// The only sound of a leader that ends at `leaderEnd` seconds, when it sits where a pop must and
/// is as short. What it sounds like is not looked at.
std::optional<TimeSpan> lonePopIsland(const SignalInfo& signal, double leaderEnd, double fps);

/// The leader's sound was measured as a tone of about 1 kHz.
bool isTwoPop(const SignalInfo& signal);

} // namespace vantroque::Checker

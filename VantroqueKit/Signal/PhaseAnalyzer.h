#pragma once

#include "Records/AudioLevels.h"

#include <optional>
#include <vector>

/// Whether left and right cancel when summed to mono, judged only where something plays. Pure.
namespace vantroque::PhaseAnalyzer {

/// `series` holds `sampleHz` correlations a second, -1 to 1; `audible` the passages with sound, all
/// of the file when absent. Nothing without a series or a rate.
std::optional<StereoPhase> measure(std::vector<float> series, double sampleHz,
                                   const std::optional<std::vector<TimeSpan>>& audible,
                                   const std::optional<std::vector<ChannelLevel>>& channelLevels);

} // namespace vantroque::PhaseAnalyzer

#pragma once

#include "Records/PictureLevels.h"
#include "Signal/RawFrames.h"

#include <cstdint>
#include <optional>
#include <vector>

/// The legal range of the picture against the tolerances of EBU R 103. Pure.
namespace vantroque::LevelsAnalyzer {

// Percent of the nominal range: what EBU R 103 rejects, and its preferred minimum and maximum.
constexpr float rejectLow = -5;
constexpr float rejectHigh = 105;
constexpr float strictLow = -1;
constexpr float strictHigh = 103;
/// The share of the picture that may be out of limits.
constexpr double areaFraction = 0.01;

/// `yMinCode` and `yMaxCode` are the darkest and brightest luma codes of all full frames at
/// `bitDepth`, in the range that `fullRange` says of the frames.
PictureLevels measure(const RawFrames& frames, ColorMatrix matrix, bool matrixAssumed,
                      bool fullRange, std::optional<int> yMinCode, std::optional<int> yMaxCode,
                      int bitDepth);

/// A luma code in percent of its range: 0 is black, 100 is white.
double percentOfCode(int code, bool fullRange, int bitDepth);

/// The stretches of `fractions`, one a sample, that lie above `area`.
std::vector<LevelRun> runs(const std::vector<double>& fractions, double rate, double area);

} // namespace vantroque::LevelsAnalyzer

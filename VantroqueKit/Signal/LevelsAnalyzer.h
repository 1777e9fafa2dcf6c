#pragma once

#include "Records/EbuR103.h"
#include "Records/PictureLevels.h"
#include "Signal/RawFrames.h"

#include <cstdint>
#include <optional>
#include <vector>

/// The legal range of the picture against the tolerances of EBU R 103. Pure.
namespace vantroque::LevelsAnalyzer {

using EbuR103::rejectHigh;
using EbuR103::rejectLow;
using EbuR103::strictHigh;
using EbuR103::strictLow;
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

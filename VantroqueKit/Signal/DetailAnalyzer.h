#pragma once

#include "Records/DetailEstimate.h"

#include <optional>
#include <string_view>
#include <vector>

/// How much real detail a picture holds, from its PSNR after a trip to half and quarter size, and
/// how many bits of its samples vary. Pure.
namespace vantroque::DetailAnalyzer {

/// The luma PSNR values of ffmpeg's statistics, without those of frames that had nothing to lose.
std::vector<double> series(std::string_view statsFile);
/// The upper median, two decimals.
std::optional<double> median(std::vector<double> list);
/// Of little-endian 16-bit samples of that depth; nothing at 8 bits or without a sample.
std::optional<int> bitsInUse(std::string_view samplesLE16, int bitDepth);
/// Passages of even detail; one value stands for `stride` frames.
std::vector<DetailSegment> segments(const std::vector<double>& half,
                                    const std::vector<double>& quarter, int stride, double fps);

} // namespace vantroque::DetailAnalyzer

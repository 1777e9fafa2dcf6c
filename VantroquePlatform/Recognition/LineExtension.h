#pragma once

#include "VantroquePlatform/Recognition/LineGrouping.h"

namespace vantroque {

/// The line with what follows it to the left and right in any map. Knowing that text stands there,
/// this takes in what alone would be too faint or ragged to begin a line.
LineCandidate extended(const LineCandidate& line, const std::vector<cv::Mat1b>& maps,
                       const cv::Mat3b& picture, const cv::Mat1b& luma);

} // namespace vantroque

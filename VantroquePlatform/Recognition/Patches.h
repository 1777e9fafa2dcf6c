#pragma once

#include <opencv2/core.hpp>

#include <functional>
#include <vector>

namespace vantroque {

/// Neighbouring pixels of one row that are set.
struct Run {
    int y = 0;
    int left = 0;
    int right = 0; ///< The first that is not.
};

/// Set pixels that touch one another, also by their corners.
struct Patch {
    cv::Rect box;
    int area = 0;
    std::vector<Run> runs; ///< From the top down.
};

/// The patches of a black (0) and white (255) map that are wanted for their box and area. Goes by
/// runs, which are far fewer than pixels.
std::vector<Patch> findPatches(const cv::Mat1b& map,
                               const std::function<bool(const cv::Rect& box, int area)>& isWanted);

} // namespace vantroque

#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace vantroque {

/// A colon with nothing close before it and a digit or letter after it, as in ":30".
struct LeadingColon {
    cv::Rect dots; ///< Both.
    cv::Rect next; ///< The first glyph after it.
};

/// Of a still page of light or dark type.
std::vector<LeadingColon> findLeadingColons(const cv::Mat1b& page);

/// The page without those colons.
cv::Mat1b withoutColons(const cv::Mat1b& page, const std::vector<LeadingColon>& colons);

} // namespace vantroque

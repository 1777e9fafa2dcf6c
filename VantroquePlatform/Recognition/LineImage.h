#pragma once

#include "VantroquePlatform/Recognition/LineGrouping.h"

#include <optional>

namespace vantroque {

/// A line of text as an engine likes it: dark on white, large, with air around it.
struct LineImage {
    cv::Mat1b pixels;
    cv::Rect region;  ///< What it shows of the picture.
    double scale = 1; ///< Its pixels a pixel of the picture.

    /// Where a box of the image is in the picture.
    cv::Rect inPicture(const cv::Rect& box) const;
    /// Whether there is ink to the left or right of a box of the picture.
    bool hasInkBeside(const cv::Rect& box) const;
};

/// The part of the picture that a line takes, with a little around it.
cv::Rect lineRegion(const LineCandidate& line, cv::Size picture);
/// 0 where the region has the line's color, 255 where it has that of the background.
cv::Mat1b inkIn(const cv::Mat3b& picture, const LineCandidate& line, const cv::Rect& region);

/// The line by its color: what has another one vanishes, and so does what is not of the line.
LineImage inkImage(const cv::Mat3b& picture, const LineCandidate& line, int height);
/// The letters alone, without the scene between and around them. Nothing where there is hardly any.
std::optional<LineImage> lettersImage(const cv::Mat3b& picture, const LineCandidate& line,
                                      int height);
/// The strokes as thin lines in gray, whatever their color: soft, but little is lost.
LineImage grayImage(const cv::Mat1b& luma, const LineCandidate& line, int height);

} // namespace vantroque

#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace vantroque {

/// Sizes that hold for text in a picture, in pixels.
struct TextScale {
    double smallest = 0;  ///< Height of the lowest letter.
    double largest = 0;   ///< Height of the highest.
    double smallType = 0; ///< Height of the highest letter of small type.
    int fineWindow = 0;   ///< A letter and what is around it, for small type
    int wideWindow = 0;   ///< and for large.

    /// Of a video frame of that height.
    static TextScale ofFrame(int height);
    /// Of a picture that is cut around a line of text.
    static TextScale ofCrop(int height);
};

/// Black and white pictures in which letters stand apart from what is behind them, each in its
/// own kind of scene: what is lighter or darker than its surroundings, what is light whatever
/// stands around it. Light type is white (255) in one map, dark type in another.
std::vector<cv::Mat1b> textMaps(const cv::Mat3b& picture, const TextScale& scale);

/// The pixels of about that colour.
cv::Mat1b colorMap(const cv::Mat3b& picture, const cv::Vec3f& color);

} // namespace vantroque

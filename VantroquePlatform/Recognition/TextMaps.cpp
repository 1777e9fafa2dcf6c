#include "VantroquePlatform/Recognition/TextMaps.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

int oddAtLeast(double size, int least)
{
    return std::max(static_cast<int>(std::lround(size)) | 1, least);
}

cv::Mat1b localMean(const cv::Mat1b& plane, int window)
{
    cv::Mat1b mean;
    cv::boxFilter(plane, mean, CV_8U, {window, window}, {-1, -1}, true, cv::BORDER_REFLECT);
    return mean;
}

cv::Mat1b above(const cv::Mat1b& plane, int value)
{
    cv::Mat1b map;
    cv::compare(plane, cv::Scalar(value), map, cv::CMP_GT);
    return map;
}

/// Where `plane` is more than `step` above `base`; the subtraction stops at 0.
cv::Mat1b above(const cv::Mat1b& plane, const cv::Mat1b& base, int step)
{
    cv::Mat1b difference;
    cv::subtract(plane, base, difference);
    return above(difference, step);
}

cv::Mat1b darkestChannel(const cv::Mat3b& picture)
{
    std::vector<cv::Mat> planes;
    cv::split(picture, planes);
    cv::min(planes[0], planes[1], planes[0]);
    cv::min(planes[0], planes[2], planes[0]);
    return planes[0];
}

/// How yellow each pixel is: white, gray and black are not.
cv::Mat1b yellowness(const cv::Mat3b& picture)
{
    std::vector<cv::Mat> planes;
    cv::split(picture, planes);
    cv::min(planes[0], planes[1], planes[0]);
    cv::subtract(planes[0], planes[2], planes[0]);
    return planes[0];
}

} // namespace

TextScale TextScale::ofFrame(int height)
{
    return {std::max(0.007 * height, 3.0), 0.17 * height, 0.028 * height,
            oddAtLeast(0.045 * height, 9), oddAtLeast(0.11 * height, 15)};
}

TextScale TextScale::ofCrop(int height)
{
    return {std::max(0.12 * height, 3.0), 0.98 * height, 0.5 * height, oddAtLeast(0.6 * height, 9),
            oddAtLeast(1.2 * height, 15)};
}

std::vector<cv::Mat1b> textMaps(const cv::Mat3b& picture, const TextScale& scale)
{
    constexpr int lumaStep = 18;
    constexpr int whiteStep = 28;
    constexpr int white = 215;
    constexpr int dimWhite = 180; // thin strokes, mixed with what is behind them
    constexpr int light = 150;
    cv::Mat1b luma;
    cv::cvtColor(picture, luma, cv::COLOR_RGB2GRAY);
    const cv::Mat1b darkest = darkestChannel(picture);
    std::vector<cv::Mat1b> maps;
    for (const int window : {scale.fineWindow, scale.wideWindow}) {
        const cv::Mat1b mean = localMean(luma, window);
        maps.push_back(above(luma, mean, lumaStep));
        maps.push_back(above(mean, luma, lumaStep));
    }
    maps.push_back(above(darkest, localMean(darkest, scale.wideWindow), whiteStep));
    maps.push_back(above(darkest, white));
    maps.push_back(above(darkest, dimWhite));
    maps.push_back(above(luma, light));
    const cv::Mat1b yellow = yellowness(picture);
    maps.push_back(above(yellow, localMean(yellow, scale.wideWindow), whiteStep));
    return maps;
}

cv::Mat1b colorMap(const cv::Mat3b& picture, const cv::Vec3f& color)
{
    constexpr int tolerance = 40;
    const cv::Scalar middle(color[0], color[1], color[2]);
    cv::Mat1b map;
    cv::inRange(picture, middle - cv::Scalar::all(tolerance), middle + cv::Scalar::all(tolerance),
                map);
    return map;
}

} // namespace vantroque

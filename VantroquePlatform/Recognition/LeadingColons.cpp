#include "VantroquePlatform/Recognition/LeadingColons.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <optional>

namespace vantroque {

namespace {

/// The patches that may be dots or glyphs, from left to right.
std::vector<cv::Rect> patches(const cv::Mat& map)
{
    constexpr int smallest = 2;
    cv::Mat1i labels;
    cv::Mat1i stats;
    cv::Mat1d centroids;
    const int count = cv::connectedComponentsWithStats(map, labels, stats, centroids, 8);
    std::vector<cv::Rect> boxes;
    for (int label = 1; label < count; ++label) {
        const int* each = stats[label];
        const cv::Rect box(each[cv::CC_STAT_LEFT], each[cv::CC_STAT_TOP], each[cv::CC_STAT_WIDTH],
                           each[cv::CC_STAT_HEIGHT]);
        if (box.width >= smallest && box.height >= smallest && 5 * box.height <= map.rows)
            boxes.push_back(box);
    }
    std::ranges::sort(boxes, {}, &cv::Rect::x);
    return boxes;
}

bool isDot(const cv::Rect& box)
{
    return box.width <= 2 * box.height && box.height <= 2 * box.width;
}

/// Two dots of one size, `lower` straight below `upper`.
bool areStacked(const cv::Rect& upper, const cv::Rect& lower)
{
    const int size = std::max(upper.height, lower.height);
    const int gap = lower.y - upper.br().y;
    return std::abs(upper.x - lower.x) <= std::max(size / 3, 1)
           && std::abs(upper.height - lower.height) <= std::max(size / 3, 1)
           && std::abs(upper.width - lower.width) <= std::max(size / 3, 1) && gap >= size / 2
           && gap <= 6 * size;
}

/// Glyphs of the line that the dots are on stand as high as a capital, on the same base line.
bool isOnLine(const cv::Rect& dots, const cv::Rect& dot, const cv::Rect& glyph)
{
    return glyph.height > dots.height && glyph.height < 4 * dots.height && glyph.y <= dots.y
           && std::abs(glyph.br().y - dots.br().y) <= dot.height;
}

std::optional<LeadingColon> colonAt(const cv::Rect& upper, const cv::Rect& lower,
                                    const std::vector<cv::Rect>& boxes)
{
    LeadingColon colon{upper | lower, {}};
    for (const cv::Rect& each : boxes)
        if (each.x >= colon.dots.br().x && isOnLine(colon.dots, lower, each)) {
            colon.next = each;
            break;
        }
    const int gap = colon.next.x - colon.dots.br().x;
    if (colon.next.empty() || gap > colon.next.height)
        return std::nullopt;
    const int nearest = std::max(2 * gap, colon.next.height / 2);
    const bool isLed = std::ranges::any_of(boxes, [&](const cv::Rect& each) {
        const int overlap =
            std::min(each.br().y, colon.dots.br().y) - std::max(each.y, colon.dots.y);
        return each != upper && each != lower && overlap > 0 && each.x < colon.dots.x
               && colon.dots.x - each.br().x < nearest;
    });
    return isLed ? std::nullopt : std::optional(colon);
}

void addColons(const cv::Mat& map, std::vector<LeadingColon>& colons)
{
    const auto boxes = patches(map);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (!isDot(boxes[i]))
            continue;
        for (const std::size_t step : {-1, 1})
            for (std::size_t j = i + step;
                 j < boxes.size() && std::abs(boxes[j].x - boxes[i].x) <= boxes[i].width; j += step)
                if (isDot(boxes[j]) && areStacked(boxes[i], boxes[j]))
                    if (const auto colon = colonAt(boxes[i], boxes[j], boxes))
                        colons.push_back(*colon);
    }
}

} // namespace

std::vector<LeadingColon> findLeadingColons(const cv::Mat1b& page)
{
    const int window = std::max(page.rows / 12, 15) | 1;
    constexpr int step = 30;
    std::vector<LeadingColon> colons;
    cv::Mat1b mean;
    cv::boxFilter(page, mean, CV_8U, {window, window});
    cv::Mat1b difference;
    for (const bool light : {true, false}) {
        if (light)
            cv::subtract(page, mean, difference);
        else
            cv::subtract(mean, page, difference);
        addColons(difference > step, colons);
    }
    return colons;
}

cv::Mat1b withoutColons(const cv::Mat1b& page, const std::vector<LeadingColon>& colons)
{
    cv::Mat1b blanked = page.clone();
    for (const LeadingColon& colon : colons) {
        const cv::Rect around =
            (colon.dots + cv::Size(4, 4) - cv::Point(2, 2)) & cv::Rect({}, page.size());
        const cv::Point beside(around.x, around.y + around.height / 2);
        blanked(around).setTo(page(beside));
    }
    return blanked;
}

} // namespace vantroque

#include "VantroquePlatform/GlyphComponents.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr float leastStep = 18;

bool hasLetterSize(const cv::Rect& box, int area, const TextScale& scale)
{
    constexpr int widest = 14; // heights: a word whose letters touch
    constexpr double leastFill = 0.10;
    return box.height >= scale.smallest && box.height <= scale.largest
           && box.width <= widest * box.height && area >= leastFill * box.area();
}

struct Sum {
    cv::Vec3f color;
    float luma = 0;
    int count = 0;

    void add(const cv::Vec3b& pixel, uchar brightness)
    {
        color += cv::Vec3f(pixel);
        luma += brightness;
        ++count;
    }
    float meanLuma() const { return luma / static_cast<float>(std::max(count, 1)); }
    cv::Vec3f meanColor() const { return color / static_cast<float>(std::max(count, 1)); }
};

/// Whether a pixel of a patch has a neighbour that is not of it.
bool isRim(const cv::Mat1i& labels, int y, int x)
{
    const int label = labels(y, x);
    return y == 0 || x == 0 || y == labels.rows - 1 || x == labels.cols - 1
           || labels(y - 1, x) != label || labels(y + 1, x) != label || labels(y, x - 1) != label
           || labels(y, x + 1) != label;
}

/// Measures the patch `label`, and whether it stands out.
bool measure(Glyph& glyph, int label, const cv::Mat1i& labels, const cv::Mat3b& picture,
             const cv::Mat1b& luma)
{
    Sum patch;
    Sum ring;
    int rim = 0;
    const cv::Rect around =
        (glyph.box + cv::Size(4, 4) - cv::Point(2, 2)) & cv::Rect({}, labels.size());
    for (int y = around.y; y < around.y + around.height; ++y)
        for (int x = around.x; x < around.x + around.width; ++x) {
            if (labels(y, x) == label) {
                patch.add(picture(y, x), luma(y, x));
                rim += isRim(labels, y, x) ? 1 : 0;
            } else if (labels(y, x) == 0)
                ring.add(picture(y, x), luma(y, x));
        }
    glyph.step = patch.meanLuma() - ring.meanLuma();
    if (std::abs(glyph.step) < leastStep || ring.count == 0)
        return false;
    // The rim of a stroke is mixed with what is behind it; the half away from the ring is not.
    Sum core;
    for (int y = glyph.box.y; y < glyph.box.y + glyph.box.height; ++y)
        for (int x = glyph.box.x; x < glyph.box.x + glyph.box.width; ++x)
            if (labels(y, x) == label
                && (static_cast<float>(luma(y, x)) - patch.meanLuma()) * glyph.step >= 0)
                core.add(picture(y, x), luma(y, x));
    glyph.color = core.meanColor();
    glyph.stroke = 2 * static_cast<float>(patch.count) / static_cast<float>(std::max(rim, 1));
    return true;
}

} // namespace

std::vector<Glyph> findGlyphs(const cv::Mat1b& map, const cv::Mat3b& picture, const cv::Mat1b& luma,
                              const TextScale& scale)
{
    cv::Mat1i labels;
    cv::Mat1i stats;
    cv::Mat1d centroids;
    const int count = cv::connectedComponentsWithStats(map, labels, stats, centroids, 8);
    std::vector<Glyph> glyphs;
    for (int label = 1; label < count; ++label) {
        const int* each = stats[label];
        Glyph glyph{{each[cv::CC_STAT_LEFT], each[cv::CC_STAT_TOP], each[cv::CC_STAT_WIDTH],
                     each[cv::CC_STAT_HEIGHT]}};
        if (hasLetterSize(glyph.box, each[cv::CC_STAT_AREA], scale)
            && measure(glyph, label, labels, picture, luma))
            glyphs.push_back(glyph);
    }
    std::ranges::sort(glyphs, {}, [](const Glyph& glyph) { return glyph.box.x; });
    return glyphs;
}

} // namespace vantroque

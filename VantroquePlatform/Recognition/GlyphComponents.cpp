#include "VantroquePlatform/Recognition/GlyphComponents.h"

#include "VantroquePlatform/Recognition/Patches.h"

#include <algorithm>
#include <cmath>
#include <optional>

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

/// Brightness, summed up.
struct Sum {
    int luma = 0;
    int count = 0;

    float mean() const { return static_cast<float>(luma) / static_cast<float>(std::max(count, 1)); }
};

Sum lumaOf(const Patch& patch, const cv::Mat1b& luma)
{
    Sum sum{0, patch.area};
    for (const Run& run : patch.runs)
        for (int x = run.left; x < run.right; ++x)
            sum.luma += luma(run.y, x);
    return sum;
}

/// What is not set around a patch, and between its strokes.
Sum lumaAround(const Patch& patch, const cv::Mat1b& map, const cv::Mat1b& luma)
{
    const cv::Rect around =
        (patch.box + cv::Size(4, 4) - cv::Point(2, 2)) & cv::Rect({}, map.size());
    Sum sum;
    for (int y = around.y; y < around.br().y; ++y) {
        const uchar* set = map[y];
        const uchar* bright = luma[y];
        for (int x = around.x; x < around.br().x; ++x) {
            sum.luma += bright[x] & ~set[x];
            sum.count += set[x] == 0 ? 1 : 0;
        }
    }
    return sum;
}

/// How many pixels of a patch have a neighbour that is not of it.
int rimLength(const Patch& patch, const cv::Mat1b& map)
{
    int rim = 0;
    for (const Run& run : patch.runs) {
        if (run.y == 0 || run.y == map.rows - 1) {
            rim += run.right - run.left;
            continue;
        }
        const uchar* above = map[run.y - 1];
        const uchar* below = map[run.y + 1];
        for (int x = run.left; x < run.right; ++x)
            rim += x == run.left || x == run.right - 1 || above[x] == 0 || below[x] == 0 ? 1 : 0;
    }
    return rim;
}

/// The rim of a stroke is mixed with what is behind it; the half that differs most is not.
cv::Vec3f colorOf(const Patch& patch, float meanLuma, float step, const cv::Mat3b& picture,
                  const cv::Mat1b& luma)
{
    cv::Vec3i sum;
    int count = 0;
    for (const Run& run : patch.runs)
        for (int x = run.left; x < run.right; ++x)
            if ((static_cast<float>(luma(run.y, x)) - meanLuma) * step >= 0) {
                sum += cv::Vec3i(picture(run.y, x));
                ++count;
            }
    return cv::Vec3f(sum) / static_cast<float>(std::max(count, 1));
}

/// The patch as a glyph, if it stands out.
std::optional<Glyph> glyphOf(const Patch& patch, const cv::Mat1b& map, const cv::Mat3b& picture,
                             const cv::Mat1b& luma)
{
    const float inside = lumaOf(patch, luma).mean();
    const Sum ring = lumaAround(patch, map, luma);
    const float step = inside - ring.mean();
    if (std::abs(step) < leastStep || ring.count == 0)
        return std::nullopt;
    const float stroke =
        2 * static_cast<float>(patch.area) / static_cast<float>(std::max(rimLength(patch, map), 1));
    return Glyph{patch.box, colorOf(patch, inside, step, picture, luma), step, stroke};
}

} // namespace

std::vector<Glyph> findGlyphs(const cv::Mat1b& map, const cv::Mat3b& picture, const cv::Mat1b& luma,
                              const TextScale& scale)
{
    const auto patches = findPatches(
        map, [&](const cv::Rect& box, int area) { return hasLetterSize(box, area, scale); });
    std::vector<Glyph> glyphs;
    for (const Patch& patch : patches)
        if (const auto glyph = glyphOf(patch, map, picture, luma))
            glyphs.push_back(*glyph);
    std::ranges::sort(glyphs, {}, [](const Glyph& glyph) { return glyph.box.x; });
    return glyphs;
}

} // namespace vantroque

#include "VantroquePlatform/Recognition/LineExtension.h"

#include <algorithm>

namespace vantroque {

namespace {

/// The full width of the picture at the height of a line.
cv::Rect bandOf(const LineCandidate& line, cv::Size picture)
{
    const int above = static_cast<int>(0.4 * line.letterHeight) + 1;
    return cv::Rect(0, line.box.y - above, picture.width, line.box.height + 2 * above)
           & cv::Rect({}, picture);
}

bool canBelong(const Glyph& glyph, const LineCandidate& line)
{
    constexpr double nearColor = 90;
    const int overlap =
        std::min(glyph.box.br().y, line.box.br().y) - std::max(glyph.box.y, line.box.y);
    return (glyph.step > 0) == (line.glyphs.front().step > 0)
           && 10 * overlap >= 7 * glyph.box.height
           && cv::norm(glyph.color - line.color) <= nearColor;
}

std::vector<Glyph> glyphsInBand(const LineCandidate& line, const std::vector<cv::Mat1b>& maps,
                                const cv::Mat3b& picture, const cv::Mat1b& luma)
{
    const cv::Rect band = bandOf(line, picture.size());
    const TextScale scale{std::max(0.35 * line.letterHeight, 2.0), 1.7 * line.letterHeight, 0, 0,
                          0};
    std::vector<Glyph> found;
    for (const cv::Mat1b& map : maps)
        for (Glyph glyph : findGlyphs(map(band), picture(band), luma(band), scale)) {
            glyph.box += band.tl();
            if (canBelong(glyph, line))
                found.push_back(glyph);
        }
    return found;
}

} // namespace

LineCandidate extended(const LineCandidate& line, const std::vector<cv::Mat1b>& maps,
                       const cv::Mat3b& picture, const cv::Mat1b& luma)
{
    constexpr double widestGap = 1.6; // heights, between two words
    const auto gap = static_cast<int>(widestGap * line.letterHeight);
    std::vector<Glyph> near = glyphsInBand(line, maps, picture, luma);
    std::vector<Glyph> glyphs = line.glyphs;
    cv::Rect box = line.box;
    const cv::Range rows = rowsOfLetters(line.glyphs, line.letterHeight);
    const auto takeIn = [&](Glyph glyph) {
        // What stands out of the line is of the scene behind.
        const int bottom = std::min(glyph.box.br().y, rows.end);
        glyph.box.y = std::max(glyph.box.y, rows.start);
        glyph.box.height = bottom - glyph.box.y;
        if (glyph.box.height <= 0)
            return;
        glyphs.push_back(glyph);
        box |= glyph.box;
    };
    std::ranges::sort(near, {}, [](const Glyph& glyph) { return glyph.box.x; });
    for (const Glyph& glyph : near)
        if (glyph.box.br().x > box.br().x && glyph.box.x <= box.br().x + gap)
            takeIn(glyph);
    std::ranges::sort(near, std::greater(), [](const Glyph& glyph) { return glyph.box.br().x; });
    for (const Glyph& glyph : near)
        if (glyph.box.x < box.x && glyph.box.br().x >= box.x - gap)
            takeIn(glyph);
    std::ranges::sort(glyphs, {}, [](const Glyph& glyph) { return glyph.box.x; });
    LineCandidate longer = line;
    longer.glyphs = std::move(glyphs);
    longer.box = box;
    return longer;
}

} // namespace vantroque

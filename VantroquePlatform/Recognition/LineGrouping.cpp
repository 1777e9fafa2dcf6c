#include "VantroquePlatform/Recognition/LineGrouping.h"

#include "VantroquePlatform/Recognition/Sets.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

bool areNeighbours(const Glyph& left, const Glyph& right)
{
    const cv::Rect& a = left.box;
    const cv::Rect& b = right.box;
    const int higher = std::max(a.height, b.height);
    const int lower = std::min(a.height, b.height);
    const int overlap = std::min(a.br().y, b.br().y) - std::max(a.y, b.y);
    return b.x - a.br().x <= higher && 100 * overlap >= 55 * lower && 5 * lower >= 2 * higher
           && std::abs(a.br().y - b.br().y) <= 0.36 * higher
           && std::max(left.stroke, right.stroke) <= 2.2F * std::min(left.stroke, right.stroke)
           && (left.step > 0) == (right.step > 0) && cv::norm(left.color - right.color) <= 40;
}

/// How many letters stand in a patch; those of small type touch.
double letterCount(const Glyph& glyph, double letterHeight)
{
    return std::max(1.0, glyph.box.width / (0.75 * letterHeight));
}

float median(std::vector<float> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

float baseLine(const std::vector<Glyph>& glyphs)
{
    std::vector<float> bottoms;
    for (const Glyph& glyph : glyphs)
        bottoms.push_back(static_cast<float>(glyph.box.br().y));
    return median(std::move(bottoms));
}

/// The share of the glyphs that stand on the line's straight base line.
double regularity(const LineCandidate& line)
{
    const float base = baseLine(line.glyphs);
    const auto near = std::ranges::count_if(line.glyphs, [&](const Glyph& glyph) {
        return std::abs(static_cast<float>(glyph.box.br().y) - base)
               <= std::max(0.12 * line.letterHeight, 1.0);
    });
    return static_cast<double>(near) / static_cast<double>(line.glyphs.size());
}

/// Takes out what is too high for the line: it is of the scene behind.
void dropTowering(std::vector<Glyph>& glyphs)
{
    constexpr float highest = 1.9F; // a "j" among small letters
    std::vector<float> heights;
    for (const Glyph& glyph : glyphs)
        heights.push_back(static_cast<float>(glyph.box.height));
    const float usual = median(std::move(heights));
    std::erase_if(glyphs, [&](const Glyph& glyph) {
        return static_cast<float>(glyph.box.height) > highest * usual;
    });
}

void complete(LineCandidate& line)
{
    dropTowering(line.glyphs);
    std::vector<float> heights;
    std::vector<float> channels[3];
    double step = 0;
    double stroke = 0;
    for (const Glyph& glyph : line.glyphs) {
        line.box = line.box.empty() ? glyph.box : line.box | glyph.box;
        heights.push_back(static_cast<float>(glyph.box.height));
        for (int i = 0; i < 3; ++i)
            channels[i].push_back(glyph.color[i]);
        step += std::abs(glyph.step);
        stroke += glyph.stroke;
    }
    std::ranges::sort(heights);
    line.letterHeight = heights[heights.size() * 3 / 4];
    line.color = {median(channels[0]), median(channels[1]), median(channels[2])};
    for (const Glyph& glyph : line.glyphs)
        line.units += letterCount(glyph, line.letterHeight);
    const auto count = static_cast<double>(line.glyphs.size());
    line.contrast = step / count;
    line.stroke = stroke / count / line.letterHeight;
    // Letters touch here and there; a long patch alone is mostly of the scene.
    const double apart = std::clamp(2.2 - 0.4 * line.units / count, 0.3, 1.0);
    line.score = std::sqrt(std::min(line.units, 30.0)) * std::min(line.contrast, 160.0)
                 * regularity(line) * std::clamp(1.6 - 2.5 * line.stroke, 0.1, 1.0) * apart;
}

/// Letters are drawn with strokes, and well visible ones.
bool isThin(const LineCandidate& line)
{
    constexpr double widestStroke = 0.42;
    constexpr double leastContrast = 35;
    return line.stroke <= widestStroke && line.contrast >= leastContrast;
}

/// Whether two pieces stand on one base line and look alike.
bool areOfOneLine(const LineCandidate& a, const LineCandidate& b)
{
    const double height = std::max(a.letterHeight, b.letterHeight);
    return std::abs(a.box.br().y - b.box.br().y) <= height
           && std::min(a.letterHeight, b.letterHeight) >= 0.7 * height
           && (a.glyphs.front().step > 0) == (b.glyphs.front().step > 0)
           && cv::norm(a.color - b.color) <= 40
           && std::abs(baseLine(a.glyphs) - baseLine(b.glyphs)) <= std::max(0.12 * height, 1.0);
}

/// The piece that follows a line most closely on its right; nothing when all are too far.
const LineCandidate* nextPiece(const LineCandidate& line, const std::vector<LineCandidate>& pieces)
{
    constexpr double widestGap = 8; // heights: a word that was not seen
    const LineCandidate* next = nullptr;
    for (const LineCandidate& piece : pieces) {
        const int gap = piece.box.x - line.box.br().x;
        if (gap >= 0 && gap <= widestGap * line.letterHeight
            && (next == nullptr || piece.box.x < next->box.x) && areOfOneLine(line, piece))
            next = &piece;
    }
    return next;
}

} // namespace

std::vector<LineCandidate> joinedPieces(const std::vector<LineCandidate>& pieces)
{
    constexpr int fewestPieces = 3;
    constexpr double fewestUnits = 12;
    std::vector<LineCandidate> lines;
    for (const LineCandidate& first : pieces) {
        LineCandidate line = first;
        int count = 1;
        while (const LineCandidate* next = nextPiece(line, pieces)) {
            line.glyphs.insert(line.glyphs.end(), next->glyphs.begin(), next->glyphs.end());
            line.box |= next->box;
            line.units += next->units;
            line.score = std::max(line.score, next->score);
            ++count;
        }
        const bool isPart = std::ranges::any_of(lines, [&](const LineCandidate& longer) {
            return (line.box & longer.box).area() > 0.8 * line.box.area();
        });
        if (count < fewestPieces || line.units < fewestUnits || isPart)
            continue;
        LineCandidate whole;
        whole.glyphs = std::move(line.glyphs);
        complete(whole);
        whole.score = line.score - 1; // its turn comes when the best of its pieces did not grow
        lines.push_back(std::move(whole));
    }
    return lines;
}

cv::Range rowsOfLetters(const std::vector<Glyph>& glyphs, double letterHeight)
{
    constexpr double highest = 1.7; // an "l" over small letters
    constexpr double deepest = 0.5;
    const float base = baseLine(glyphs);
    return {static_cast<int>(std::floor(base - highest * letterHeight)),
            static_cast<int>(std::ceil(base + deepest * letterHeight))};
}

std::vector<LineCandidate> groupIntoLines(const std::vector<Glyph>& glyphs)
{
    int highest = 0;
    for (const Glyph& glyph : glyphs)
        highest = std::max(highest, glyph.box.height);
    Sets sets(glyphs.size());
    for (std::size_t i = 0; i < glyphs.size(); ++i)
        for (std::size_t j = i + 1;
             j < glyphs.size() && glyphs[j].box.x <= glyphs[i].box.br().x + highest; ++j)
            if (areNeighbours(glyphs[i], glyphs[j]))
                sets.join(i, j);

    constexpr double fewestUnits = 3;
    constexpr double leastScore = 65; // hardly one in a thousand lower ones is text
    std::vector<LineCandidate> byRoot(glyphs.size());
    for (std::size_t i = 0; i < glyphs.size(); ++i)
        byRoot[sets.root(i)].glyphs.push_back(glyphs[i]);
    std::vector<LineCandidate> lines;
    for (LineCandidate& line : byRoot) {
        if (line.glyphs.empty())
            continue;
        complete(line);
        if (line.units >= fewestUnits && isThin(line) && line.score >= leastScore)
            lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace vantroque

#include "Support/TextJudgement.h"

#include "Text/InkExtent.h"
#include "Text/TextPlacement.h"

#include <algorithm>

namespace vantroque::TextScenes {

namespace {

NormalizedRect rectOf(const QRectF& box)
{
    return {box.x(), box.y(), box.width(), box.height()};
}

double bestOverlap(const std::vector<TextSample::Box>& boxes, const NormalizedRect& ink)
{
    double best = 0;
    for (const auto& box : boxes) {
        const double common = box.rect.intersected(ink).area();
        best = std::max(best, common / (box.rect.area() + ink.area() - common));
    }
    return best;
}

bool isFalse(const TextSample::Box& box, const std::vector<DrawnLine>& lines)
{
    return std::ranges::none_of(lines, [&](const DrawnLine& line) {
        return box.rect.intersected(rectOf(line.ink)).area() >= 0.3 * box.rect.area();
    });
}

} // namespace

Judgement judge(const QImage& picture, const std::vector<RecognizedLine>& read,
                const std::vector<DrawnLine>& lines)
{
    std::vector<TextSample::Box> pieces;
    for (const RecognizedLine& line : read)
        pieces.push_back({line.box, line.text});
    Judgement judgement;
    judgement.boxes = TextPlacement::mergeLines(pieces);
    const auto pixels = InkExtent::Pixels::from(picture);
    for (TextSample::Box& piece : pieces)
        piece.rect = InkExtent::refine(piece.rect, *pixels).value_or(piece.rect);
    const auto refined = TextPlacement::mergeLines(pieces);
    for (const DrawnLine& line : lines) {
        const NormalizedRect ink = rectOf(line.ink);
        judgement.lines.push_back(
            {line, bestOverlap(judgement.boxes, ink), bestOverlap(refined, ink)});
    }
    std::ranges::copy_if(judgement.boxes, std::back_inserter(judgement.falseBoxes),
                         [&](const TextSample::Box& box) { return isFalse(box, lines); });
    return judgement;
}

} // namespace vantroque::TextScenes

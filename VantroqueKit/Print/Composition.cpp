#include "Print/Composition.h"

#include <algorithm>

namespace vantroque {

double Composition::add(const Paragraph& text, QPointF topLeft)
{
    for (int line = 0; line < text.lineCount(); ++line)
        add({topLeft.x(), topLeft.y() + line * text.lineHeight(), text.width(), text.lineHeight()},
            [text, line](QPainter& painter, const QRectF& place) {
                text.drawLine(painter, line, place.topLeft());
            });
    return topLeft.y() + text.height();
}

void Composition::add(const QRectF& place, Drawing drawing)
{
    m_items.push_back({place, std::move(drawing)});
}

double Composition::bottom() const
{
    double lowest = 0;
    for (const Item& item : m_items)
        lowest = std::max(lowest, item.place.bottom());
    return lowest;
}

std::vector<Block> Composition::blocks(double height, bool keepWithNext) &&
{
    std::vector<Item> items = std::move(m_items);
    if (height > Pages::room)
        std::ranges::stable_sort(items, {}, [](const Item& item) { return item.place.top(); });
    std::vector<std::vector<Item>> parts(1);
    std::vector<double> tops{0};
    for (Item& item : items) {
        if (item.place.bottom() - tops.back() > Pages::room && item.place.top() > tops.back()) {
            parts.emplace_back();
            tops.push_back(item.place.top());
        }
        parts.back().push_back(std::move(item));
    }
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isLast = i + 1 == parts.size();
        const double own = (isLast ? height : tops[i + 1]) - tops[i];
        blocks.push_back(
            {own, isLast && keepWithNext,
             [part = std::move(parts[i]), from = tops[i]](QPainter& painter, double y) {
                 for (const Item& item : part)
                     item.draw(painter, item.place.translated(0, y - from));
             }});
    }
    return blocks;
}

} // namespace vantroque

#pragma once

#include "Print/Pages.h"
#include "Print/Paragraph.h"

#include <QRectF>

namespace vantroque {

/// Text and drawings that belong together, from the top of a block that is to be.
class Composition {
public:
    using Drawing = std::function<void(QPainter& painter, const QRectF& place)>;

    /// Text that begins at that place; the bottom of its last line.
    double add(const Paragraph& text, QPointF topLeft);
    void add(const QRectF& place, Drawing drawing);

    /// The bottom of what reaches lowest.
    double bottom() const;

    /// One block of that height, or, when no page is so high, as many as it takes, parted between
    /// lines, so that every word stands on some page.
    std::vector<Block> blocks(double height, bool keepWithNext = false) &&;

private:
    struct Item {
        QRectF place;
        Drawing draw;
    };

    std::vector<Item> m_items;
};

} // namespace vantroque

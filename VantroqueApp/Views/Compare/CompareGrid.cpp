#include "VantroqueApp/Views/Compare/CompareGrid.h"

#include "VantroqueApp/Views/Compare/CompareCaption.h"
#include "VantroqueApp/Views/Compare/CompareTileView.h"

#include <QEvent>

#include <algorithm>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 16; ///< Left and right of the page,
constexpr int edge = 12; ///< and above it and below.
constexpr double spacing = 16;

} // namespace

CompareGrid::CompareGrid(CompareController& compare, ComparePair& pair, QWidget* parent)
    : QScrollArea(parent), m_compare(compare), m_pair(pair), m_page(new QWidget)
{
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_page->setAccessibleName(u"Versions"_s);
    setWidget(m_page);
    connect(&compare, &CompareController::tilesChanged, this, &CompareGrid::fill);
    connect(&compare, &CompareController::tileSizeChanged, this, &CompareGrid::place);
    fill();
}

void CompareGrid::fill()
{
    for (CompareTileView* tile : m_tiles)
        delete tile;
    m_tiles.clear();
    for (CompareTile* tile : m_compare.displayTiles())
        m_tiles.push_back(new CompareTileView(m_compare, m_pair, *tile, m_page));
    place();
    for (CompareTileView* tile : m_tiles)
        tile->show();
}

void CompareGrid::place()
{
    std::vector<CompareLayout::Item> items;
    for (const CompareTileView* tile : m_tiles) {
        const FrameShape shape = tile->tile().file().shape();
        items.push_back(
            {.group = CompareLayout::rank(shape.family()),
             .aspect = static_cast<double>(shape.squareWidth()) / std::max(shape.height, 1)});
    }
    const CompareLayout::Page page{.width = static_cast<double>(width() - 2 * side),
                                   .height = static_cast<double>(height() - 2 * edge),
                                   .spacing = spacing,
                                   .label = CompareCaption::high};
    const auto heights = CompareLayout::tileHeights(items, page);
    const auto placed = CompareLayout::place(items, heights.at(m_compare.tileSize()), page);
    for (std::size_t i = 0; i < placed.placements.size(); ++i) {
        const auto& [x, y, wide, high] = placed.placements[i];
        m_tiles[i]->setGeometry(side + qRound(x), edge + qRound(y), qRound(wide),
                                qRound(high) + CompareCaption::high);
    }
    m_page->resize(width(), qRound(placed.height) + 2 * edge);
    if (std::exchange(m_canEnlarge, heights.canEnlarge()) != m_canEnlarge)
        Q_EMIT canEnlargeChanged();
}

void CompareGrid::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    place();
}

} // namespace vantroque

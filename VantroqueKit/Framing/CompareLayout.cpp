#include "Framing/CompareLayout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vantroque::CompareLayout {

namespace {

constexpr double slack = 0.5; // less than a point is not seen

/// What a file claims of its shape may be none at all.
double possibleAspect(double aspect)
{
    constexpr double narrowest = 0.01;
    return std::isfinite(aspect) ? std::max(aspect, narrowest) : narrowest;
}

Placement sized(const Item& item, double tileHeight, double pageWidth)
{
    const double aspect = possibleAspect(item.aspect);
    const double height = std::min(pageWidth / aspect, tileHeight);
    return {.width = std::min(aspect * height, pageWidth), .height = height};
}

/// Fills rows one after the other.
class Rows {
public:
    explicit Rows(const Page& page) : m_page(page) {}

    void add(const Item& item, const Placement& tile)
    {
        const double joined = m_rowWidth + m_page.spacing + tile.width;
        if (!m_row.empty() && (item.group != m_group || joined > m_page.width + slack))
            closeRow();
        m_rowWidth = m_row.empty() ? tile.width : m_rowWidth + m_page.spacing + tile.width;
        m_group = item.group;
        m_row.push_back(tile);
    }

    Placements placed()
    {
        closeRow();
        m_placed.height = std::max(m_y - m_page.spacing, 0.0);
        return std::move(m_placed);
    }

private:
    void closeRow()
    {
        const double height = std::ranges::max(m_row, {}, &Placement::height).height;
        double x = std::max((m_page.width - m_rowWidth) / 2, 0.0);
        for (Placement& tile : m_row) {
            tile.x = x;
            tile.y = m_y + height - tile.height;
            x += tile.width + m_page.spacing;
            m_placed.placements.push_back(tile);
        }
        m_y += height + m_page.label + m_page.spacing;
        m_row.clear();
    }

    const Page m_page;
    std::vector<Placement> m_row; ///< That is being filled: sizes only.
    double m_rowWidth = 0;
    int m_group = 0;
    double m_y = 0;
    Placements m_placed;
};

} // namespace

int rank(AspectFamily family)
{
    switch (family) {
    case AspectFamily::wide16x9: return 0;
    case AspectFamily::square1x1: return 1;
    case AspectFamily::tall4x5: return 2;
    case AspectFamily::vertical9x16: return 3;
    case AspectFamily::other: return 4;
    }
    return 5;
}

std::vector<std::size_t> order(const std::vector<AspectFamily>& families)
{
    std::vector<std::size_t> indices(families.size());
    std::iota(indices.begin(), indices.end(), std::size_t{0});
    std::ranges::stable_sort(indices, {}, [&](std::size_t index) { return rank(families[index]); });
    return indices;
}

Placements place(const std::vector<Item>& items, double tileHeight, const Page& page)
{
    if (items.empty() || !(page.width > 0))
        return {};
    Rows rows(page);
    for (const Item& item : items)
        rows.add(item, sized(item, tileHeight, page.width));
    return rows.placed();
}

double maxHeight(const Page& page)
{
    return std::max(lowestTile, page.height - page.label);
}

double fitHeight(const std::vector<Item>& items, const Page& page)
{
    const auto fits = [&](double tileHeight) {
        return place(items, tileHeight, page).height <= page.height + slack;
    };
    if (!fits(lowestTile))
        return lowestTile;
    const double top = maxHeight(page);
    if (fits(top))
        return top;
    double lower = lowestTile;
    double upper = top;
    constexpr int rounds = 30;
    for (int i = 0; i < rounds; ++i) {
        const double middle = (lower + upper) / 2;
        (fits(middle) ? lower : upper) = middle;
    }
    return std::floor(lower);
}

TileHeights tileHeights(const std::vector<Item>& items, const Page& page)
{
    return {.fit = fitHeight(items, page), .largest = maxHeight(page)};
}

double TileHeights::at(double tileSize) const
{
    return fit + (std::max(largest, fit) - fit) * tileSize;
}

} // namespace vantroque::CompareLayout

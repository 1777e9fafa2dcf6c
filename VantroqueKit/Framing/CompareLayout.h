#pragma once

#include "Profiles/PlatformZones.h"

#include <cstddef>
#include <vector>

/// How the tiles of several versions lie on one page. Lengths are in points of the screen.
namespace vantroque::CompareLayout {

/// Below that a picture says nothing, and the page scrolls instead.
constexpr double lowestTile = 90;

struct Item {
    int group = 0;     ///< Tiles of different groups never share a row.
    double aspect = 1; ///< Width over height.
};

/// Of the picture in a tile; its caption lies under it.
struct Placement {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const Placement&) const = default;
};

/// What a page has room for.
struct Page {
    double width = 0;
    double height = 0;
    double spacing = 0; ///< Between tiles, and between rows.
    double label = 0;   ///< Height of the captions under each row.
};

struct Placements {
    std::vector<Placement> placements; ///< One for each item, in the same order.
    double height = 0;                 ///< Of all rows, which may be more than the page has.
};

/// Wide pictures first, then from the square to the tallest, and those of no family last.
int rank(AspectFamily family);
/// The indices of the families by rank; those of one family keep their order.
std::vector<std::size_t> order(const std::vector<AspectFamily>& families);

/// In centred rows from the top, as high as `tileHeight` says but never wider than the page. Tiles
/// of a row stand on its bottom edge.
Placements place(const std::vector<Item>& items, double tileHeight, const Page& page);

/// Between these two the operator chooses how large the tiles are.
struct TileHeights {
    double fit = lowestTile;     ///< The largest with which all tiles are in sight at once.
    double largest = lowestTile; ///< One row fills the page.

    bool canEnlarge() const { return largest > fit; }
    /// `tileSize` is 0 for `fit` and 1 for `largest`.
    double at(double tileSize) const;
    bool operator==(const TileHeights&) const = default;
};
/// The largest height of tiles with which the page holds them all, at least `lowestTile`.
double fitHeight(const std::vector<Item>& items, const Page& page);
double maxHeight(const Page& page);
TileHeights tileHeights(const std::vector<Item>& items, const Page& page);

} // namespace vantroque::CompareLayout

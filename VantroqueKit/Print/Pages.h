#pragma once

#include <functional>
#include <vector>

class QPainter;

namespace vantroque {

/// What stands on a page as a whole. Lengths are points, y runs down from the top of the page.
struct Block {
    double height = 0;         ///< Known before anything is drawn.
    bool keepWithNext = false; ///< Must not stand last on a page.
    std::function<void(QPainter& painter, double top)> draw;
};

/// How blocks share pages of US Letter. Pure.
namespace Pages {

constexpr double width = 612;
constexpr double height = 792;
constexpr double left = 48;
constexpr double right = 564;
constexpr double textWidth = right - left;
constexpr double top = 48;
constexpr double continuedTop = top + 18; ///< Below the header of a page that is not the first.
constexpr double bottom = 728;            ///< As far as a block may reach.
constexpr double room = bottom - continuedTop; ///< The highest block that fits on any page.
constexpr double footerTop = 752;
constexpr double footerHeight = 12;

struct Place {
    int page = 1;
    double top = Pages::top;
    bool operator==(const Place&) const = default;
};

/// Where each block stands. What fits on no page stands at the top of one, and reaches below it.
std::vector<Place> places(const std::vector<Block>& blocks);

} // namespace Pages
} // namespace vantroque

#include "Print/Pages.h"

namespace vantroque::Pages {

namespace {

/// What a block needs: its own height and, of headings, that of what they head.
double space(const std::vector<Block>& blocks, std::size_t index)
{
    double needed = blocks[index].height;
    while (blocks[index].keepWithNext && index + 1 < blocks.size())
        needed += blocks[++index].height;
    return needed;
}

} // namespace

std::vector<Place> places(const std::vector<Block>& blocks)
{
    std::vector<Place> found;
    found.reserve(blocks.size());
    Place next;
    double first = top;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        // At the top of a page there is no more room to be had on another one.
        if (next.top > first && next.top + space(blocks, i) > bottom) {
            ++next.page;
            next.top = first = continuedTop;
        }
        found.push_back(next);
        next.top += blocks[i].height;
    }
    return found;
}

} // namespace vantroque::Pages

#include "VantroquePlatform/Recognition/Patches.h"

#include "VantroquePlatform/Recognition/Sets.h"

#include <cstring>

namespace vantroque {

namespace {

/// The first of the bytes of that value, or their end.
const uchar* firstOf(uchar value, const uchar* begin, const uchar* end)
{
    const void* found = std::memchr(begin, value, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<const uchar*>(found) : end;
}

std::vector<Run> runsOf(const cv::Mat1b& map)
{
    std::vector<Run> runs;
    for (int y = 0; y < map.rows; ++y) {
        const uchar* row = map[y];
        const uchar* end = row + map.cols;
        for (const uchar* at = firstOf(255, row, end); at != end; at = firstOf(255, at, end)) {
            const uchar* first = at;
            at = firstOf(0, at, end);
            runs.push_back({y, static_cast<int>(first - row), static_cast<int>(at - row)});
        }
    }
    return runs;
}

/// Joins the runs that touch one in the row above.
Sets joined(const std::vector<Run>& runs)
{
    Sets sets(runs.size());
    std::size_t above = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const Run& run = runs[i];
        while (runs[above].y < run.y - 1
               || (runs[above].y == run.y - 1 && runs[above].right < run.left))
            ++above;
        for (std::size_t j = above; runs[j].y == run.y - 1 && runs[j].left <= run.right; ++j)
            sets.join(j, i);
    }
    return sets;
}

} // namespace

std::vector<Patch> findPatches(const cv::Mat1b& map,
                               const std::function<bool(const cv::Rect& box, int area)>& isWanted)
{
    const auto runs = runsOf(map);
    Sets sets = joined(runs);
    // A set is known by its first run, so that its place in the list is known when others come.
    std::vector<Patch> patches;
    std::vector<std::size_t> places(runs.size());
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const Run& run = runs[i];
        const cv::Rect box(run.left, run.y, run.right - run.left, 1);
        const std::size_t root = sets.root(i);
        if (root == i) {
            places[i] = patches.size();
            patches.push_back({box, 0, {}});
        }
        Patch& patch = patches[places[root]];
        patch.box |= box;
        patch.area += box.width;
    }
    std::vector<bool> wanted(patches.size());
    for (std::size_t i = 0; i < patches.size(); ++i)
        wanted[i] = isWanted(patches[i].box, patches[i].area);
    for (std::size_t i = 0; i < runs.size(); ++i)
        if (const std::size_t place = places[sets.root(i)]; wanted[place])
            patches[place].runs.push_back(runs[i]);
    std::erase_if(patches, [](const Patch& patch) { return patch.runs.empty(); });
    return patches;
}

} // namespace vantroque

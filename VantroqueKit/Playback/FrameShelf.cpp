#include "Playback/FrameShelf.h"

#include <algorithm>
#include <cstdlib>

namespace vantroque {

void FrameShelf::put(Frame frame)
{
    const std::int64_t number = frame->frame;
    Shelved& shelved = m_shelved[number];
    shelved.last = std::max(shelved.last, number);
    shelved.frame = std::move(frame);
}

void FrameShelf::extend(std::int64_t number, std::int64_t last)
{
    if (const auto found = m_shelved.find(number); found != m_shelved.end())
        found->second.last = std::max(found->second.last, last);
}

bool FrameShelf::dropCostliest(const std::function<double(std::int64_t)>& costOf)
{
    auto worst = m_shelved.end();
    double highest = 0;
    for (auto it = m_shelved.begin(); it != m_shelved.end(); ++it)
        if (const double cost = costOf(it->first); cost > highest) {
            highest = cost;
            worst = it;
        }
    if (worst == m_shelved.end())
        return false;
    m_shelved.erase(worst);
    return true;
}

FrameShelf::Map::const_iterator FrameShelf::find(std::int64_t number) const
{
    const auto after = m_shelved.upper_bound(number);
    if (after == m_shelved.begin())
        return m_shelved.end();
    const auto found = std::prev(after);
    return found->second.last >= number ? found : m_shelved.end();
}

FrameShelf::Frame FrameShelf::frame(std::int64_t number) const
{
    const auto found = find(number);
    if (found == m_shelved.end())
        return nullptr;
    const Frame& frame = found->second.frame;
    if (found->first == number)
        return frame;
    return std::make_shared<PlayedFrame>(PlayedFrame{number, frame->picture, frame->pixels});
}

FrameShelf::Frame FrameShelf::nearest(std::int64_t number, std::int64_t reach) const
{
    if (Frame exact = frame(number))
        return exact;
    const auto after = m_shelved.upper_bound(number);
    Frame best;
    if (after != m_shelved.end() && after->first - number <= reach)
        best = after->second.frame;
    if (after == m_shelved.begin())
        return best;
    const auto& [first, before] = *std::prev(after);
    const std::int64_t distance = number - before.last;
    if (distance > reach || (best && best->frame - number < distance))
        return best;
    return frame(before.last);
}

} // namespace vantroque

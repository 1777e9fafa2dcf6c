#include "Flashes/ChangeCounter.h"

namespace vantroque {

namespace {

/// A second, open at its beginning: what is one second old is in it no more.
constexpr Microseconds second = 1'000'000;
constexpr Microseconds uncertain = 100;

} // namespace

/// Two changes on from a change there is one of the same kind: the next flash.
bool ChangeCounter::counts(const Times& times, std::uint64_t index) const
{
    const std::uint64_t first = times.count > most ? times.count - most : 0;
    const bool followsClosely =
        index >= first + 2 && times.at(index) - times.at(index - 2) < m_apart;
    const bool isFollowedClosely =
        index + 2 < times.count && times.at(index + 2) - times.at(index) < m_apart;
    return followsClosely || isFollowedClosely;
}

ChangeCounter::Count ChangeCounter::add(std::size_t cell, Microseconds time)
{
    Times& times = m_cells[cell];
    times.ring[times.count % most] = time;
    ++times.count;
    const std::uint64_t first = times.count > most ? times.count - most : 0;
    Count found;
    for (std::uint64_t index = times.count; index-- > first;) {
        if (time - times.at(index) >= second - uncertain)
            break;
        if (!counts(times, index))
            continue;
        ++found.changes;
        found.oldest = times.at(index);
    }
    return found;
}

bool ChangeCounter::changedAfter(std::size_t cell, Microseconds time) const
{
    const Times& times = m_cells[cell];
    return times.count > 0 && times.at(times.count - 1) > time;
}

} // namespace vantroque

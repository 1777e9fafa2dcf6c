#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace vantroque {

/// Times in microseconds; those of files that count in thousandths are off by half of one.
using Microseconds = std::int64_t;

/// When each cell changed, and how often within a second.
class ChangeCounter {
public:
    struct Count {
        int changes = 0;
        Microseconds oldest = 0; ///< Of them.
    };

    /// Flashes that begin `apart` or more from those before and after them do not count.
    ChangeCounter(std::size_t cells, Microseconds apart) : m_apart(apart), m_cells(cells) {}

    /// Adds a change, opposite to the one before, and counts those in the second that ends there.
    Count add(std::size_t cell, Microseconds time);
    /// The cell has changed after that time.
    bool changedAfter(std::size_t cell, Microseconds time) const;

private:
    static constexpr std::size_t most = 64; ///< More than the fields of a second.
    struct Times {
        std::array<Microseconds, most> ring{};
        std::uint64_t count = 0;

        Microseconds at(std::uint64_t index) const { return ring[index % most]; }
    };
    bool counts(const Times& times, std::uint64_t index) const;

    Microseconds m_apart;
    std::vector<Times> m_cells;
};

} // namespace vantroque

#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

namespace vantroque {

/// Sets of numbers that grow together, each known by the least of them.
class Sets {
public:
    explicit Sets(std::size_t count) : m_parents(count)
    {
        std::iota(m_parents.begin(), m_parents.end(), std::size_t{0});
    }
    std::size_t root(std::size_t element)
    {
        while (m_parents[element] != element)
            element = m_parents[element] = m_parents[m_parents[element]];
        return element;
    }
    void join(std::size_t a, std::size_t b)
    {
        a = root(a);
        b = root(b);
        m_parents[std::max(a, b)] = std::min(a, b);
    }

private:
    std::vector<std::size_t> m_parents;
};

} // namespace vantroque

#pragma once

#include <cstddef>
#include <vector>

namespace vantroque {

/// A series for display holds no more values than this; longer ones lose every second value.
constexpr std::size_t longestSeries = 3600;

template<typename T>
void keepEverySecond(std::vector<T>& values)
{
    for (std::size_t i = 0; 2 * i < values.size(); ++i)
        values[i] = values[2 * i];
    values.resize((values.size() + 1) / 2);
}

} // namespace vantroque

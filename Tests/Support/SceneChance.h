#pragma once

#include "Support/TextScenes.h"

#include <iterator>

/// Chance, of which scenes are made. Two draws never stand in one call: compilers differ in which
/// of its arguments comes first, and each would draw another picture.
namespace vantroque::TextScenes {

inline int between(Random& random, int low, int high)
{
    return std::uniform_int_distribution(low, high)(random);
}

inline double between(Random& random, double low, double high)
{
    return std::uniform_real_distribution(low, high)(random);
}

inline bool chance(Random& random, double likelihood)
{
    return between(random, 0.0, 1.0) < likelihood;
}

template<typename List>
auto pick(const List& list, Random& random)
{
    return list[between(random, 0, static_cast<int>(std::size(list)) - 1)];
}

} // namespace vantroque::TextScenes

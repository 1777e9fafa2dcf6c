#pragma once

#include "Playback/PlaybackEngine.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace vantroque {

/// The frames that are at hand, each under the numbers for which it is on screen.
class FrameShelf {
public:
    using Frame = std::shared_ptr<const PlayedFrame>;

    void put(Frame frame);
    /// The frame of that number is on screen up to `last` as well.
    void extend(std::int64_t number, std::int64_t last);
    void clear() { m_shelved.clear(); }
    /// Takes away the frame of the highest cost above 0, by its number. False when there is none.
    bool dropCostliest(const std::function<double(std::int64_t)>& costOf);

    bool has(std::int64_t number) const { return find(number) != m_shelved.end(); }
    /// The frame with that number as its own; nothing when it is not at hand.
    Frame frame(std::int64_t number) const;
    /// The nearest one at most `reach` from the number.
    Frame nearest(std::int64_t number, std::int64_t reach) const;
    std::size_t size() const { return m_shelved.size(); }

private:
    struct Shelved {
        Frame frame;
        std::int64_t last = 0;
    };
    using Map = std::map<std::int64_t, Shelved>; ///< By the first number.

    Map::const_iterator find(std::int64_t number) const;

    Map m_shelved;
};

} // namespace vantroque

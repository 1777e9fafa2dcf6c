#pragma once

#include "Playback/FrameShelf.h"

namespace vantroque {

/// Frames without pixels, from `first` to `last`.
inline void shelve(FrameShelf& shelf, std::int64_t first, std::int64_t last)
{
    for (std::int64_t number = first; number <= last; ++number)
        shelf.put(std::make_shared<PlayedFrame>(PlayedFrame{number, {}, nullptr}));
}

} // namespace vantroque

#pragma once

#include "Base/Timecode.h"
#include "Playback/ShuttleState.h"
#include "VantroqueApp/Model/Playback/ZoomCommand.h"

#include <cstdint>
#include <functional>

namespace vantroque {

/// What a window offers to the keys of transport. Those said to be optional may be null, and their
/// keys go on to whatever has the focus then.
struct TransportActions {
    std::function<bool()> isComposing; ///< A note is being written.
    std::function<Timecode()> timecode;
    std::function<void()> togglePlay;
    std::function<void(ShuttleState::Direction direction, bool slow)> shuttle;
    std::function<void()> shuttleStop;
    std::function<void(std::int64_t frames)> step;
    std::function<void(bool toEnd)> jump;
    std::function<void(const Timecode&)> seek;
    std::function<void(ZoomCommand)> zoom; ///< Optional, as all that follow.
    std::function<void()> escape;
    std::function<void()> fullScreen;
    /// They say whether there was something to do.
    std::function<bool()> undo;
    std::function<bool()> redo;
    std::function<void(bool forward)> toMark;    ///< To the finding or note after, or before.
    std::function<void(bool forward)> toProblem; ///< To what fails or warns after, or before.
    std::function<bool()> bringBack; ///< What was deleted last; whether there was anything.
};

} // namespace vantroque

#pragma once

#include "Playback/SoundRing.h"

#include <functional>
#include <memory>
#include <span>

namespace vantroque {

/// A pair of loudspeakers. It rests when it is made.
class SoundOutput {
public:
    /// Fills the whole of what is heard next, at the rate of `SoundRing`. Called on a thread of the
    /// output's own, at even distances, as long as it runs.
    using Fill = std::function<void(std::span<SoundRing::Pair>)>;

    SoundOutput() = default;
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;
    virtual ~SoundOutput() = default; ///< After it, nothing is called.

    virtual void setRunning(bool isRunning) = 0;
};

/// Blocks, maybe for seconds; any thread. Null where the machine has no sound.
using SoundOutputMaker = std::function<std::unique_ptr<SoundOutput>(SoundOutput::Fill)>;

/// Through whatever the desktop plays sound with.
std::unique_ptr<SoundOutput> makeSdlOutput(SoundOutput::Fill fill);

} // namespace vantroque

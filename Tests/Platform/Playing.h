#pragma once

#include "VantroquePlatform/Playback/DecoderEngine.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vantroque {

/// Runs the event loop until the condition holds. False when that takes far too long.
bool runUntil(const std::function<bool()>& condition);

/// A file that is being played.
class Playing {
public:
    explicit Playing(const std::filesystem::path& file, double rate = 25,
                     DecoderEngine::Settings settings = silent());

    /// Without loudspeakers.
    static DecoderEngine::Settings silent();

    DecoderEngine& engine() { return *m_engine; }
    void close() { m_engine.reset(); }
    /// Waits until it is ready or has failed, and tells which.
    PlaybackEngine::State opened();
    /// Aims there and waits for the frame; null when it does not come, or lies after the end.
    std::shared_ptr<const PlayedFrame> frame(std::int64_t number, double rate = 0);
    /// The number that the picture of that frame carries.
    std::optional<int> shown(std::int64_t number, double rate = 0);

    std::vector<std::int64_t> arrived; ///< Frames, as they came to hand.
    int stateChanges = 0;

private:
    std::unique_ptr<DecoderEngine> m_engine;
};

} // namespace vantroque

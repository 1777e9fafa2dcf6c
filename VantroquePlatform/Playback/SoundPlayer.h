#pragma once

#include "VantroquePlatform/Playback/SoundFeed.h"
#include "VantroquePlatform/Playback/SoundOutput.h"

#include <memory>
#include <optional>

namespace vantroque {

/// Plays feeds through an output, which is opened with the first of them and in the background,
/// since that may take a while.
class SoundPlayer {
public:
    explicit SoundPlayer(SoundOutputMaker maker);
    SoundPlayer(const SoundPlayer&) = delete;
    SoundPlayer& operator=(const SoundPlayer&) = delete;
    ~SoundPlayer();

    void play(std::shared_ptr<SoundFeed> feed);
    void stop();
    /// The moment that is heard. It stays at the start until the first sound is heard, unless that
    /// takes too long; nothing where there is no sound.
    std::optional<double> seconds() const;
    /// The feed that is played; null when it rests.
    std::shared_ptr<SoundFeed> feed() const;

private:
    struct Shared;

    void setRunning(bool isRunning) const;

    std::shared_ptr<Shared> m_shared;
    SoundFeed::Clock::time_point m_began;
};

} // namespace vantroque

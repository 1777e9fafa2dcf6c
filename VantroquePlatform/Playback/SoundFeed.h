#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"
#include "Playback/SoundRing.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>

namespace vantroque {

/// Sound from one moment on: takes it from the ring that the decoder fills, and tells what is heard
/// by when it was taken. A device that asks for nothing for a while has gone away: it gets silence
/// from then on, since its sound would come late. Any thread.
class SoundFeed {
public:
    using Clock = std::chrono::steady_clock;

    /// Fails when there is no memory for a ring.
    static Result<std::shared_ptr<SoundFeed>> make(double startSeconds);
    SoundFeed(const SoundFeed&) = delete;
    SoundFeed& operator=(const SoundFeed&) = delete;
    ~SoundFeed();

    const FileDescriptor& descriptor() const { return m_descriptor; }
    /// Fills with what has come so far, and with silence.
    void fill(std::span<SoundRing::Pair> pairs, Clock::time_point now);
    /// What is heard, from the moment on when the first of it was taken; nothing once the device
    /// has gone away.
    std::optional<double> heardSeconds(Clock::time_point now) const;
    /// So long a device may rest.
    static constexpr std::chrono::seconds longestRest{2};
    /// Where what was taken ends.
    double takenSeconds() const;
    double startSeconds() const { return m_startSeconds; }
    /// There is no sound in the file.
    bool hasEnded() const { return m_ring->hasEnded != 0; }

private:
    bool isLost(Clock::time_point now) const;

    SoundFeed(FileDescriptor descriptor, SoundRing* ring, double startSeconds)
        : m_descriptor(std::move(descriptor)), m_ring(ring), m_startSeconds(startSeconds)
    {
    }

    FileDescriptor m_descriptor;
    SoundRing* m_ring;
    double m_startSeconds;
    mutable std::mutex m_mutex; ///< Of what follows.
    std::uint64_t m_taken = 0;  ///< The ring's own count could be changed by the decoder.
    bool m_isLost = false;      ///< The device has gone away.
    double m_heard = 0;         ///< Pairs that had been heard at `m_at`,
    double m_soon = 0;          ///< and those that will have been when more is asked for.
    Clock::time_point m_at;
};

} // namespace vantroque

#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace vantroque {

/// Sound on its way from the decoder to the window, in memory that both map: stereo as floats. One
/// writes, one reads. The counts only ever rise; neither side trusts that of the other.
struct SoundRing {
    static constexpr int samplesPerSecond = 48'000;
    static constexpr std::uint64_t capacity = 1U
                                              << 15U; ///< Pairs of samples: two thirds of a second.

    struct Pair {
        float left = 0;
        float right = 0;
    };

    std::atomic<std::uint64_t> written = 0;
    std::atomic<std::uint64_t> read = 0;
    std::atomic<std::uint64_t> hasEnded = 0; ///< Not 0: nothing more will be written.
    std::array<Pair, capacity> pairs{};

    Pair& at(std::uint64_t position) { return pairs[position % capacity]; }
};

static_assert(std::atomic<std::uint64_t>::is_always_lock_free);

} // namespace vantroque

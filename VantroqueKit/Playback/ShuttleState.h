#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace vantroque {

/// The speed of a player that is driven with J, K and L.
struct ShuttleState {
    enum class Direction { forward, backward };

    static constexpr std::array<double, 5> speeds{1, 2, 4, 8, 16};
    static constexpr double slowSpeed = 0.25;

    double rate = 0; ///< A signed multiple of real time; 0 is stopped.

    bool isStopped() const { return rate == 0; }
    bool isReverse() const { return rate < 0; }
    bool isSlow() const;
    /// "2x", "16x rev", "0.25x rev"; nothing when stopped or at real time.
    std::optional<QString> label() const;

    /// Each press in the same direction is faster, the other direction starts anew at real time.
    /// There is no step down. `slow` is slow whatever the rate was.
    void press(Direction direction, bool slow);
    void stop() { rate = 0; }
    /// Real time from a stop, a stop from any speed.
    void toggle() { rate = isStopped() ? 1 : 0; }

    struct Advance {
        std::int64_t frames = 0;
        double carry = 0; ///< The part of a frame that the next tick starts from.
        bool operator==(const Advance&) const = default;
    };
    /// How many whole frames a walk over `seconds` covers. What is no number of frames that anybody
    /// could walk gives none.
    static Advance advance(double rate, double frameRate, double seconds, double carry);

    bool operator==(const ShuttleState&) const = default;
};

} // namespace vantroque

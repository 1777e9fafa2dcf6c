#pragma once

#include "Playback/ShuttleState.h"
#include "VantroqueApp/Model/Playback/PlayerClock.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>

namespace vantroque {

/// Turns the speed that J, K and L ask for into motion: the player runs at it or, where it cannot,
/// is walked frame by frame. Main thread.
class ShuttleEngine : public QObject {
    Q_OBJECT

public:
    /// `clock` must outlive it.
    explicit ShuttleEngine(PlayerClock& clock) : m_clock(clock) {}

    /// Runs the player at a rate, 0 to rest; false when it cannot run at that.
    std::function<bool(double rate)> applyRate = [](double) { return false; };
    /// Steps by so many frames; false when there is nowhere to go.
    std::function<bool(std::int64_t frames)> stepFrames = [](std::int64_t) { return false; };
    std::function<double()> frameRate = [] { return 0.0; };

    const ShuttleState& state() const { return m_state; }
    bool isWalking() const { return m_walking; }

    void press(ShuttleState::Direction direction, bool slow);
    void stop();
    void toggle();
    /// Brings the motion in line with the state.
    void apply();
    /// The player has come to rest by itself. A walk, during which it rests, goes on.
    void playbackEnded();
    void tearDown();

Q_SIGNALS:
    void changed();

private:
    void advance();
    void setState(const ShuttleState& state);

    PlayerClock& m_clock;
    ShuttleState m_state;
    std::unique_ptr<Ticker> m_walk;
    double m_carry = 0; ///< The part of a frame that the next tick starts from.
    bool m_walking = false;
};

} // namespace vantroque

#pragma once

#include <functional>
#include <memory>

namespace vantroque {

/// A call that comes later, or every so often, for as long as this lives. It may let go of this.
class Ticker {
public:
    Ticker() = default;
    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;
    virtual ~Ticker() = default;
};

/// The time that players go by. Main thread.
class PlayerClock {
public:
    PlayerClock() = default;
    PlayerClock(const PlayerClock&) = delete;
    PlayerClock& operator=(const PlayerClock&) = delete;
    virtual ~PlayerClock() = default;

    /// Seconds that never go back, from any moment on.
    virtual double now() const = 0;
    /// Calls `tick` every so many seconds, for the first time after as many.
    virtual std::unique_ptr<Ticker> every(double seconds, std::function<void()> tick) = 0;
    /// Calls `tick` once, no sooner than in so many seconds.
    virtual std::unique_ptr<Ticker> after(double seconds, std::function<void()> tick) = 0;
};

/// The machine's.
class SystemClock : public PlayerClock {
public:
    double now() const override;
    std::unique_ptr<Ticker> every(double seconds, std::function<void()> tick) override;
    std::unique_ptr<Ticker> after(double seconds, std::function<void()> tick) override;
};

} // namespace vantroque

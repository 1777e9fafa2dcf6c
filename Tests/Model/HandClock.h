#pragma once

#include "VantroqueApp/Model/Playback/PlayerClock.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace vantroque {

/// A clock that stands still until the test lets time pass.
class HandClock : public PlayerClock {
public:
    double now() const override { return m_now; }
    std::unique_ptr<Ticker> every(double seconds, std::function<void()> tick) override
    {
        return std::make_unique<HandTicker>(*this, seconds, seconds, std::move(tick));
    }
    std::unique_ptr<Ticker> after(double seconds, std::function<void()> tick) override
    {
        return std::make_unique<HandTicker>(*this, seconds, never, std::move(tick));
    }

    /// All ticks that fall into that time come when they are due.
    void pass(double seconds)
    {
        const double end = m_now + seconds;
        while (HandTicker* next = nextUntil(end)) {
            m_now = next->due;
            next->due += next->interval;
            const auto tick = next->tick; // which may let go of it
            tick();
            afterTick();
        }
        m_now = end;
    }
    /// What must be done before time goes on.
    std::function<void()> afterTick = [] {};
    bool isTicking() const { return !m_tickers.empty(); }

private:
    static constexpr double never = std::numeric_limits<double>::infinity();

    struct HandTicker : Ticker {
        HandTicker(HandClock& itsClock, double seconds, double itsInterval,
                   std::function<void()> itsTick)
            : clock(itsClock),
              interval(itsInterval),
              due(itsClock.now() + seconds),
              tick(std::move(itsTick))
        {
            clock.m_tickers.push_back(this);
        }
        ~HandTicker() override { std::erase(clock.m_tickers, this); }

        HandClock& clock;
        double interval;
        double due;
        std::function<void()> tick;
    };

    HandTicker* nextUntil(double end) const
    {
        constexpr double slack = 1e-9;
        const auto next = std::ranges::min_element(m_tickers, {}, &HandTicker::due);
        return next != m_tickers.end() && (*next)->due <= end + slack ? *next : nullptr;
    }

    double m_now = 1000;
    std::vector<HandTicker*> m_tickers;
};

} // namespace vantroque

#include "VantroqueApp/Model/Playback/PlayerClock.h"

#include <QTimer>

#include <chrono>
#include <cmath>

namespace vantroque {

namespace {

class TimerTicker : public Ticker {
public:
    TimerTicker(std::chrono::milliseconds time, bool once, std::function<void()> tick)
        : m_tick(std::move(tick))
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(time);
        m_timer.setSingleShot(once);
        // A copy, since the tick may let go of all of this.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            const auto call = m_tick;
            call();
        });
        m_timer.start();
    }

private:
    std::function<void()> m_tick;
    QTimer m_timer;
};

} // namespace

double SystemClock::now() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

std::unique_ptr<Ticker> SystemClock::every(double seconds, std::function<void()> tick)
{
    const auto time = std::chrono::milliseconds(std::lround(seconds * 1000));
    return std::make_unique<TimerTicker>(time, false, std::move(tick));
}

std::unique_ptr<Ticker> SystemClock::after(double seconds, std::function<void()> tick)
{
    const auto time = std::chrono::milliseconds(std::lround(std::ceil(seconds * 1000)));
    return std::make_unique<TimerTicker>(time, true, std::move(tick));
}

} // namespace vantroque

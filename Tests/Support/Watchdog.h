#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ctime>

namespace vantroque {

/// Turns the event loop of the main thread, and watches how long it takes from one turn to the
/// next: so long nobody is answered. The loop does not rest meanwhile, so that every stretch was
/// work.
class Watchdog {
public:
    using Duration = std::chrono::duration<double>;
#if defined(__OPTIMIZE__) && !defined(VANTROQUE_SANITIZED)
    static constexpr Duration frame = std::chrono::milliseconds(16);
#else
    static constexpr Duration frame = std::chrono::milliseconds(240); // such programs are slow
#endif

    Watchdog()
    {
        m_restless.start(0);
        begin();
    }

    /// Forgets what was. The first stretch begins here.
    void begin()
    {
        m_longest = m_longestWork = {};
        m_long = 0;
        m_last = now();
        m_lastWork = work();
    }

    /// By the clock.
    Duration longest() const
    {
        return m_longest;
    }
    /// As the thread's own time, which does not go on while it waits or others have the processor.
    Duration longestWork() const
    {
        return m_longestWork;
    }
    /// The number of stretches in which the thread computed for longer than a frame lasts.
    int longerThanAFrame() const
    {
        return m_long;
    }

    /// Until `condition` holds, but not after `limit`.
    template<typename Condition>
    bool run(Condition condition, Duration limit = Duration(60))
    {
        const Duration end = now() + limit;
        while (!condition() && now() < end)
            turn();
        return condition();
    }
    /// Some turns more, in which what is due is done and painted.
    void settle(int turns = 20)
    {
        for (int i = 0; i < turns; ++i)
            turn();
    }

private:
    static Duration now()
    {
        return std::chrono::steady_clock::now().time_since_epoch();
    }
    static Duration work()
    {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }

    void turn()
    {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        const Duration at = now();
        const Duration worked = work() - m_lastWork;
        m_longest = std::max(m_longest, at - m_last);
        m_longestWork = std::max(m_longestWork, worked);
        if (worked > frame)
            ++m_long;
        m_last = at;
        m_lastWork += worked;
    }

    QTimer m_restless;
    Duration m_last{};
    Duration m_lastWork{};
    Duration m_longest{};
    Duration m_longestWork{};
    int m_long = 0;
};

} // namespace vantroque

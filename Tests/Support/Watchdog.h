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
    /// How long a stretch may take. `Benchmarks/run frames` sets VANTROQUE_STRETCH to 16, the
    /// milliseconds of a frame, on a machine that does nothing else. Tests run beside other work,
    /// where processors are shared, and look only for what blocks: a wait, or work that grows with
    /// the list.
    static Duration allowed()
    {
#if defined(NDEBUG) && !defined(VANTROQUE_SANITIZED) // what is tested is optimised
        constexpr int besideOtherWork = 64;
#else
        constexpr int besideOtherWork = 240;
#endif
        bool given = false;
        const int milliseconds = qEnvironmentVariableIntValue("VANTROQUE_STRETCH", &given);
        return std::chrono::milliseconds(given ? milliseconds : besideOtherWork);
    }

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
    /// The number of stretches in which the thread computed for longer than is allowed.
    int tooLong() const
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
        if (worked > m_allowed)
            ++m_long;
        m_last = at;
        m_lastWork += worked;
    }

    const Duration m_allowed = allowed();
    QTimer m_restless;
    Duration m_last{};
    Duration m_lastWork{};
    Duration m_longest{};
    Duration m_longestWork{};
    int m_long = 0;
};

} // namespace vantroque

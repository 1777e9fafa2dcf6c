#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ctime>

namespace vantroque {

/// Watches how long the event loop of the main thread takes from one turn to the next, from when it
/// is made or last asked to begin. The loop does not rest meanwhile, so that every stretch was
/// work.
class Watchdog {
public:
    using Duration = std::chrono::duration<double>;

    Watchdog()
    {
        m_timer.callOnTimeout([this] { turn(); });
        m_timer.start(0);
        begin();
    }

    void begin()
    {
        m_longest = m_longestWork = {};
        m_long = 0;
        m_last = now();
        m_lastWork = work();
    }

    /// By the clock.
    Duration longest() const { return m_longest; }
    /// As the thread's own time, which does not go on while it waits or others have the processor.
    Duration longestWork() const { return m_longestWork; }
    /// The number of stretches in which the thread computed for longer than a frame lasts.
    int longerThanAFrame() const { return m_long; }

    /// Until `condition` holds, or not after `limit`.
    template<typename Condition>
    bool run(Condition condition, Duration limit = Duration(60))
    {
        const Duration end = now() + limit;
        while (!condition() && now() < end)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return condition();
    }
    /// For some turns more, in which what is due is done and painted.
    void settle()
    {
        constexpr int turns = 20;
        const int end = m_turns + turns;
        run([&] { return m_turns >= end; });
    }

private:
    static Duration now() { return std::chrono::steady_clock::now().time_since_epoch(); }
    static Duration work()
    {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }

    void turn()
    {
        const Duration at = now();
        const Duration atWork = work();
        m_longest = std::max(m_longest, at - m_last);
        m_longestWork = std::max(m_longestWork, atWork - m_lastWork);
        if (atWork - m_lastWork > frame)
            ++m_long;
        m_last = at;
        m_lastWork = atWork;
        ++m_turns;
    }

#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    static constexpr Duration frame = std::chrono::milliseconds(16);
#else
    static constexpr Duration frame = std::chrono::milliseconds(240);
#endif

    QTimer m_timer;
    Duration m_last{};
    Duration m_lastWork{};
    Duration m_longest{};
    Duration m_longestWork{};
    int m_long = 0;
    int m_turns = 0;
};

} // namespace vantroque

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace vantroque {

/// Does jobs one after the other on a thread of its own, which starts with the first job. At its
/// end the job at hand is finished and those after it are dropped.
class Worker {
public:
    using Job = std::function<void()>;
    enum class Priority { usual, low };

    explicit Worker(Priority priority = Priority::usual) : m_priority(priority) {}

    /// Any thread.
    void run(Job job);
    /// Blocks until all jobs are done.
    void waitUntilIdle();

private:
    void work(const std::stop_token& stop);

    const Priority m_priority;
    std::mutex m_mutex; ///< Guards what follows but the thread.
    std::condition_variable_any m_wake;
    std::condition_variable m_idle;
    std::deque<Job> m_jobs;
    bool m_isBusy = false;
    std::jthread m_thread; ///< Ends first.
};

} // namespace vantroque

#include "VantroqueApp/Model/Background/Worker.h"

#include "Base/ThreadPriority.h"

namespace vantroque {

void Worker::run(Job job)
{
    const std::scoped_lock lock(m_mutex);
    m_jobs.push_back(std::move(job));
    if (!m_thread.joinable())
        m_thread = std::jthread([this](const std::stop_token& stop) { work(stop); });
    m_wake.notify_one();
}

void Worker::waitUntilIdle()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_jobs.empty() && !m_isBusy; });
}

void Worker::work(const std::stop_token& stop)
{
    if (m_priority == Priority::low)
        ThreadPriority::giveWay();
    std::unique_lock lock(m_mutex);
    while (m_wake.wait(lock, stop, [this] { return !m_jobs.empty(); }) && !stop.stop_requested()) {
        m_isBusy = true;
        {
            const Job job = std::move(m_jobs.front());
            m_jobs.pop_front();
            lock.unlock();
            job();
            // What the job holds goes without the lock as well.
        }
        lock.lock();
        m_isBusy = false;
        if (m_jobs.empty())
            m_idle.notify_all();
    }
}

} // namespace vantroque

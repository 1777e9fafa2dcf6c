#pragma once

#include "VantroqueApp/Model/Analyzing/AnalysisQueue.h"

#include <QSet>
#include <QTimer>

#include <chrono>
#include <functional>

namespace vantroque {

/// How far the queue has come with the files that were added since it last ended, verdicts and
/// trouble counted apart. Main thread.
class QueueRun : public QObject {
    Q_OBJECT

public:
    using Seconds = std::chrono::duration<double>;
    using Clock = std::function<Seconds()>;

    struct Counts {
        std::size_t all = 0;
        std::size_t done = 0;
        std::size_t failed = 0;      ///< A platform refuses them.
        std::size_t notAnalyzed = 0; ///< Their analysis came to nothing.
        bool operator==(const Counts&) const = default;
    };

    /// `files` and `queue` must outlive it.
    QueueRun(const FileList& files, const AnalysisQueue& queue, Clock clock = steadyClock());
    static Clock steadyClock();

    const Counts& counts() const { return m_counts; }
    bool isRunning() const { return m_counts.done < m_counts.all; }
    std::optional<QUuid> runningFile() const;
    /// From the second file on, by how long those before took.
    std::optional<Seconds> timeLeft() const;
    /// Since its first file was added, or until its last was done.
    Seconds duration() const;

Q_SIGNALS:
    void changed();
    void ended();

private:
    void takeNew();
    void countSoon();
    void count();

    const FileList& m_files;
    const AnalysisQueue& m_queue;
    const Clock m_clock;
    QSet<QUuid> m_ids;
    Counts m_counts;
    Seconds m_begun{};
    Seconds m_ended{};
    QTimer m_soon;
};

} // namespace vantroque

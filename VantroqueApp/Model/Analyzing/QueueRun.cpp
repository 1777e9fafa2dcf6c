#include "VantroqueApp/Model/Analyzing/QueueRun.h"

#include "VantroqueApp/Model/Files/FileStanding.h"

#include <algorithm>
#include <utility>

namespace vantroque {

namespace {

bool isOnItsWay(const FileAnalysis& file)
{
    return file.is<FileAnalysis::Running>()
           || (file.is<FileAnalysis::Queued>() && !file.hasCurrentMedia());
}

} // namespace

QueueRun::Clock QueueRun::steadyClock()
{
    return [] { return Seconds(std::chrono::steady_clock::now().time_since_epoch()); };
}

QueueRun::QueueRun(const FileList& files, const AnalysisQueue& queue, Clock clock)
    : m_files(files), m_queue(queue), m_clock(std::move(clock))
{
    constexpr int milliseconds = 100; // many files may change at a time
    m_soon.setSingleShot(true);
    m_soon.setInterval(milliseconds);
    connect(&m_soon, &QTimer::timeout, this, &QueueRun::count);
    // Thousands may have come: what the list itself does with them is enough for one turn.
    connect(&files, &FileList::queued, this, &QueueRun::takeNew, Qt::QueuedConnection);
    connect(&queue, &AnalysisQueue::starting, this, &QueueRun::takeNew, Qt::QueuedConnection);
    connect(&files, &FileList::listChanged, this, &QueueRun::countSoon);
    connect(&files, &FileList::entryChanged, this, &QueueRun::countSoon);
    connect(&queue, &AnalysisQueue::progressChanged, this, &QueueRun::countSoon);
    connect(&queue, &AnalysisQueue::finished, this, &QueueRun::count);
    takeNew();
}

void QueueRun::takeNew()
{
    const bool isNew = !isRunning();
    QSet<QUuid> due;
    due.reserve(std::ssize(m_files.analyses()));
    for (const FileAnalysis& file : m_files.analyses())
        if (isOnItsWay(file))
            due.insert(file.id);
    if (due.isEmpty())
        return;
    if (isNew) {
        m_ids.clear();
        m_begun = m_clock();
    }
    m_ids.unite(due);
    count();
}

void QueueRun::countSoon()
{
    if (!m_ids.isEmpty() && !m_soon.isActive())
        m_soon.start();
}

void QueueRun::count()
{
    m_soon.stop();
    const bool wasRunning = isRunning();
    Counts counts;
    for (const FileAnalysis& file : m_files.analyses()) {
        if (!m_ids.contains(file.id))
            continue;
        const FileStanding standing = standingOf(file);
        ++counts.all;
        counts.done += isOnItsWay(file) ? 0 : 1;
        counts.failed += standing == FileStanding::failed ? 1 : 0;
        counts.notAnalyzed += standing == FileStanding::notAnalyzed ? 1 : 0;
    }
    m_counts = counts;
    const bool ends = wasRunning && !isRunning();
    if (ends)
        m_ended = m_clock();
    Q_EMIT changed();
    if (ends && counts.all > 0)
        Q_EMIT ended();
}

std::optional<QUuid> QueueRun::runningFile() const
{
    const auto& files = m_files.analyses();
    const auto running = std::ranges::find_if(
        files, [](const FileAnalysis& file) { return file.is<FileAnalysis::Running>(); });
    return running == files.end() ? std::nullopt : std::optional(running->id);
}

std::optional<QueueRun::Seconds> QueueRun::timeLeft() const
{
    if (m_counts.done == 0 || !isRunning())
        return std::nullopt;
    const auto running = runningFile();
    const auto* progress = running ? m_queue.progress(*running) : nullptr;
    const double measured =
        static_cast<double>(m_counts.done) + (progress != nullptr ? progress->fraction : 0);
    const double toGo = static_cast<double>(m_counts.all) - measured;
    return duration() / measured * std::max(toGo, 0.0);
}

QueueRun::Seconds QueueRun::duration() const
{
    return (isRunning() ? m_clock() : m_ended) - m_begun;
}

} // namespace vantroque

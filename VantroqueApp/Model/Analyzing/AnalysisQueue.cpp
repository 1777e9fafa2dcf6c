#include "VantroqueApp/Model/Analyzing/AnalysisQueue.h"

#include "Base/Cancellation.h"
#include "Review/ReviewStore.h"
#include "Tools/FFTool.h"
#include "VantroqueApp/Model/Files/KeptReport.h"

#include <algorithm>

namespace vantroque {

namespace {

/// Waits for a full analysis, not for a new score of what is measured already.
bool isDue(const FileAnalysis& entry)
{
    return entry.is<FileAnalysis::Queued>() && !entry.hasCurrentMedia();
}

/// The search may start processes, each of which takes a busy machine longer than a window.
std::shared_future<bool> isMissing(const char* tool)
{
    return std::async(std::launch::async, [tool] { return !FFTool::find(tool); }).share();
}

} // namespace

AnalysisQueue::AnalysisQueue(FileList& files, const ProfileChoice& choice,
                             const AnalysisEngine& engine)
    : m_files(files),
      m_choice(choice),
      m_engine(engine),
      m_probeMissing(isMissing("ffprobe")),
      m_decoderMissing(isMissing("ffmpeg"))
{
    connect(&files, &FileList::queued, this, &AnalysisQueue::pump);
    connect(&files, &FileList::listChanged, this, &AnalysisQueue::stopIfGone);
}

AnalysisQueue::~AnalysisQueue()
{
    if (m_running)
        m_running->stop.request_stop();
}

const AnalysisProgress::Snapshot* AnalysisQueue::progress(const QUuid& id) const
{
    const auto found = m_progress.find(id);
    return found == m_progress.end() ? nullptr : found->second.get();
}

/// The worker is free again when the last tool is gone, and its outcome finds no entry.
void AnalysisQueue::stopIfGone()
{
    if (m_running && m_files.analysis(m_running->id) == nullptr)
        m_running->stop.request_stop();
}

void AnalysisQueue::pump()
{
    if (m_running)
        return;
    const auto next = std::ranges::find_if(m_files.analyses(), isDue);
    if (next == m_files.analyses().end())
        return;
    const QUuid id = next->id;
    const FileUrl url = next->url;
    Q_EMIT starting();
    m_running = Job{id, {}};
    m_tasks.run([this, job = *m_running, url, profiles = m_choice.shared(),
                 choice = m_choice.number()] { return analyze(job, url, *profiles, choice); },
                [this, id](const Outcome& outcome) { finish(id, outcome); });
    m_files.change(id, [](FileAnalysis& entry) { entry.status = FileAnalysis::Running{}; });
}

/// In the background.
AnalysisQueue::Outcome AnalysisQueue::analyze(const Job& job, const FileUrl& url,
                                              const std::vector<Profile>& profiles,
                                              std::uint64_t choice)
{
    const Cancellation::Scope scope(job.stop.get_token());
    Outcome outcome;
    {
        AnalysisProgress progress(
            [this, id = job.id](const auto& snapshot) { tellProgress(id, snapshot); },
            {.wantsPreview = true});
        if (auto analysis = m_engine.analyze(url, profiles, progress)) {
            outcome.media = std::make_shared<const MediaInfo>(std::move(analysis->media));
            outcome.status =
                FileAnalysis::Done{KeptReport::of(std::move(analysis->report)), choice};
        } else {
            outcome.status = FileAnalysis::Failed{analysis.error().description};
        }
    }
    if (Cancellation::isRequested())
        return outcome;
    if (auto fingerprint = ReviewStore::fingerprint(url))
        outcome.fingerprint = *std::move(fingerprint);
    return outcome;
}

/// Any thread.
void AnalysisQueue::tellProgress(const QUuid& id, const AnalysisProgress::Snapshot& snapshot)
{
    m_tasks.tell([this, id, copy = std::make_shared<const AnalysisProgress::Snapshot>(snapshot)] {
        m_progress[id] = copy;
        Q_EMIT progressChanged(id);
    });
}

void AnalysisQueue::finish(const QUuid& id, const Outcome& outcome)
{
    m_progress.erase(id);
    m_running.reset();
    m_files.change(id, [&](FileAnalysis& entry) {
        entry.status = outcome.status;
        entry.media = outcome.media;
        entry.fingerprint = outcome.fingerprint;
    });
    Q_EMIT finished(id);
    pump();
}

} // namespace vantroque

// Analysing and rescoring what is in the list.

#include "Base/Cancellation.h"
#include "Review/ReviewStore.h"
#include "VantroqueApp/Model/AppModel.h"

#include <algorithm>
#include <filesystem>

namespace vantroque {

namespace {

/// Waits for a full analysis, not for a new score of what is measured already.
bool isDue(const FileAnalysis& entry)
{
    return entry.is<FileAnalysis::Queued>() && !entry.hasCurrentMedia();
}

} // namespace

// An entry that leaves the list takes along what is done for it. The worker is free again when the
// last tool is gone, and its outcome finds no entry.

void AppModel::callOff(const QUuid& id)
{
    for (auto* job : {&m_running, &m_measuring})
        if (*job && (*job)->id == id)
            (*job)->stop.request_stop();
}

void AppModel::callOffAll()
{
    for (auto* job : {&m_running, &m_measuring})
        if (*job)
            (*job)->stop.request_stop();
}

// Analysing.

void AppModel::pump()
{
    if (m_running)
        return;
    const auto next = std::ranges::find_if(m_analyses, isDue);
    if (next == m_analyses.end())
        return;
    next->status = FileAnalysis::Running{};
    const QUuid id = next->id;
    m_running = Job{id, {}};
    m_analyzer.run([this, job = *m_running, url = next->url, profiles = m_enabledProfiles,
                    choice = m_choice.load()] {
        m_mailbox.post([this, id = job.id, outcome = analyze(job, url, *profiles, choice)] {
            finish(id, outcome);
        });
    });
    Q_EMIT entryChanged(id);
}

/// On a worker.
AppModel::Outcome AppModel::analyze(const Job& job, const FileUrl& url,
                                    const std::vector<Profile>& profiles, std::uint64_t choice)
{
    const Cancellation::Scope scope(job.stop.get_token());
    Outcome outcome;
    {
        AnalysisProgress progress(
            [this, id = job.id](const AnalysisProgress::Snapshot& snapshot) {
                auto copy = std::make_shared<const AnalysisProgress::Snapshot>(snapshot);
                m_mailbox.post([this, id, copy = std::move(copy)] {
                    m_progress[id] = copy;
                    Q_EMIT progressChanged(id);
                });
            },
            {.wantsPreview = true});
        if (auto analysis = m_engine.analyze(url, profiles, progress)) {
            outcome.media = std::make_shared<const MediaInfo>(std::move(analysis->media));
            outcome.status = FileAnalysis::Done{
                std::make_shared<const FileReport>(std::move(analysis->report)), choice};
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

void AppModel::finish(const QUuid& id, const Outcome& outcome)
{
    m_progress.erase(id);
    m_running.reset();
    if (FileAnalysis* entry = find(id)) {
        entry->status = outcome.status;
        entry->media = outcome.media;
        entry->fingerprint = outcome.fingerprint;
        readSignOff(*entry);
        rescore(*entry); // the choice of profiles may have changed meanwhile
        Q_EMIT entryChanged(id);
    }
    pump();
    m_saver.schedule();
}

void AppModel::queueAgain(FileAnalysis& entry)
{
    const QUuid id = entry.id;
    entry.status = FileAnalysis::Queued{};
    entry.media = nullptr;
    Q_EMIT entryChanged(id);
    pump();
}

// Rescoring.

std::vector<QUuid> AppModel::inOrderOfUrgency() const
{
    std::vector<QUuid> ids;
    for (const FileAnalysis& entry : m_analyses)
        ids.push_back(entry.id);
    std::ranges::stable_sort(ids, {}, [this](const QUuid& id) {
        return id == m_selectedAnalysisID ? 0 : m_visible.contains(id) ? 1 : 2;
    });
    return ids;
}

void AppModel::rescoreAll()
{
    for (const QUuid& id : inOrderOfUrgency())
        if (FileAnalysis* entry = find(id))
            rescore(*entry);
}

void AppModel::rescore(FileAnalysis& entry)
{
    if (isCurrent(entry))
        return;
    if (entry.canBeScored()) {
        if (Analyzer::needsAdditionalSignalPass(*entry.media, *m_enabledProfiles))
            measureMore(entry);
        else
            score(entry);
        return;
    }
    // Measured by an older version, so it is measured afresh.
    std::error_code error;
    if (entry.is<FileAnalysis::Done>() && !entry.hasCurrentMedia()
        && std::filesystem::exists(entry.url.path(), error))
        queueAgain(entry);
}

void AppModel::score(const FileAnalysis& entry)
{
    m_scorer.run([this, id = entry.id, media = entry.media, profiles = m_enabledProfiles,
                  choice = m_choice.load()] {
        if (choice != m_choice)
            return; // the next choice scores it again
        auto report = std::make_shared<const FileReport>(Analyzer::report(*media, *profiles));
        m_mailbox.post([this, id, media, done = FileAnalysis::Done{std::move(report), choice}] {
            takeScore(id, media, done);
        });
    });
}

void AppModel::takeScore(const QUuid& id, const std::shared_ptr<const MediaInfo>& media,
                         const FileAnalysis::Done& done)
{
    FileAnalysis* entry = find(id);
    if (entry == nullptr || entry->media != media || done.choice != m_choice
        || !entry->canBeScored())
        return;
    entry->status = done;
    Q_EMIT entryChanged(id);
}

void AppModel::measureMore(const FileAnalysis& entry)
{
    const QUuid id = entry.id;
    if (!m_rescoring.insert(id).second)
        return;
    Q_EMIT entryChanged(id);
    measureNext();
}

/// Each is chosen when its turn comes: until then the list, the selection and the choice of
/// profiles may have changed.
void AppModel::measureNext()
{
    if (m_measuring)
        return;
    for (const QUuid& id : inOrderOfUrgency()) {
        const FileAnalysis* entry = m_rescoring.contains(id) ? find(id) : nullptr;
        if (entry == nullptr)
            continue;
        if (entry->canBeScored()
            && Analyzer::needsAdditionalSignalPass(*entry->media, *m_enabledProfiles))
            return startMeasuring(*entry);
        m_rescoring.erase(id);
        Q_EMIT entryChanged(id);
    }
}

void AppModel::startMeasuring(const FileAnalysis& entry)
{
    m_measuring = Job{entry.id, {}};
    m_measurer.run([this, job = *m_measuring, before = entry.media, profiles = m_enabledProfiles,
                    choice = m_choice.load()] {
        const Cancellation::Scope scope(job.stop.get_token());
        Measured measured;
        MediaInfo media = *before;
        if (auto report = m_engine.rescore(media, *profiles)) {
            measured.media = std::make_shared<const MediaInfo>(std::move(media));
            measured.report = std::make_shared<const FileReport>(*std::move(report));
        }
        m_mailbox.post([this, id = job.id, before, choice, measured] {
            finishMeasuring(id, before, choice, measured);
        });
    });
}

void AppModel::finishMeasuring(const QUuid& id, const std::shared_ptr<const MediaInfo>& before,
                               std::uint64_t choice, const Measured& measured)
{
    m_measuring.reset();
    m_rescoring.erase(id);
    FileAnalysis* entry = find(id);
    // A file that changed meanwhile is queued again, and what was measured belongs to the old one.
    if (entry != nullptr && entry->media == before && entry->canBeScored())
        takeMeasured(*entry, choice, measured);
    if (entry != nullptr && choice != m_choice)
        rescore(*entry);
    Q_EMIT entryChanged(id);
    pump();
    measureNext();
}

void AppModel::takeMeasured(FileAnalysis& entry, std::uint64_t choice, const Measured& measured)
{
    if (measured.report) {
        entry.media = measured.media;
        if (choice == m_choice || !isCurrent(entry))
            entry.status = FileAnalysis::Done{measured.report, choice};
        m_saver.schedule();
    } else if (entry.is<FileAnalysis::Queued>()) {
        entry.media = nullptr; // nothing to show, so it is analysed in full
    } else {
        entry.failedChoice = choice;
    }
}

// Sign-offs.

void AppModel::refreshSignOffs()
{
    for (const FileAnalysis& entry : m_analyses)
        readSignOff(entry);
}

void AppModel::readSignOff(const FileAnalysis& entry)
{
    if (!entry.fingerprint)
        return;
    m_files.run([this, id = entry.id, fingerprint = *entry.fingerprint] {
        const auto review = ReviewStore::peek(fingerprint);
        m_mailbox.post([this, id, fingerprint, signOff = review ? review->signOff : std::nullopt] {
            FileAnalysis* changed = find(id);
            if (changed == nullptr || changed->fingerprint != fingerprint
                || changed->signOff == signOff)
                return;
            changed->signOff = signOff;
            Q_EMIT entryChanged(id);
        });
    });
}

} // namespace vantroque

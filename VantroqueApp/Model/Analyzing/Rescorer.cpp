#include "VantroqueApp/Model/Analyzing/Rescorer.h"

#include "Base/Cancellation.h"
#include "VantroqueApp/Model/Files/KeptReport.h"

#include <utility>

namespace vantroque {

Rescorer::Rescorer(FileList& files, const ProfileChoice& choice, const AnalysisEngine& engine)
    : m_files(files), m_choice(choice), m_engine(engine)
{
    connect(&choice, &ProfileChoice::changed, this, &Rescorer::rescoreAll);
    connect(&files, &FileList::listChanged, this, &Rescorer::forgetGone);
}

Rescorer::~Rescorer()
{
    if (m_measuring)
        m_measuring->stop.request_stop();
}

bool Rescorer::isCurrent(const FileAnalysis& entry) const
{
    return entry.isScoredFor(m_choice.number());
}

bool Rescorer::couldNotRescore(const FileAnalysis& entry) const
{
    return entry.is<FileAnalysis::Done>() && !isCurrent(entry)
           && entry.failedChoice == m_choice.number();
}

void Rescorer::rescoreAll()
{
    for (const QUuid& id : m_files.inOrderOfUrgency())
        rescore(id);
}

void Rescorer::rescore(const QUuid& id)
{
    const FileAnalysis* entry = m_files.analysis(id);
    if (entry == nullptr || isCurrent(*entry))
        return;
    if (needsMeasuring(*entry)) {
        m_rescoring.insert(id);
        return measureNext();
    }
    if (entry->canBeScored())
        return score(*entry);
    if (isOfOlderVersion(*entry))
        queueIfThere(*entry);
}

/// It was measured by an older version of the program, so it is measured afresh.
bool Rescorer::isOfOlderVersion(const FileAnalysis& entry)
{
    return entry.is<FileAnalysis::Done>() && !entry.hasCurrentMedia();
}

/// A file may lie on a disk that does not answer, and then so do those beside it: the files of a
/// folder are looked for one after the other.
void Rescorer::queueIfThere(const FileAnalysis& entry)
{
    const auto folder = entry.url.path().parent_path();
    auto& sought = m_sought[folder];
    sought.insert(entry.id);
    if (sought.size() == 1)
        lookNext(folder);
}

void Rescorer::lookNext(const std::filesystem::path& folder)
{
    auto& sought = m_sought[folder];
    while (!sought.empty()) {
        const QUuid id = *sought.begin();
        const FileAnalysis* entry = m_files.analysis(id);
        if (entry != nullptr && isOfOlderVersion(*entry))
            return m_looks.run(
                [isThere = m_engine.isThere, url = entry->url] { return isThere(url); },
                [this, id, folder](bool isThere) { takeLook(id, folder, isThere); });
        sought.erase(id);
    }
    m_sought.erase(folder);
}

void Rescorer::takeLook(const QUuid& id, const std::filesystem::path& folder, bool isThere)
{
    m_sought[folder].erase(id);
    lookNext(folder);
    const FileAnalysis* entry = m_files.analysis(id);
    if (isThere && entry != nullptr && isOfOlderVersion(*entry))
        m_files.queueAgain(id);
}

void Rescorer::score(const FileAnalysis& entry)
{
    m_scorer.run(
        [this, media = entry.media, profiles = m_choice.shared(),
         choice = m_choice.number()]() -> std::optional<FileAnalysis::Done> {
            if (choice != m_choice.number())
                return std::nullopt; // the next choice scores it again
            return FileAnalysis::Done{KeptReport::of(Analyzer::report(*media, *profiles)), choice};
        },
        [this, id = entry.id, media = entry.media](const std::optional<FileAnalysis::Done>& done) {
            if (done)
                takeScore(id, media, *done);
        });
}

void Rescorer::takeScore(const QUuid& id, const std::shared_ptr<const MediaInfo>& media,
                         const FileAnalysis::Done& done)
{
    const FileAnalysis* entry = m_files.analysis(id);
    if (entry != nullptr && entry->media == media && done.choice == m_choice.number()
        && entry->canBeScored())
        m_files.change(id, [&](FileAnalysis& changed) { changed.status = done; });
}

bool Rescorer::needsMeasuring(const FileAnalysis& entry) const
{
    return entry.canBeScored()
           && Analyzer::needsAdditionalSignalPass(*entry.media, m_choice.enabledProfiles());
}

/// Each is chosen when its turn comes: until then the list, the selection and the choice of
/// profiles may have changed.
void Rescorer::measureNext()
{
    if (m_measuring || m_rescoring.empty())
        return;
    for (const QUuid& id : m_files.inOrderOfUrgency()) {
        if (!m_rescoring.contains(id))
            continue;
        if (const FileAnalysis& entry = *m_files.analysis(id); needsMeasuring(entry))
            return startMeasuring(entry);
        m_rescoring.erase(id);
    }
}

void Rescorer::startMeasuring(const FileAnalysis& entry)
{
    m_measuring = Job{entry.id, {}, entry.media, m_choice.number()};
    m_measurer.run(
        [this, job = *m_measuring, profiles = m_choice.shared()] {
            const Cancellation::Scope scope(job.stop.get_token());
            Measured measured;
            MediaInfo media = *job.before;
            if (auto report = m_engine.rescore(media, *profiles)) {
                measured.media = std::make_shared<const MediaInfo>(std::move(media));
                measured.report = KeptReport::of(*std::move(report));
            }
            return measured;
        },
        [this, job = *m_measuring](const Measured& measured) { finishMeasuring(job, measured); });
}

void Rescorer::finishMeasuring(const Job& job, const Measured& measured)
{
    m_measuring.reset();
    m_rescoring.erase(job.id);
    // A file that changed meanwhile is queued again, and what was measured belongs to the old one.
    const FileAnalysis* entry = m_files.analysis(job.id);
    if (entry != nullptr && entry->media == job.before && entry->canBeScored())
        takeMeasured(*entry, job.choice, measured);
    if (job.choice != m_choice.number())
        rescore(job.id);
    measureNext();
}

void Rescorer::takeMeasured(const FileAnalysis& entry, std::uint64_t choice,
                            const Measured& measured)
{
    const QUuid id = entry.id;
    if (!measured.report && entry.is<FileAnalysis::Queued>())
        return m_files.queueAgain(id); // nothing to show, so it is analysed in full
    m_files.change(id, [&](FileAnalysis& changed) {
        if (!measured.report) {
            changed.failedChoice = choice;
            return;
        }
        changed.media = measured.media;
        if (choice == m_choice.number() || !isCurrent(changed))
            changed.status = FileAnalysis::Done{measured.report, choice};
    });
    if (measured.report)
        Q_EMIT measuredMore(id);
}

void Rescorer::forgetGone()
{
    if (m_rescoring.empty())
        return;
    const auto before = std::exchange(m_rescoring, {});
    for (const FileAnalysis& entry : m_files.analyses())
        if (before.contains(entry.id))
            m_rescoring.insert(entry.id);
    if (m_measuring && !m_rescoring.contains(m_measuring->id))
        m_measuring->stop.request_stop();
}

} // namespace vantroque

#include "VantroqueApp/Model/Workspace/FileVerifier.h"

#include "Review/ReviewStore.h"

#include <filesystem>

namespace vantroque {

void FileVerifier::verifyRestoredFiles()
{
    for (const FileAnalysis& entry : m_files.analyses())
        if (entry.is<FileAnalysis::Done>() || entry.hasCurrentMedia())
            m_tasks.run([url = entry.url] { return lookFor(url); },
                        [this, id = entry.id](const Found& found) { take(id, found); });
}

/// In the background.
FileVerifier::Found FileVerifier::lookFor(const FileUrl& url)
{
    std::error_code error;
    Found found{.exists = std::filesystem::exists(url.path(), error), .fingerprint = {}};
    if (found.exists)
        if (auto fingerprint = ReviewStore::fingerprint(url))
            found.fingerprint = *std::move(fingerprint);
    return found;
}

void FileVerifier::take(const QUuid& id, const Found& found)
{
    const FileAnalysis* entry = m_files.analysis(id);
    if (entry == nullptr || !(entry->is<FileAnalysis::Done>() || entry->canBeScored()))
        return;
    const auto setFingerprint = [&](FileAnalysis& changed) {
        changed.fingerprint = found.fingerprint;
    };
    if (!found.exists) {
        m_files.change(id, [](FileAnalysis& gone) { gone.status = FileAnalysis::Missing{}; });
    } else if (entry->fingerprint && found.fingerprint && entry->fingerprint != found.fingerprint) {
        m_files.change(id, setFingerprint);
        m_files.queueAgain(id);
    } else if (!entry->fingerprint) {
        m_files.change(id, setFingerprint);
    }
    Q_EMIT verified(id);
}

} // namespace vantroque

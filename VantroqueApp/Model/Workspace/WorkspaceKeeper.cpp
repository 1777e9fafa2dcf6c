#include "VantroqueApp/Model/Workspace/WorkspaceKeeper.h"

#include <filesystem>

namespace vantroque {

WorkspaceKeeper::WorkspaceKeeper(FileList& files)
    : m_files(files), m_saver([&files] { return workspace(files); })
{
    connect(&files, &FileList::aboutToAddOrClear, this, &WorkspaceKeeper::finishRestoring);
    connect(&files, &FileList::contentChanged, this, &WorkspaceKeeper::schedule);
}

Workspace WorkspaceKeeper::workspace(const FileList& files)
{
    Workspace workspace;
    for (const FileAnalysis& entry : files.analyses()) {
        const auto* done = std::get_if<FileAnalysis::Done>(&entry.status);
        WorkspaceFile file = WorkspaceFile::of(entry.url);
        file.fingerprint = entry.fingerprint;
        file.report = done != nullptr ? done->report : nullptr;
        file.media = entry.media;
        if (entry.id == files.selectedAnalysisID())
            workspace.select(entry.url);
        workspace.files.push_back(std::move(file));
    }
    workspace.savedAt = QDateTime::currentDateTimeUtc();
    return workspace;
}

void WorkspaceKeeper::saveNow()
{
    if (!isRestoring()) // else the stored one is still right
        m_saver.saveNow();
}

void WorkspaceKeeper::startRestoring()
{
    std::error_code error;
    if (!std::filesystem::exists(WorkspaceStore::path(), error))
        return;
    m_stored = std::async(std::launch::async, [this] {
        auto stored = WorkspaceStore::load();
        m_mailbox.post([this] { finishRestoring(); });
        return stored;
    });
}

void WorkspaceKeeper::finishRestoring()
{
    if (!isRestoring())
        return;
    const auto stored = m_stored.get();
    restore(stored.value_or(Workspace()));
}

void WorkspaceKeeper::restore(const Workspace& stored)
{
    const auto selectedUrl = stored.selectedUrl();
    std::vector<FileAnalysis> entries;
    std::optional<QUuid> selected;
    for (const WorkspaceFile& file : stored.files) {
        FileAnalysis entry{.id = QUuid::createUuid(), .url = file.url()};
        entry.media = file.media;
        entry.fingerprint = file.fingerprint;
        // Scored for a choice of profiles that may be another by now.
        if (file.report)
            entry.status = FileAnalysis::Done{file.report, 0};
        if (!selected && selectedUrl == entry.url)
            selected = entry.id;
        entries.push_back(std::move(entry));
    }
    if (!selected && !entries.empty())
        selected = entries.front().id;
    m_files.restore(std::move(entries), selected);
    Q_EMIT restored();
}

} // namespace vantroque

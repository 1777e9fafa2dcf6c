#pragma once

#include "Base/FileUrl.h"
#include "Base/Record.h"
#include "Base/Result.h"
#include "Records/MediaInfo.h"
#include "Records/Report.h"

#include <QDateTime>
#include <QString>

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace vantroque {

/// One entry of the list of files. What was measured is shared and not copied, so that a snapshot
/// of a long list costs next to nothing; equal entries share it.
struct WorkspaceFile {
    QString path; ///< See `url`.
    std::optional<QString> fingerprint;
    std::shared_ptr<const FileReport> report; ///< Null unless the analysis came to its end.
    std::shared_ptr<const MediaInfo> media;

    static WorkspaceFile of(const FileUrl& url);
    FileUrl url() const;

    VANTROQUE_RECORD(WorkspaceFile, path, fingerprint, report, media)
};

/// The list of files, so that the window comes back as it was left.
struct Workspace {
    std::vector<WorkspaceFile> files; ///< In the order of the list.
    std::optional<QString> selectedPath;
    QDateTime savedAt;

    void select(const FileUrl& url);
    std::optional<FileUrl> selectedUrl() const;

    VANTROQUE_RECORD(Workspace, files, selectedPath, savedAt)
};

/// The workspace as one JSON file. Stateless; every operation blocks. Any thread.
namespace WorkspaceStore {

/// "workspace.json" in the support folder.
std::filesystem::path path();

/// Replaces the stored workspace; a crash leaves the old file or the new one.
Result<void> save(const Workspace& workspace);
Result<void> save(const Workspace& workspace, const std::filesystem::path& path);

/// The stored workspace. An entry that no longer decodes costs that entry and not the list, and
/// `savedAt` is then the present; nothing when no entry is left or the file cannot be read.
std::optional<Workspace> load();
std::optional<Workspace> load(const std::filesystem::path& path);

} // namespace WorkspaceStore
} // namespace vantroque

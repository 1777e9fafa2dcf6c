#pragma once

#include "VantroqueApp/Model/Background/Mailbox.h"
#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Model/Workspace/WorkspaceSaver.h"

#include <QObject>

#include <future>
#include <optional>

namespace vantroque {

/// Keeps the list between runs: brings it back at the start, and saves it when it changes. The
/// stored list is read in the background, since a long one takes longer than the window; what is
/// added meanwhile comes after it. Main thread.
class WorkspaceKeeper : public QObject {
    Q_OBJECT

public:
    /// `files` must outlive it.
    explicit WorkspaceKeeper(FileList& files);

    /// Begins to read the stored list.
    void startRestoring();
    bool isRestoring() const { return m_stored.valid(); }
    /// Waits for it.
    void finishRestoring();

    /// Saves the list in a moment.
    void schedule() { m_saver.schedule(); }
    /// Saves it, and waits until it is written.
    void saveNow();

Q_SIGNALS:
    /// The stored entries are in the list.
    void restored();

private:
    static Workspace workspace(const FileList& files);
    void restore(const Workspace& stored);

    FileList& m_files;
    WorkspaceSaver m_saver;
    Mailbox m_mailbox;
    std::future<std::optional<Workspace>> m_stored; ///< Until it is in the list; ends first.
};

} // namespace vantroque

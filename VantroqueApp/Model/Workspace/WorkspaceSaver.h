#pragma once

#include "Review/WorkspaceStore.h"
#include "VantroqueApp/Model/Background/Tasks.h"

#include <QTimer>

#include <chrono>
#include <functional>

namespace vantroque {

/// Keeps the stored workspace up to date: a burst of changes gives one save, a moment after the
/// last of them, written in the background; where changes go on and on, they are saved all the
/// same. Main thread. A failure to write is silent; the next save tries again.
class WorkspaceSaver {
public:
    struct Rests {
        std::chrono::milliseconds afterTheLast{400};
        /// Half a second is left for the writing, so that nothing is older than 5 s on the disk.
        std::chrono::milliseconds afterTheFirst{4500};
    };

    /// `snapshot` must be cheap: it is taken on the main thread.
    explicit WorkspaceSaver(std::function<Workspace()> snapshot);
    WorkspaceSaver(std::function<Workspace()> snapshot, const Rests& rests);

    void schedule();
    /// Some change still waits to be saved.
    bool isScheduled() const { return m_rest.isActive(); }
    /// Nothing waits to be saved, and nothing is being written.
    bool isIdle() const { return !isScheduled() && m_tasks.isIdle(); }
    /// Saves at once and waits until it is written.
    void saveNow();

private:
    void startSaving();

    const std::function<Workspace()> m_snapshot;
    QTimer m_rest;  ///< Begins anew with each change.
    QTimer m_limit; ///< Begins with the first change that is not saved.
    Tasks m_tasks;
};

} // namespace vantroque

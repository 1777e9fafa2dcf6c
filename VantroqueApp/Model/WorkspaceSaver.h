#pragma once

#include "Review/WorkspaceStore.h"
#include "VantroqueApp/Model/Worker.h"

#include <QTimer>

#include <functional>

namespace vantroque {

/// Keeps the stored workspace up to date: a burst of changes gives one save, a moment after the
/// last of them, written in the background. Main thread. A failure to write is silent; the next
/// save tries again.
class WorkspaceSaver {
public:
    /// `snapshot` must be cheap: it is taken on the main thread.
    explicit WorkspaceSaver(std::function<Workspace()> snapshot);

    void schedule();
    /// Saves at once and waits until it is written.
    void saveNow();

private:
    void startSaving();

    const std::function<Workspace()> m_snapshot;
    QTimer m_timer;
    Worker m_worker;
};

} // namespace vantroque

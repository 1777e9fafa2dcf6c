#include "VantroqueApp/Model/WorkspaceSaver.h"

namespace vantroque {

WorkspaceSaver::WorkspaceSaver(std::function<Workspace()> snapshot)
    : m_snapshot(std::move(snapshot))
{
    constexpr std::chrono::milliseconds rest{400};
    m_timer.setSingleShot(true);
    m_timer.setInterval(rest);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.callOnTimeout([this] { startSaving(); });
}

void WorkspaceSaver::schedule()
{
    m_timer.start();
}

void WorkspaceSaver::startSaving()
{
    // What cannot be written is lost at exit, and no reason to disturb the operator.
    m_worker.run(
        [workspace = m_snapshot()] { static_cast<void>(WorkspaceStore::save(workspace)); });
}

void WorkspaceSaver::saveNow()
{
    m_timer.stop();
    startSaving();
    m_worker.waitUntilIdle();
}

} // namespace vantroque

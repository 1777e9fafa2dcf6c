#include "VantroqueApp/Model/WorkspaceSaver.h"

namespace vantroque {

namespace {

void save(const Workspace& workspace)
{
    // What cannot be written is lost at exit, and no reason to disturb the operator.
    static_cast<void>(WorkspaceStore::save(workspace));
}

} // namespace

WorkspaceSaver::WorkspaceSaver(std::function<Workspace()> snapshot)
    : m_snapshot(std::move(snapshot))
{
    constexpr std::chrono::milliseconds rest{400};
    m_timer.setSingleShot(true);
    m_timer.setInterval(rest);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.callOnTimeout(
        [this] { m_worker.run([workspace = m_snapshot()] { save(workspace); }); });
}

void WorkspaceSaver::schedule()
{
    m_timer.start();
}

void WorkspaceSaver::saveNow()
{
    m_timer.stop();
    m_worker.run([workspace = m_snapshot()] { save(workspace); });
    m_worker.waitUntilIdle();
}

} // namespace vantroque

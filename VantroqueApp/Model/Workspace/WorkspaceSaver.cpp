#include "VantroqueApp/Model/Workspace/WorkspaceSaver.h"

namespace vantroque {

WorkspaceSaver::WorkspaceSaver(std::function<Workspace()> snapshot)
    : WorkspaceSaver(std::move(snapshot), Rests())
{
}

WorkspaceSaver::WorkspaceSaver(std::function<Workspace()> snapshot, const Rests& rests)
    : m_snapshot(std::move(snapshot))
{
    m_rest.setInterval(rests.afterTheLast);
    m_limit.setInterval(rests.afterTheFirst);
    for (QTimer* timer : {&m_rest, &m_limit}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        timer->callOnTimeout([this] { startSaving(); });
    }
}

void WorkspaceSaver::schedule()
{
    m_rest.start();
    if (!m_limit.isActive())
        m_limit.start();
}

void WorkspaceSaver::startSaving()
{
    m_rest.stop();
    m_limit.stop();
    // What cannot be written is lost at exit, and no reason to disturb the operator.
    m_tasks.run([workspace = m_snapshot()] { return WorkspaceStore::save(workspace); },
                [](const Result<void>&) {});
}

void WorkspaceSaver::saveNow()
{
    startSaving();
    m_tasks.waitUntilDone();
}

} // namespace vantroque

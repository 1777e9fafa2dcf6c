#include "VantroqueApp/Model/Compare/CompareSolo.h"

#include <QPointer>

namespace vantroque {

bool CompareSolo::start(CompareTile& tile, std::int64_t frame)
{
    stop();
    FrameSource& source = tile.pictures().source();
    if (!source.canPlay(1))
        return false;
    m_tile = &tile;
    m_playhead = std::make_unique<Playhead>(tile.file(), m_clock);
    m_playhead->seek(frame);
    m_playhead->use(&source);
    connect(m_playhead.get(), &Playhead::moved, this, &CompareSolo::moved);
    // Who hears of it lets go of the playhead, which must not be at work then.
    connect(
        m_playhead.get(), &Playhead::ended, this,
        [this, alive = QPointer(m_playhead.get())] {
            if (alive)
                Q_EMIT ended();
        },
        Qt::QueuedConnection);
    m_playhead->run(1);
    return true;
}

void CompareSolo::stop()
{
    if (m_tile == nullptr)
        return;
    m_playhead->disconnect(this);
    m_playhead->use(nullptr);
    m_playhead.reset();
    m_tile = nullptr;
}

} // namespace vantroque

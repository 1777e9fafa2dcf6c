#include "VantroqueApp/Model/Playback/FrameSource.h"

namespace vantroque {

void FrameSource::show(std::int64_t frame, const QImage& picture)
{
    m_shown = ShownFrame{frame, picture};
    Q_EMIT shownChanged();
}

} // namespace vantroque

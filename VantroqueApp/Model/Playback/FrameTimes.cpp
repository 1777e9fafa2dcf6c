#include "VantroqueApp/Model/Playback/FrameTimes.h"

#include "Probe/Prober.h"

namespace vantroque {

double FrameTimes::secondsOf(std::int64_t frame) const
{
    std::call_once(m_asked,
                   [this] { m_start = Prober::pictureStart(m_file.url, m_file.specifier()); });
    return m_start + m_file.workingRate().secondsOf(frame);
}

} // namespace vantroque

#include "Progress/AnalysisProgress.h"

#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;

QString AnalysisProgress::label(Stage stage)
{
    static const std::array labels{u"Waiting"_s,
                                   u"Reading the file"_s,
                                   u"Measuring picture and sound"_s,
                                   u"Reading on-screen text"_s,
                                   u"Reading the slate"_s,
                                   u"Measuring the 2-pop"_s,
                                   u"Checking against the platforms"_s,
                                   u"Done"_s};
    return labels.at(static_cast<std::size_t>(stage));
}

void AnalysisProgress::set(Stage stage)
{
    std::unique_lock lock(m_mutex);
    if (m_state.stage == stage)
        return;
    m_state.stage = stage;
    const Snapshot snapshot = m_state;
    lock.unlock();
    notify(snapshot);
}

void AnalysisProgress::set(const MediaInfo& probed)
{
    std::unique_lock lock(m_mutex);
    m_state.duration = probed.durationSeconds;
    m_state.pictureWidth = probed.video ? probed.video->width : 0;
    m_state.pictureHeight = probed.video ? probed.video->height : 0;
    m_state.summaryLine = probed.summaryLine();
    m_state.channelCount = probed.audio ? probed.audio->channels : 0;
    m_state.channelLayout = probed.audio ? probed.audio->channelLayout : std::nullopt;
    const Snapshot snapshot = m_state;
    lock.unlock();
    notify(snapshot);
}

void AnalysisProgress::notify(const Snapshot& snapshot) const
{
    if (m_onUpdate)
        m_onUpdate(snapshot);
}

} // namespace vantroque

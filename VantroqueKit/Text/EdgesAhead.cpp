#include "Text/EdgesAhead.h"

#include "Base/ThreadPriority.h"
#include "Text/TextPlacementReader.h"

#include <algorithm>
#include <system_error>

namespace vantroque {

EdgesAhead::EdgesAhead(const MediaInfo& media, double interval, RecognizerPool& recognizers)
    : m_media(media), m_interval(interval), m_recognizers(recognizers)
{
}

void EdgesAhead::add(const std::vector<TextRegion>& regions)
{
    if (regions.empty() || !SignalAnalyzer::leavesRoom(*m_media.video))
        return;
    {
        const std::scoped_lock lock(m_mutex);
        for (const TextRegion& region : regions)
            if (m_searches.size() < TextPlacementReader::edgeRefinementLimit)
                m_searches.push_back({region, {}});
    }
    m_wake.notify_all();
    if (m_worker.joinable())
        return;
    try {
        m_worker = std::jthread([this](const std::stop_token& stop) { work(stop); });
    } catch (const std::system_error&) {
        // Without a further thread all of it is left for later.
    }
}

bool EdgesAhead::isIdle()
{
    const std::scoped_lock lock(m_mutex);
    return m_done == m_searches.size();
}

void EdgesAhead::finish()
{
    m_worker = {};
}

std::optional<TextRegion> EdgesAhead::narrowed(const TextRegion& region) const
{
    const auto search = std::ranges::find(m_searches, region, &Search::region);
    return search != m_searches.end() ? search->narrowed : std::nullopt;
}

void EdgesAhead::work(const std::stop_token& stop)
{
    ThreadPriority::giveWay();
    const ToolContext::Scope scope(m_context);
    const auto recognizer = m_recognizers.take();
    std::unique_lock lock(m_mutex);
    while (recognizer) {
        if (!m_wake.wait(lock, stop, [&] { return m_done < m_searches.size(); })
            || stop.stop_requested())
            return;
        const TextRegion region = m_searches[m_done].region;
        lock.unlock();
        const TextRegion narrowed =
            TextPlacementReader::narrowEdges(region, m_media, 0, m_interval, **recognizer);
        lock.lock();
        m_searches[m_done++].narrowed = narrowed;
    }
}

} // namespace vantroque

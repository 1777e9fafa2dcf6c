#include "VantroqueApp/Model/Playback/FindingFocus.h"

#include "Check/EventWords.h"

#include <algorithm>

namespace vantroque {

void FindingFocus::set(std::optional<QUuid> comment, std::optional<QString> event,
                       std::optional<Highlight> highlight)
{
    m_comment = comment;
    m_event = std::move(event);
    m_highlight = std::move(highlight);
    Q_EMIT changed();
}

std::optional<Finding> FindingFocus::findingAt(std::int64_t frame) const
{
    if (!m_highlight || frame < m_highlight->first || frame > m_highlight->last)
        return std::nullopt;
    return m_highlight->finding;
}

void FindingFocus::select(const QUuid& comment)
{
    set(comment, std::nullopt, std::nullopt);
}

void FindingFocus::select(const SignalEvent& event)
{
    std::optional<Highlight> highlight;
    if (event.box)
        highlight = Highlight{.finding = {.box = *event.box,
                                          .verdict = event.verdict,
                                          .label = EventWords::atPlace(event)},
                              .first = event.frame,
                              .last = std::max(event.frame, event.endFrame.value_or(event.frame))};
    set(std::nullopt, event.id, std::move(highlight));
}

void FindingFocus::forget(const QUuid& comment)
{
    if (m_comment == comment)
        set(std::nullopt, m_event, m_highlight);
}

void FindingFocus::clear()
{
    set(std::nullopt, std::nullopt, std::nullopt);
}

} // namespace vantroque

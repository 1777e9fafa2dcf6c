#include "Check/EventOrder.h"

#include "Base/Text.h"

#include <algorithm>

namespace vantroque::EventOrder {

std::vector<SignalEvent> byFrame(std::vector<SignalEvent> events)
{
    std::ranges::stable_sort(events, {}, &SignalEvent::frame);
    for (int place = 0; SignalEvent & event : events)
        event.id = QStringLiteral("%1-%2-%3")
                       .arg(Text::utf8(enumName(event.kind)), QString::number(event.frame),
                            QString::number(place++));
    return events;
}

} // namespace vantroque::EventOrder

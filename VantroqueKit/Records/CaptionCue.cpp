#include "Records/CaptionCue.h"

#include "Base/Text.h"

namespace vantroque {

CaptionCue CaptionCue::plain(int id, double start, double end, const QString& text,
                             Placement placement)
{
    return {id, start, end, {{text}}, placement};
}

QString CaptionCue::text() const
{
    return Text::joined(runs, {}, [](const Run& run) { return run.text; });
}

int CaptionCue::lineCount() const
{
    return static_cast<int>(text().count(u'\n')) + 1;
}

} // namespace vantroque

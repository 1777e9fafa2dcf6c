#pragma once

#include "Base/Record.h"

#include <QString>

#include <vector>

namespace vantroque {

/// One caption: text that stands in the picture from one time to another.
struct CaptionCue {
    enum class Placement { bottom, top };

    /// Text in one style.
    struct Run {
        QString text; ///< May hold line feeds.
        bool italic = false;
        bool bold = false;
        bool underline = false;

        VANTROQUE_RECORD(Run, text, italic, bold, underline)
    };

    int id = 0;       ///< Number in its track, in source order, from 1.
    double start = 0; ///< Seconds from the start of the picture.
    double end = 0;
    std::vector<Run> runs; ///< In reading order.
    Placement placement = Placement::bottom;

    static CaptionCue plain(int id, double start, double end, const QString& text,
                            Placement placement = Placement::bottom);

    QString text() const;
    /// Empty lines count; an empty text has one.
    int lineCount() const;
    double duration() const { return end - start; }
    bool isShowing(double time) const { return start <= time && time < end; }

    VANTROQUE_RECORD(CaptionCue, id, start, end, runs, placement)
};
VANTROQUE_ENUM_NAMES(CaptionCue::Placement, bottom, top)

} // namespace vantroque

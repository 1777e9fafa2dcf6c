#pragma once

#include "Records/Report.h"

#include <QDateTime>
#include <QString>

#include <cstdint>

namespace vantroque {

/// A place in a file for an editor's timeline.
struct Marker {
    /// Found by the analysis, or noted by the operator.
    enum class Kind { finding, note };

    std::int64_t frame = 0; ///< From the start of the file.
    std::int64_t duration = 1;
    QString name;
    QString comment;
    Verdict verdict = Verdict::info;
    Kind kind = Kind::finding;
    QDateTime date; ///< When it was made.

    /// The frame after the last one.
    std::int64_t end() const;

    bool operator==(const Marker&) const = default;
};
VANTROQUE_ENUM_NAMES(Marker::Kind, finding, note)

/// The file that markers belong to.
struct MarkerContext {
    QString fileName;
    double frameRate = 0;
    std::int64_t frameCount = 0;
    std::int64_t startFrame = 0; ///< The frame that the file's own time code begins at.
    int width = 0;
    int height = 0;

    /// The frame rate as a whole number, and whether it runs slower than that, as 30000/1001 does.
    std::int64_t timebase() const;
    bool isNTSC() const;
    /// The file's own time code of a frame.
    QString timecode(std::int64_t frame) const;

    bool operator==(const MarkerContext&) const = default;
};

} // namespace vantroque

#pragma once

#include "Base/FrameRate.h"
#include "Records/FileReview.h"
#include "Records/Report.h"

#include <QRectF>
#include <QStringList>

#include <cstdint>
#include <variant>
#include <vector>

namespace vantroque {

/// What a timeline shows and where: findings as spans, notes as pins, frames as places on a line.
/// A plain value; lengths are in points.
struct TimelineMarks {
    std::vector<SignalEvent> events;     ///< By frame.
    std::vector<ReviewComment> comments; ///< By frame.
    std::int64_t last = 0;               ///< The last frame.
    FrameRate rate = FrameRate::television();
    QRectF line; ///< From the first frame to the last; spans lie on it, pins hang from it.

    double placeOf(std::int64_t frame) const;
    std::int64_t frameAt(double x) const;

    QRectF spanOf(const SignalEvent& event) const;
    QRectF pinOf(const ReviewComment& comment) const;

    using Mark = std::variant<std::monostate, const ReviewComment*, const SignalEvent*>;
    /// What is hit at a point: pins, which are small, before spans; of spans that lie over each
    /// other the shortest.
    Mark markAt(QPointF point) const;
    /// What lies there in words, a line each; where nothing does, the time.
    QStringList wordsAt(QPointF point) const;
};

} // namespace vantroque

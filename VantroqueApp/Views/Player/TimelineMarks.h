#pragma once

#include "Base/FrameRate.h"
#include "Records/EmptyPassages.h"
#include "Records/FileReview.h"
#include "Records/Report.h"
#include "VantroqueApp/Views/Player/TimelineRange.h"

#include <QRectF>
#include <QStringList>

#include <array>
#include <cstdint>
#include <variant>
#include <vector>

namespace vantroque {

/// What a timeline shows and where: findings as spans, notes as pins, frames as places on a line.
/// On a desk for reviewing spans lie in lanes by what they are about, above those of what is empty.
/// A plain value; lengths are in points.
struct TimelineMarks {
    enum class Lane { text, picture, sound, black, freeze, silence };
    static constexpr std::array lanes{Lane::text,  Lane::picture, Lane::sound,
                                      Lane::black, Lane::freeze,  Lane::silence};
    static Lane laneOf(SignalEvent::Kind kind);
    static QString nameOf(Lane lane);

    std::vector<SignalEvent> events;     ///< By frame.
    std::vector<ReviewComment> comments; ///< By frame.
    EmptyPassages passages;              ///< Only with lanes.
    std::int64_t last = 0;               ///< The last frame.
    FrameRate rate = FrameRate::television();
    /// From the first frame to the last; spans lie on it, pins hang from it. With lanes all of
    /// them.
    QRectF line;
    bool hasLanes = false;
    TimelineRange range; ///< What is seen of the film.

    double placeOf(std::int64_t frame) const { return placeAt(static_cast<double>(frame)); }
    /// Also between two frames.
    double placeAt(double frame) const;
    std::int64_t frameAt(double x) const;

    QRectF laneRect(Lane lane) const;
    QRectF spanOf(const SignalEvent& event) const;
    QRectF pinOf(const ReviewComment& comment) const;
    /// Of one of the last three lanes.
    const std::vector<TimeSpan>& passagesIn(Lane lane) const;
    QRectF spanOf(Lane lane, const TimeSpan& passage) const;

    using Mark = std::variant<std::monostate, const ReviewComment*, const SignalEvent*>;
    /// What is hit at a point: pins, which are small, before spans; of spans that lie over each
    /// other the shortest.
    Mark markAt(QPointF point) const;
    /// What lies there in words, a line each; where nothing does, the time.
    QStringList wordsAt(QPointF point) const;

private:
    bool hits(const QRectF& mark, QPointF point) const;
    QString words(const SignalEvent& event) const;
    QString timeOf(double frame) const;
    double frameAtTime(double seconds) const;
    double reaching(double from, double to, double& width) const;
};

} // namespace vantroque

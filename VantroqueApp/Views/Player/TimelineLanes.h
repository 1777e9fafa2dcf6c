#pragma once

#include "VantroqueApp/Views/Player/TimelineMarks.h"

#include <QPainter>
#include <QPainterPath>
#include <QUuid>

#include <optional>

/// Draws a timeline with lanes: a ruler with the notes, what was found by what it is about, and
/// what is black, frozen or silent.
namespace vantroque::TimelineLanes {

constexpr int height = 128;
constexpr int gutter = 84;
constexpr int rightInset = 16; ///< Beside the last frame.
constexpr int laneTop = 27;    ///< Of the lanes; the ruler is above them.
constexpr int foot = 5;        ///< Below them.

/// What changes while one looks.
struct State {
    std::int64_t frame = 0; ///< Under the playhead.
    std::optional<QString> selectedEvent;
    std::optional<QUuid> selectedComment;
};

void paint(QPainter& painter, const TimelineMarks& marks, const State& state);

/// A bar, whose leading edge is slanted where something only warns and there is room for it.
QPainterPath shapeOf(const SignalEvent& event, const QRectF& span);
/// Where the words on a bar begin, `width` wide, clear of the playhead; nothing where they do not
/// fit whole.
std::optional<double> labelLeft(const SignalEvent& event, const QRectF& span, double width,
                                double playhead);

} // namespace vantroque::TimelineLanes

#include "VantroqueApp/Views/Player/TimelineLanes.h"

#include "Base/Timecode.h"
#include "Check/EventWords.h"
#include "VantroqueApp/Views/Player/TimelineShapes.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace vantroque::TimelineLanes {

using namespace Qt::StringLiterals;
using Lane = TimelineMarks::Lane;

namespace {

constexpr double corner = 2;
constexpr double slant = 6;
constexpr double slantFrom = 20; ///< Width.

/// A bar that is in sight, in the order of painting: what is worse lies on top.
struct Bar {
    const SignalEvent* event;
    QRectF span;
};

std::vector<Bar> barsInSight(const TimelineMarks& marks)
{
    std::vector<Bar> bars;
    for (const Verdict verdict : {Verdict::info, Verdict::pass, Verdict::warn, Verdict::fail})
        for (const SignalEvent& event : marks.events) {
            if (event.verdict != verdict)
                continue;
            const QRectF span = marks.spanOf(event);
            if (span.right() >= marks.line.left() && span.left() <= marks.line.right())
                bars.push_back({.event = &event, .span = span});
        }
    return bars;
}

/// "0:05", "1:00:05", and between seconds with the frame, "0:05:12".
QString clock(double seconds, double step, const FrameRate& rate)
{
    const auto whole = static_cast<std::int64_t>(std::floor(seconds + 1e-6));
    const auto two = [](std::int64_t number) {
        return QString::number(number).rightJustified(2, u'0');
    };
    const QString hours = whole >= 3600 ? QString::number(whole / 3600) + u':' : QString();
    const std::int64_t minutes = whole / 60 % 60;
    QString text = hours + (hours.isEmpty() ? QString::number(minutes) : two(minutes)) + u':'
                   + two(whole % 60);
    if (step >= 1)
        return text;
    return text + u':'
           + two(std::llround((seconds - static_cast<double>(whole)) * rate.perSecond()));
}

/// In seconds, whole frames where one looks that closely.
double rulerStep(const TimelineMarks& marks)
{
    constexpr double leastPoints = 90;
    const double seconds = marks.range.length(marks.last) / marks.rate.perSecond();
    for (const double frames : {1.0, 2.0, 5.0, 10.0})
        if (frames / marks.rate.perSecond() < 1
            && frames / marks.rate.perSecond() / seconds * marks.line.width() >= leastPoints)
            return frames / marks.rate.perSecond();
    return TimelineShapes::markDistance(seconds, marks.line.width(), leastPoints);
}

/// A time that the head of the playhead would cover is left out.
void paintRuler(QPainter& painter, const TimelineMarks& marks, double playhead)
{
    constexpr int parts = 5;
    constexpr int bottom = laneTop - 4;
    constexpr int labelWidth = 72;
    constexpr QSize longMark(1, 7);
    constexpr QSize shortMark(1, 4);
    if (marks.last <= 0)
        return;
    constexpr int half = 6; // of the head
    const QFont font = Type::mono(Type::digits);
    const QFontMetricsF metrics(font);
    const double perSecond = marks.rate.perSecond();
    const double step = rulerStep(marks);
    const double begin = marks.range.first / perSecond;
    const double end = begin + marks.range.length(marks.last) / perSecond;
    for (auto mark = static_cast<std::int64_t>(std::floor(begin / step)) * parts;
         static_cast<double>(mark) * step / parts <= end; ++mark) {
        const double seconds = static_cast<double>(mark) * step / parts;
        const auto x = static_cast<int>(std::round(marks.placeAt(seconds * perSecond)));
        if (seconds < begin)
            continue;
        const QSize size = mark % parts == 0 ? longMark : shortMark;
        painter.fillRect(QRect(QPoint(x, bottom - size.height()), size), Theme::dark().controlEdge);
        if (mark % parts != 0)
            continue;
        const QString words = clock(seconds, step, marks.rate);
        if (std::abs(playhead - x) > metrics.horizontalAdvance(words) / 2 + half)
            Type::draw(painter, QRect(x - labelWidth / 2, 1, labelWidth, 14), words, font,
                       Theme::dark().text3, Qt::AlignCenter);
    }
}

void paintTracks(QPainter& painter, const TimelineMarks& marks)
{
    constexpr int left = 12;
    for (const Lane lane : TimelineMarks::lanes) {
        const QRectF track = marks.laneRect(lane);
        painter.fillRect(track, Theme::dark().readout);
        Type::draw(painter,
                   QRect(left, static_cast<int>(track.top()) - 1, gutter - left,
                         static_cast<int>(track.height()) + 2),
                   TimelineMarks::nameOf(lane), Type::text(Type::badge, QFont::Medium),
                   Theme::dark().text2);
    }
}

void paintPassages(QPainter& painter, const TimelineMarks& marks)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::dark().meterBar);
    for (const Lane lane : {Lane::black, Lane::freeze, Lane::silence})
        for (const TimeSpan& passage : marks.passagesIn(lane))
            painter.drawRoundedRect(marks.spanOf(lane, passage), corner, corner);
}

void paintBars(QPainter& painter, const std::vector<Bar>& bars, const State& state)
{
    const Theme& theme = Theme::dark();
    const Bar* selected = nullptr;
    for (const Bar& bar : bars) {
        // An edge parts what touches.
        painter.setPen(QPen(theme.ground, 1));
        painter.setBrush(bar.event->verdict == Verdict::info ? theme.text2
                                                             : theme.of(bar.event->verdict));
        painter.drawPath(shapeOf(*bar.event, bar.span));
        if (bar.event->id == state.selectedEvent)
            selected = &bar;
    }
    if (selected == nullptr)
        return;
    constexpr double ring = 1.5;
    constexpr double away = 1.5;
    painter.setPen(QPen(theme.text1, ring));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(selected->span.adjusted(-away, -away, away, away), corner + away,
                            corner + away);
}

/// Words are for bars that nothing covers.
void paintLabels(QPainter& painter, const std::vector<Bar>& bars, double playhead)
{
    const QFont font = Type::text(Type::digits, QFont::DemiBold);
    const QFontMetricsF metrics(font);
    for (auto bar = bars.begin(); bar != bars.end(); ++bar) {
        if (bar->span.width() < slantFrom || bar->event->verdict == Verdict::info)
            continue;
        const QString words = EventWords::brief(*bar->event);
        const double width = std::ceil(metrics.horizontalAdvance(words));
        const auto left = labelLeft(*bar->event, bar->span, width, playhead);
        if (!left)
            continue;
        const QRectF place(*left, bar->span.top(), width, bar->span.height());
        const bool isCovered = std::any_of(std::next(bar), bars.end(), [&](const Bar& over) {
            return over.span.intersects(place);
        });
        if (!isCovered)
            Type::draw(painter, place.toAlignedRect().adjusted(0, 0, 1, 0), words, font,
                       Theme::dark().ground);
    }
}

void paintPins(QPainter& painter, const TimelineMarks& marks, const State& state)
{
    const Theme& theme = Theme::dark();
    for (const ReviewComment& comment : marks.comments) {
        painter.setPen(QPen(theme.ground, 1));
        painter.setBrush(comment.id == state.selectedComment ? theme.accent : theme.text1);
        painter.drawPath(TimelineShapes::pin(marks.pinOf(comment)));
    }
}

} // namespace

QPainterPath shapeOf(const SignalEvent& event, const QRectF& span)
{
    QPainterPath path;
    if (event.verdict != Verdict::warn || span.width() < slantFrom) {
        path.addRoundedRect(span, corner, corner);
        return path;
    }
    path.moveTo(span.left(), span.bottom());
    path.lineTo(span.left() + slant, span.top());
    path.lineTo(span.right() - corner, span.top());
    path.quadTo(span.topRight(), span.topRight() + QPointF(0, corner));
    path.lineTo(span.right(), span.bottom() - corner);
    path.quadTo(span.bottomRight(), span.bottomRight() - QPointF(corner, 0));
    path.closeSubpath();
    return path;
}

std::optional<double> labelLeft(const SignalEvent& event, const QRectF& span, double width,
                                double playhead)
{
    constexpr double padding = 5;
    constexpr double fromPlayhead = 4;
    double left = span.left() + padding + (event.verdict == Verdict::warn ? slant - 2 : 0);
    const double right = span.right() - padding;
    const bool meetsPlayhead =
        playhead > left - fromPlayhead && playhead < left + width + fromPlayhead;
    if (meetsPlayhead)
        left = playhead + fromPlayhead;
    return left + width <= right ? std::optional(left) : std::nullopt;
}

void paint(QPainter& painter, const TimelineMarks& marks, const State& state)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    paintTracks(painter, marks);
    const double playhead = marks.placeOf(state.frame);
    paintRuler(painter, marks, playhead);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr double beyond = 6; // pins and the playhead reach over the ends
    const QRectF sight = marks.line.adjusted(-beyond, -marks.line.top(), beyond, foot);
    painter.save();
    painter.setClipRect(marks.range.zoom > 1 ? sight.adjusted(beyond, 0, -beyond, 0) : sight);
    paintPassages(painter, marks);
    const auto bars = barsInSight(marks);
    paintBars(painter, bars, state);
    paintLabels(painter, bars, playhead);
    painter.setClipRect(sight);
    paintPins(painter, marks, state);
    if (marks.range.shows(static_cast<double>(state.frame), marks.last))
        TimelineShapes::paintPlayhead(painter, playhead, 3, marks.line.bottom());
    painter.restore();
}

} // namespace vantroque::TimelineLanes

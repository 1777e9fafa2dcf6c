#include "VantroqueApp/Views/Player/TimelineMarks.h"

#include "Base/Timecode.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr double spanHeight = 8;
constexpr double leastSpan = 4;
constexpr double pinWidth = 8;
constexpr double pinHeight = 11;
constexpr double pinBelow = 2; ///< The line.
constexpr double reach = 3;    ///< How far off a mark is hit.

bool hits(const QRectF& mark, QPointF point)
{
    return mark.adjusted(-reach, -reach, reach, reach).contains(point);
}

} // namespace

double TimelineMarks::placeOf(std::int64_t frame) const
{
    if (last <= 0)
        return line.left();
    const double share = static_cast<double>(frame) / static_cast<double>(last);
    return line.left() + std::clamp(share, 0.0, 1.0) * line.width();
}

std::int64_t TimelineMarks::frameAt(double x) const
{
    if (line.width() <= 0)
        return 0;
    const double share = std::clamp((x - line.left()) / line.width(), 0.0, 1.0);
    return std::llround(share * static_cast<double>(last));
}

QRectF TimelineMarks::spanOf(const SignalEvent& event) const
{
    const double left = placeOf(event.frame);
    const double right = placeOf(event.endFrame.value_or(event.frame));
    const double width = std::max(right - left, leastSpan);
    return {std::min(left, line.right() - width), line.center().y() - spanHeight / 2, width,
            spanHeight};
}

QRectF TimelineMarks::pinOf(const ReviewComment& comment) const
{
    return {placeOf(comment.frame) - pinWidth / 2, line.center().y() + pinBelow, pinWidth,
            pinHeight};
}

TimelineMarks::Mark TimelineMarks::markAt(QPointF point) const
{
    for (const ReviewComment& comment : comments)
        if (hits(pinOf(comment), point))
            return &comment;
    const SignalEvent* found = nullptr;
    for (const SignalEvent& event : events)
        if (hits(spanOf(event), point)
            && (found == nullptr || spanOf(event).width() < spanOf(*found).width()))
            found = &event;
    return found != nullptr ? Mark(found) : Mark();
}

QStringList TimelineMarks::wordsAt(QPointF point) const
{
    constexpr int mostWords = 8; // a tip is no list
    const auto time = [this](std::int64_t frame) { return Timecode(frame, rate).text(); };
    QStringList words;
    for (const ReviewComment& comment : comments)
        if (hits(pinOf(comment), point))
            words << u"%1  %2"_s.arg(time(comment.frame),
                                     comment.text.isEmpty() ? u"Drawing"_s : comment.text);
    for (const SignalEvent& event : events)
        if (hits(spanOf(event), point)) {
            const bool lasts = event.endFrame.value_or(event.frame) > event.frame;
            const QString until = lasts ? u" to "_s + time(*event.endFrame) : QString();
            words << u"%1%2  %3"_s.arg(time(event.frame), until, event.text);
        }
    if (words.isEmpty())
        return {time(frameAt(point.x()))};
    const auto more = words.size() - mostWords;
    if (more > 0)
        words = words.first(mostWords) << u"and %1 more"_s.arg(more);
    return words;
}

} // namespace vantroque

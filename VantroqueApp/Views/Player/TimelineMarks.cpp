#include "VantroqueApp/Views/Player/TimelineMarks.h"

#include "Base/Timecode.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;
using Kind = SignalEvent::Kind;

namespace {

constexpr double spanHeight = 8;
constexpr double leastSpan = 4;
constexpr double pinWidth = 8;
constexpr double pinHeight = 11;
constexpr double pinBelow = 2;  ///< The line.
constexpr double pinAbove = 15; ///< The lanes.
constexpr double laneHeight = 12;
constexpr double lanePitch = 16;
constexpr double laneGap = 4; ///< Between findings and what is empty.

QString sentenceOf(TimelineMarks::Lane lane)
{
    using Lane = TimelineMarks::Lane;
    return lane == Lane::black    ? u"Black picture"_s
           : lane == Lane::freeze ? u"Frozen picture"_s
                                  : u"Silence"_s;
}

} // namespace

TimelineMarks::Lane TimelineMarks::laneOf(Kind kind)
{
    switch (kind) {
    case Kind::safeArea:
    case Kind::safeZone:
    case Kind::captionSpelling:
    case Kind::captionDoubled: return Lane::text;
    case Kind::phase:
    case Kind::deadChannel:
    case Kind::alertTone:
    case Kind::clipping: return Lane::sound;
    case Kind::levels:
    case Kind::blackFrame:
    case Kind::flashFrame:
    case Kind::duplicateFrame:
    case Kind::psyFlash:
    case Kind::psyRed:
    case Kind::psyExtended:
    case Kind::psyPattern:
    case Kind::decoding: break;
    }
    return Lane::picture;
}

QString TimelineMarks::nameOf(Lane lane)
{
    switch (lane) {
    case Lane::text: return u"text"_s;
    case Lane::picture: return u"picture"_s;
    case Lane::sound: return u"sound"_s;
    case Lane::black: return u"black"_s;
    case Lane::freeze: return u"freeze"_s;
    case Lane::silence: break;
    }
    return u"silence"_s;
}

double TimelineMarks::placeAt(double frame) const
{
    if (last <= 0)
        return line.left();
    const double known = std::clamp(frame, 0.0, static_cast<double>(last));
    return line.left() + (known - range.first) / range.length(last) * line.width();
}

std::int64_t TimelineMarks::frameAt(double x) const
{
    if (line.width() <= 0)
        return 0;
    const double share = std::clamp((x - line.left()) / line.width(), 0.0, 1.0);
    return std::llround(range.first + share * range.length(last));
}

/// A passage ends where its first frame after it would begin.
double TimelineMarks::frameAtTime(double seconds) const
{
    return seconds * rate.perSecond();
}

QRectF TimelineMarks::laneRect(Lane lane) const
{
    const auto place = static_cast<double>(lane);
    const double gap = lane >= Lane::black ? laneGap : 0;
    return {line.left(), line.top() + place * lanePitch + gap, line.width(), laneHeight};
}

/// The left of a span from one place to another, which is never too narrow to be seen.
double TimelineMarks::reaching(double from, double to, double& width) const
{
    width = std::max(to - from, leastSpan);
    const double end = last > 0 ? placeOf(last) : line.right();
    return std::min(from, end - width);
}

QRectF TimelineMarks::spanOf(const SignalEvent& event) const
{
    double width = 0;
    const double left =
        reaching(placeOf(event.frame), placeOf(event.endFrame.value_or(event.frame)), width);
    if (!hasLanes)
        return {left, line.center().y() - spanHeight / 2, width, spanHeight};
    const QRectF lane = laneRect(laneOf(event.kind));
    const double height = event.verdict == Verdict::info ? laneHeight / 2 : laneHeight;
    return {left, lane.center().y() - height / 2, width, height};
}

QRectF TimelineMarks::pinOf(const ReviewComment& comment) const
{
    const double top = hasLanes ? line.top() - pinAbove : line.center().y() + pinBelow;
    return {placeOf(comment.frame) - pinWidth / 2, top, pinWidth, pinHeight};
}

const std::vector<TimeSpan>& TimelineMarks::passagesIn(Lane lane) const
{
    return lane == Lane::black    ? passages.black
           : lane == Lane::freeze ? passages.frozen
                                  : passages.silent;
}

QRectF TimelineMarks::spanOf(Lane lane, const TimeSpan& passage) const
{
    double width = 0;
    const double left =
        reaching(placeAt(frameAtTime(passage.start)), placeAt(frameAtTime(passage.end)), width);
    const QRectF all = laneRect(lane);
    return {left, all.top(), width, all.height()};
}

/// Lanes lie close together.
bool TimelineMarks::hits(const QRectF& mark, QPointF point) const
{
    constexpr double reach = 3; // how far off a mark is hit
    const double above = hasLanes ? 1 : reach;
    const bool inSight = point.x() >= line.left() - reach && point.x() <= line.right() + reach;
    return inSight && mark.adjusted(-reach, -above, reach, above).contains(point);
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

QString TimelineMarks::timeOf(double frame) const
{
    const auto known = std::clamp(std::llround(frame), 0LL, static_cast<long long>(last));
    return Timecode(known, rate).text();
}

QString TimelineMarks::words(const SignalEvent& event) const
{
    const bool lasts = event.endFrame.value_or(event.frame) > event.frame;
    const QString until = lasts ? u" to "_s + Timecode(*event.endFrame, rate).text() : QString();
    return u"%1%2  %3"_s.arg(Timecode(event.frame, rate).text(), until, event.text);
}

QStringList TimelineMarks::wordsAt(QPointF point) const
{
    constexpr int mostWords = 8; // a tip is no list
    QStringList words;
    for (const ReviewComment& comment : comments)
        if (hits(pinOf(comment), point))
            words << u"%1  %2"_s.arg(Timecode(comment.frame, rate).text(),
                                     comment.text.isEmpty() ? u"Drawing"_s : comment.text);
    for (const SignalEvent& event : events)
        if (hits(spanOf(event), point))
            words << this->words(event);
    if (hasLanes)
        for (const Lane lane : {Lane::black, Lane::freeze, Lane::silence})
            for (const TimeSpan& passage : passagesIn(lane))
                if (hits(spanOf(lane, passage), point))
                    words << u"%1 to %2  %3"_s.arg(timeOf(frameAtTime(passage.start)),
                                                   timeOf(frameAtTime(passage.end)),
                                                   sentenceOf(lane));
    if (words.isEmpty())
        return {Timecode(frameAt(point.x()), rate).text()};
    const auto more = words.size() - mostWords;
    if (more > 0)
        words = words.first(mostWords) << u"and %1 more"_s.arg(more);
    return words;
}

} // namespace vantroque

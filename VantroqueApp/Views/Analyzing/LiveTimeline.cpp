#include "VantroqueApp/Views/Analyzing/LiveTimeline.h"

#include "VantroqueApp/Views/Analyzing/Clock.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

using Kind = AnalysisProgress::LiveEvent::Kind;

struct Lane {
    const char16_t* name;
    Kind start;
    Kind end;
};
constexpr std::array lanes{Lane{u"black", Kind::blackStart, Kind::blackEnd},
                           Lane{u"freeze", Kind::freezeStart, Kind::freezeEnd},
                           Lane{u"silence", Kind::silenceStart, Kind::silenceEnd}};
constexpr int pitch = 18;
constexpr int laneHeight = 10;
constexpr int nameWidth = 60;
constexpr int scaleHeight = 18;

/// About six marks at round times.
double markDistance(double duration)
{
    constexpr std::array steps{1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 60.0, 120.0, 300.0, 600.0, 1800.0};
    constexpr double mostMarks = 7;
    for (const double step : steps)
        if (duration / step <= mostMarks)
            return step;
    return std::ceil(duration / mostMarks);
}

} // namespace

LiveTimeline::LiveTimeline(QWidget* parent)
    : InstrumentPanel(u"TIMELINE"_s, static_cast<int>(lanes.size()) * pitch + scaleHeight, parent)
{
}

void LiveTimeline::show(const Snapshot& progress)
{
    m_duration = progress.duration;
    m_decoded = std::min(progress.mediaSeconds, progress.duration);
    m_events = progress.events;
    update();
}

double LiveTimeline::place(double seconds, const QRect& lane) const
{
    return m_duration > 0 ? lane.left() + std::clamp(seconds / m_duration, 0.0, 1.0) * lane.width()
                          : lane.left();
}

void LiveTimeline::paintContent(QPainter& painter, const QRect& content)
{
    QRect row(content.left(), content.top(), content.width(), pitch);
    const QRect all = content.adjusted(nameWidth, 0, 0, 0);
    for (const Lane& lane : lanes) {
        Type::draw(painter, QRect(row.left(), row.top(), nameWidth - 8, row.height()),
                   QString::fromUtf16(lane.name), Type::text(Type::badge), Theme::dark().text2);
        paintLane(painter,
                  QRect(all.left(), row.top() + (pitch - laneHeight) / 2, all.width(), laneHeight),
                  lane.start, lane.end);
        row.translate(0, pitch);
    }
    if (m_duration <= 0)
        return;
    painter.fillRect(QRectF(place(m_decoded, all) - 1, content.top() - 2, 1.5,
                            pitch * static_cast<double>(lanes.size()) + 2),
                     Theme::dark().accent);
    paintScale(painter, QRect(all.left(), row.top(), all.width(), scaleHeight));
}

void LiveTimeline::paintLane(QPainter& painter, const QRect& lane, Kind start, Kind end) const
{
    constexpr double shortest = 2;
    const Theme& theme = Theme::dark();
    painter.fillRect(lane, theme.track);
    painter.fillRect(
        QRectF(lane.left(), lane.top(), place(m_decoded, lane) - lane.left(), lane.height()),
        theme.hairline);
    std::optional<double> open;
    const auto mark = [&](double from, double to) {
        const double left = place(from, lane);
        painter.fillRect(
            QRectF(left, lane.top(), std::max(place(to, lane) - left, shortest), lane.height()),
            theme.meterBar);
    };
    for (const LiveEvent& event : m_events) {
        if (event.kind == start)
            open = event.time;
        else if (event.kind != end)
            continue;
        if (const auto over = event.kind == end ? event.time : event.end; open && over)
            mark(*std::exchange(open, std::nullopt), *over);
    }
    if (open)
        mark(*open, m_decoded);
}

void LiveTimeline::paintScale(QPainter& painter, const QRect& scale) const
{
    constexpr int width = 60;
    const double distance = markDistance(m_duration);
    for (int mark = 0; mark * distance <= m_duration; ++mark) {
        const double time = mark * distance;
        const int x = static_cast<int>(place(time, scale));
        const bool first = mark == 0;
        const int left = first ? x : std::min(x - width / 2, scale.right() - width + 1);
        Type::draw(painter, QRect(left, scale.top(), width, scale.height()), Clock::text(time),
                   Type::text(Type::digits), Theme::dark().text3,
                   (first                  ? Qt::AlignLeft
                    : left < x - width / 2 ? Qt::AlignRight
                                           : Qt::AlignHCenter)
                       | Qt::AlignBottom);
    }
}

} // namespace vantroque

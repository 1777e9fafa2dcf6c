#include "VantroqueApp/Views/Player/Timeline.h"

#include "VantroqueApp/Views/Style/Theme.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <array>
#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr double lineTop = 13; ///< Its middle.
constexpr double inset = 12;

/// A drop with its point at the top, hanging from the line.
QPainterPath pin(const QRectF& rect)
{
    const double radius = rect.width() / 2;
    const QPointF centre(rect.center().x(), rect.top() + radius);
    QPainterPath path(QPointF(centre.x(), rect.bottom()));
    path.lineTo(centre.x() - radius, centre.y() + radius * 0.35);
    path.arcTo(QRectF(centre.x() - radius, rect.top(), rect.width(), rect.width()), 200, -220);
    path.closeSubpath();
    return path;
}

/// Between two long marks of the scale; not more than one each 100 points or so.
double markDistance(double seconds, double width)
{
    constexpr std::array steps{1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 60.0, 300.0, 600.0, 1800.0, 3600.0};
    constexpr double leastPoints = 90;
    for (const double step : steps)
        if (step / seconds * width >= leastPoints)
            return step;
    return seconds;
}

} // namespace

Timeline::Timeline(PlayerController& player, QWidget* parent) : QWidget(parent), m_player(player)
{
    setAccessibleName(u"Timeline"_s);
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(usualHeight);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&player.playhead(), &Playhead::moved, this, qOverload<>(&QWidget::update));
    connect(&player.focus(), &FindingFocus::changed, this, qOverload<>(&QWidget::update));
    connect(&player, &PlayerController::eventsChanged, this, &Timeline::refresh);
    connect(&player, &PlayerController::modeChanged, this, &Timeline::refresh);
    connect(&player.notebook(), &Notebook::reviewChanged, this, &Timeline::refresh);
    refresh();
}

void Timeline::refresh()
{
    m_marks = {.events = m_player.detectedEvents(),
               .comments = m_player.notebook().comments(),
               .last = m_player.lastFrameIndex(),
               .rate = m_player.file().workingRate()};
    layOut();
}

void Timeline::layOut()
{
    m_marks.line = QRectF(inset, lineTop - 1, width() - 2 * inset, 2);
    update();
}

void Timeline::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layOut();
}

void Timeline::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::dark();
    QPainter painter(this);
    painter.fillRect(rect(), theme.ground);
    painter.fillRect(QRect(0, 0, width(), 1), theme.hairline);
    painter.fillRect(QRect(0, height() - 1, width(), 1), theme.hairline);
    painter.fillRect(m_marks.line, theme.hairline);
    paintScale(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    paintMarks(painter);
    paintPlayhead(painter);
}

void Timeline::paintScale(QPainter& painter) const
{
    constexpr int parts = 5;
    constexpr int longMark = 5;
    constexpr int shortMark = 3;
    const double seconds = m_marks.rate.secondsOf(m_marks.last);
    if (seconds <= 0 || m_marks.line.width() <= 0)
        return;
    const double step = markDistance(seconds, m_marks.line.width()) / parts;
    for (int mark = 0; mark * step <= seconds; ++mark) {
        const int length = mark % parts == 0 ? longMark : shortMark;
        const double x = m_marks.line.left() + mark * step / seconds * m_marks.line.width();
        painter.fillRect(QRectF(std::round(x), height() - 1 - length, 1, length),
                         Theme::dark().controlEdge);
    }
}

void Timeline::paintMarks(QPainter& painter) const
{
    constexpr double radius = 2;
    const Theme& theme = Theme::dark();
    const auto& selectedEvent = m_player.focus().selectedEventID();
    const auto& selectedNote = m_player.focus().selectedCommentID();
    // What is worse lies on top, and an edge parts what touches.
    for (const Verdict verdict : {Verdict::info, Verdict::pass, Verdict::warn, Verdict::fail})
        for (const SignalEvent& event : m_marks.events) {
            if (event.verdict != verdict)
                continue;
            const bool selected = event.id == selectedEvent;
            painter.setPen(QPen(selected ? theme.text1 : theme.ground, selected ? 1.5 : 1));
            painter.setBrush(verdict == Verdict::info ? theme.text2 : theme.of(verdict));
            painter.drawRoundedRect(m_marks.spanOf(event), radius, radius);
        }
    for (const ReviewComment& comment : m_marks.comments) {
        painter.setPen(QPen(theme.ground, 1));
        painter.setBrush(comment.id == selectedNote ? theme.accent : theme.text1);
        painter.drawPath(pin(m_marks.pinOf(comment)));
    }
}

void Timeline::paintPlayhead(QPainter& painter) const
{
    constexpr double half = 5;
    constexpr double headHeight = 8;
    const double x = m_marks.placeOf(m_player.playhead().frame());
    const QColor color = Theme::dark().accent;
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRect(QRectF(x - 0.75, 1, 1.5, height() - 2));
    painter.drawPolygon(
        QPolygonF({QPointF(x - half, 1), QPointF(x + half, 1), QPointF(x + half, headHeight - 3),
                   QPointF(x, headHeight + 1), QPointF(x - half, headHeight - 3)}));
}

bool Timeline::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    tellWhatLiesAt(help->pos(), help->globalPos());
    return true;
}

void Timeline::tellWhatLiesAt(QPointF point, QPoint onScreen)
{
    QToolTip::showText(onScreen, m_marks.wordsAt(point).join(u'\n'), this);
}

void Timeline::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    m_press = event->position();
    m_scrubs = false;
    if (std::holds_alternative<std::monostate>(m_marks.markAt(event->position())))
        m_player.seek(m_marks.frameAt(event->position().x()));
}

void Timeline::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_press) {
        const auto mark = m_marks.markAt(event->position());
        const bool onMark = !std::holds_alternative<std::monostate>(mark);
        setCursor(onMark ? Qt::PointingHandCursor : Qt::ArrowCursor);
        // Over a mark at once, elsewhere after the usual while.
        if (onMark || QToolTip::isVisible())
            tellWhatLiesAt(event->position(), event->globalPosition().toPoint());
        return;
    }
    if (!m_scrubs
        && (event->position() - *m_press).manhattanLength() < QApplication::startDragDistance())
        return;
    if (!std::exchange(m_scrubs, true))
        m_player.shuttle().stop();
    m_player.seek(m_marks.frameAt(event->position().x()));
}

void Timeline::mouseReleaseEvent(QMouseEvent* event)
{
    const bool clicked = m_press && !m_scrubs && event->button() == Qt::LeftButton;
    m_press.reset();
    m_scrubs = false;
    if (!clicked)
        return;
    const auto mark = m_marks.markAt(event->position());
    // Going there may change the marks.
    if (const auto* comment = std::get_if<const ReviewComment*>(&mark))
        m_player.goTo(ReviewComment(**comment));
    else if (const auto* finding = std::get_if<const SignalEvent*>(&mark))
        m_player.goTo(SignalEvent(**finding));
}

/// Beside the keys of the transport, which go by frames.
void Timeline::keyPressEvent(QKeyEvent* event)
{
    const auto second = static_cast<std::int64_t>(m_marks.rate.timecodeBase());
    switch (event->key()) {
    case Qt::Key_Up: return m_player.goToMark(false);
    case Qt::Key_Down: return m_player.goToMark(true);
    case Qt::Key_PageUp: return m_player.step(-second);
    case Qt::Key_PageDown: return m_player.step(second);
    default: QWidget::keyPressEvent(event);
    }
}

} // namespace vantroque

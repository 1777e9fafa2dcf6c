#include "VantroqueApp/Views/Player/Timeline.h"

#include "VantroqueApp/Views/Player/TimelineLanes.h"
#include "VantroqueApp/Views/Player/TimelineShapes.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr double lineTop = 13; ///< Its middle.
constexpr double inset = 12;

} // namespace

Timeline::Timeline(PlayerController& player, QWidget* parent) : QWidget(parent), m_player(player)
{
    setAccessibleName(u"Timeline"_s);
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(usualHeight);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&player.playhead(), &Playhead::moved, this, &Timeline::follow);
    connect(&player.focus(), &FindingFocus::changed, this, qOverload<>(&QWidget::update));
    connect(&player, &PlayerController::eventsChanged, this, &Timeline::refresh);
    connect(&player, &PlayerController::modeChanged, this, &Timeline::refresh);
    connect(&player, &PlayerController::mediaChanged, this, &Timeline::refresh);
    connect(&player.notebook(), &Notebook::reviewChanged, this, &Timeline::refresh);
    refresh();
}

void Timeline::setLanes(bool lanes)
{
    setFixedHeight(lanes ? TimelineLanes::height : usualHeight);
    m_marks.hasLanes = lanes;
    refresh();
}

void Timeline::refresh()
{
    m_marks.events = m_player.detectedEvents();
    m_marks.comments = m_player.notebook().comments();
    const bool isMeasured = m_marks.hasLanes && m_player.media();
    m_marks.passages = isMeasured ? EmptyPassages::of(*m_player.media()) : EmptyPassages();
    m_marks.last = m_player.lastFrameIndex();
    m_marks.rate = m_player.file().workingRate();
    layOut();
}

void Timeline::layOut()
{
    using namespace TimelineLanes;
    if (m_marks.hasLanes)
        m_marks.line =
            QRectF(gutter, laneTop, width() - gutter - rightInset, height() - laneTop - foot);
    else
        m_marks.line = QRectF(inset, lineTop - 1, width() - 2 * inset, 2);
    setRange(m_marks.hasLanes ? m_marks.range : TimelineRange());
    update();
}

void Timeline::setRange(const TimelineRange& range)
{
    m_marks.range = range.scrolled(0, m_marks.last);
    update();
}

/// What is sought comes into sight. While it plays, only what was in sight is followed.
void Timeline::follow()
{
    const auto frame = static_cast<double>(m_player.playhead().frame());
    const bool plays = !m_player.shuttle().state().isStopped();
    if (!plays || m_marks.range.shows(m_followed, m_marks.last))
        setRange(m_marks.range.showing(frame, m_marks.last));
    m_followed = frame;
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
    if (m_marks.hasLanes)
        return TimelineLanes::paint(painter, m_marks,
                                    {.frame = m_player.playhead().frame(),
                                     .selectedEvent = m_player.focus().selectedEventID(),
                                     .selectedComment = m_player.focus().selectedCommentID()});
    painter.fillRect(m_marks.line, theme.hairline);
    paintScale(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    paintMarks(painter);
    TimelineShapes::paintPlayhead(painter, m_marks.placeOf(m_player.playhead().frame()), 1,
                                  height() - 1);
}

void Timeline::paintScale(QPainter& painter) const
{
    constexpr int parts = 5;
    constexpr int longMark = 5;
    constexpr int shortMark = 3;
    constexpr double leastPoints = 90; ///< Between long marks.
    const double seconds = m_marks.rate.secondsOf(m_marks.last);
    if (seconds <= 0 || m_marks.line.width() <= 0)
        return;
    const double step =
        TimelineShapes::markDistance(seconds, m_marks.line.width(), leastPoints) / parts;
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
        painter.drawPath(TimelineShapes::pin(m_marks.pinOf(comment)));
    }
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

/// With Ctrl one looks closer at where the playhead is; without, what is looked at closely moves.
void Timeline::wheelEvent(QWheelEvent* event)
{
    constexpr double notch = 120;
    constexpr double share = 0.1; // of what is in sight, a notch
    const QPoint turned = event->angleDelta();
    const double notches = (turned.y() != 0 ? turned.y() : turned.x()) / notch;
    if (!m_marks.hasLanes)
        return event->ignore();
    if (event->modifiers().testFlag(Qt::ControlModifier))
        return zoomBy(std::exp2(notches / 2));
    if (m_marks.range.zoom <= 1)
        return event->ignore();
    setRange(m_marks.range.scrolled(-notches * share * m_marks.range.length(m_marks.last),
                                    m_marks.last));
}

void Timeline::zoomBy(double factor)
{
    setRange(m_marks.range.zoomed(factor, static_cast<double>(m_player.playhead().frame()),
                                  m_marks.last));
}

/// Beside the keys of the transport, which go by frames.
void Timeline::keyPressEvent(QKeyEvent* event)
{
    const auto second = static_cast<std::int64_t>(m_marks.rate.timecodeBase());
    constexpr double closer = 2;
    switch (event->key()) {
    case Qt::Key_Up: return m_player.goToMark(false);
    case Qt::Key_Down: return m_player.goToMark(true);
    case Qt::Key_PageUp: return m_player.step(-second);
    case Qt::Key_PageDown: return m_player.step(second);
    case Qt::Key_Plus:
    case Qt::Key_Equal: return m_marks.hasLanes ? zoomBy(closer) : event->ignore();
    case Qt::Key_Minus: return m_marks.hasLanes ? zoomBy(1 / closer) : event->ignore();
    default: QWidget::keyPressEvent(event);
    }
}

} // namespace vantroque

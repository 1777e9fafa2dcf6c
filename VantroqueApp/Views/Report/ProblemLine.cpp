#include "VantroqueApp/Views/Report/ProblemLine.h"

#include "Base/Text.h"
#include "Base/Timecode.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int high = 48;
constexpr int inset = 8;
constexpr int indent = 32;
constexpr int chevron = 12;
constexpr int gap = 8;
constexpr int sign = 14;
constexpr int lineHeight = 18;
constexpr int firstLine = 6;

QFont timeFont()
{
    return Type::mono(Type::caption, QFont::Medium);
}

QString otherLimits(const Problem& problem)
{
    const auto count = std::ssize(problem.limits) - 1;
    return u"%1 limit%2"_s.arg(QString::number(count), Text::plural(count));
}

QString words(const Problem& problem, const QString& time)
{
    const Problem::Limit& limit = problem.limits.front();
    QStringList words{Icons::word(problem.verdict), problem.title, problem.whose(), limit.measured,
                      u"expected %1"_s.arg(limit.expected)};
    if (problem.limits.size() > 1)
        words << u"and %1"_s.arg(otherLimits(problem));
    if (!time.isEmpty())
        words << u"at %1"_s.arg(time);
    return words.join(u", "_s);
}

} // namespace

ProblemLine::ProblemLine(const Problem& problem, double frameRate, QWidget* parent)
    : QAbstractButton(parent),
      m_problem(problem),
      m_time(problem.moment ? Timecode(problem.moment->frame, frameRate).text() : QString())
{
    setCheckable(true);
    setFocusPolicy(Qt::ClickFocus); // Tab comes to one of them
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(words(problem, m_time));
    const Problem::Limit& limit = problem.limits.front();
    setToolTip(u"%1: %2 → %3"_s.arg(problem.title, limit.measured, limit.expected));
}

QSize ProblemLine::sizeHint() const
{
    constexpr int narrowest = 200;
    return {narrowest, high};
}

QRect ProblemLine::timeRect() const
{
    if (m_time.isEmpty())
        return {};
    const int wide = QFontMetrics(timeFont()).horizontalAdvance(m_time) + 1;
    return {width() - inset - chevron - gap - wide, firstLine + lineHeight, wide, lineHeight};
}

void ProblemLine::paintEvent(QPaintEvent*)
{
    constexpr double radius = 8;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (underMouse() && !isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.hover);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
    Icons::drawVerdict(painter, QRectF(inset + 1, firstLine + 2, sign, sign), m_problem.verdict);
    const int right = width() - inset - chevron - gap;
    const QFont caption = Type::text(Type::caption);
    const int whose = QFontMetrics(caption).horizontalAdvance(m_problem.whose()) + 1;
    Type::draw(painter, QRect(right - whose, firstLine, whose, lineHeight), m_problem.whose(),
               caption, theme.text2, Qt::AlignRight | Qt::AlignVCenter);
    Type::draw(painter, QRect(indent, firstLine, right - whose - gap - indent, lineHeight),
               m_problem.title, Type::text(Type::body, QFont::Medium), theme.text1);
    const QRect time = timeRect();
    Type::draw(painter, time, m_time, timeFont(), theme.accent);
    paintPair(painter, QRect(indent, firstLine + lineHeight,
                             (m_time.isEmpty() ? right : time.left() - gap) - indent, lineHeight));
    Icons::draw(painter,
                QRectF(width() - inset - chevron, firstLine + (lineHeight - chevron) / 2.0, chevron,
                       chevron),
                isChecked() ? u"chev"_s : u"chevr"_s, theme.text2);
}

/// What was expected yields before what was measured.
void ProblemLine::paintPair(QPainter& painter, QRect room) const
{
    const Theme& theme = Theme::current();
    const Problem::Limit& limit = m_problem.limits.front();
    const QFont font = Type::text(Type::caption);
    const QFontMetrics metrics(font);
    const QString more = m_problem.limits.size() > 1 ? u"+"_s + otherLimits(m_problem) : QString();
    if (!more.isEmpty()) {
        const QFont tag = Type::text(Type::badge, QFont::Medium);
        const int wide = QFontMetrics(tag).horizontalAdvance(more) + 1;
        Type::draw(painter, QRect(room.right() - wide + 1, room.top(), wide, room.height()), more,
                   tag, theme.text2);
        room.setRight(room.right() - wide - gap);
    }
    const auto draw = [&](const QString& text, const QColor& color) {
        const int wide = std::min(metrics.horizontalAdvance(text) + 1, room.width());
        if (wide > 0)
            Type::draw(painter, QRect(room.left(), room.top(), wide, room.height()), text, font,
                       color);
        room.setLeft(room.left() + wide);
    };
    draw(limit.measured, theme.text1);
    draw(u"  →  "_s, theme.text3);
    draw(limit.expected, theme.text2);
}

void ProblemLine::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && timeRect().contains(event->position().toPoint())) {
        setDown(false);
        Q_EMIT timePressed();
        return event->accept();
    }
    QAbstractButton::mouseReleaseEvent(event);
}

void ProblemLine::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return click();
    case Qt::Key_Right: return setChecked(true);
    case Qt::Key_Left: return setChecked(false);
    case Qt::Key_Down:
    case Qt::Key_Up: Q_EMIT left(event->key() == Qt::Key_Down); return;
    default: QAbstractButton::keyPressEvent(event);
    }
}

void ProblemLine::focusInEvent(QFocusEvent* event)
{
    QAbstractButton::focusInEvent(event);
    Q_EMIT focused();
}

bool ProblemLine::event(QEvent* event)
{
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        update();
    return QAbstractButton::event(event);
}

} // namespace vantroque

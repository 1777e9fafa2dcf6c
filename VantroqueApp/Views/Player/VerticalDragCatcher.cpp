#include "VantroqueApp/Views/Player/VerticalDragCatcher.h"

#include "VantroqueApp/Views/Style/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

VerticalDragCatcher::VerticalDragCatcher(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(u"Height of the picture"_s);
    setToolTip(u"Drag to make the picture larger or smaller. Double-click for its usual height"_s);
    setFixedHeight(usualHeight);
    setCursor(Qt::SplitVCursor);
    setFocusPolicy(Qt::TabFocus);
}

void VerticalDragCatcher::paintEvent(QPaintEvent*)
{
    constexpr QSizeF grip(36, 3);
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), 1), theme.hairline);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.controlEdge);
    QRectF bar({}, grip);
    bar.moveCenter(QRectF(rect()).center() + QPointF(0, 0.5));
    painter.drawRoundedRect(bar, grip.height() / 2, grip.height() / 2);
}

void VerticalDragCatcher::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    m_from = event->globalPosition().y();
    Q_EMIT dragBegan();
}

void VerticalDragCatcher::mouseMoveEvent(QMouseEvent* event)
{
    if (m_from)
        Q_EMIT draggedBy(qRound(event->globalPosition().y() - *m_from));
}

void VerticalDragCatcher::mouseReleaseEvent(QMouseEvent*)
{
    if (m_from)
        Q_EMIT dragEnded();
    m_from.reset();
}

void VerticalDragCatcher::mouseDoubleClickEvent(QMouseEvent*)
{
    m_from.reset();
    Q_EMIT reset();
}

void VerticalDragCatcher::keyPressEvent(QKeyEvent* event)
{
    constexpr int step = 16;
    const int by = event->key() == Qt::Key_Up ? -step : event->key() == Qt::Key_Down ? step : 0;
    if (by == 0)
        return QWidget::keyPressEvent(event);
    Q_EMIT dragBegan();
    Q_EMIT draggedBy(by);
    Q_EMIT dragEnded();
}

} // namespace vantroque

#include "VantroqueApp/Views/Style/HoverEnds.h"

#include <QApplication>
#include <QCursor>
#include <QHoverEvent>
#include <QWidget>

namespace vantroque {

namespace {

bool takesThePointer(const QWidget& window)
{
    return window.isWindow() && (window.windowType() == Qt::Popup || window.isModal());
}

bool isUnderPointer(const QWidget& widget)
{
    return widget.isVisible() && widget.rect().contains(widget.mapFromGlobal(QCursor::pos()));
}

void leave(QWidget& widget)
{
    widget.setAttribute(Qt::WA_UnderMouse, false);
    QEvent left(QEvent::Leave);
    QApplication::sendEvent(&widget, &left);
    if (widget.testAttribute(Qt::WA_Hover)) {
        QHoverEvent ended(QEvent::HoverLeave, QPointF(-1, -1), QPointF(-1, -1), QPointF(0, 0));
        QApplication::sendEvent(&widget, &ended);
    }
    widget.update();
}

} // namespace

bool HoverEnds::eventFilter(QObject* watched, QEvent* event)
{
    const bool opens = event->type() == QEvent::Show;
    if ((!opens && event->type() != QEvent::Hide) || !watched->isWidgetType())
        return false;
    const auto& window = static_cast<const QWidget&>(*watched);
    if (!takesThePointer(window))
        return false;
    for (QWidget* widget : QApplication::allWidgets())
        if (widget->underMouse() && widget->window() != &window
            && (opens || !isUnderPointer(*widget)))
            leave(*widget);
    return false;
}

} // namespace vantroque

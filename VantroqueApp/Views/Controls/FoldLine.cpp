#include "VantroqueApp/Views/Controls/FoldLine.h"

#include <QKeyEvent>
#include <QShortcut>

namespace vantroque {

FoldLine::FoldLine(QWidget* parent) : QAbstractButton(parent)
{
    setCheckable(true);
    // Goes before the player's key, which copies the time code.
    connect(new QShortcut(QKeySequence::Copy, this, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, &FoldLine::copyRequested);
    setFocusPolicy(Qt::ClickFocus); // Tab comes to one of them
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FoldLine::keyPressEvent(QKeyEvent* event)
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

void FoldLine::focusInEvent(QFocusEvent* event)
{
    QAbstractButton::focusInEvent(event);
    Q_EMIT focused();
}

bool FoldLine::event(QEvent* event)
{
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        update();
    return QAbstractButton::event(event);
}

} // namespace vantroque

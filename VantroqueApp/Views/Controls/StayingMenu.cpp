#include "VantroqueApp/Views/Controls/StayingMenu.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>

namespace vantroque {

bool StayingMenu::triggerAndStay(QAction* action)
{
    if (action == nullptr || !action->isEnabled() || action->isSeparator())
        return false;
    action->trigger();
    return true;
}

void StayingMenu::mousePressEvent(QMouseEvent* event)
{
    m_pressed = actionAt(event->pos());
    QMenu::mousePressEvent(event);
}

/// On a small screen the menu opens under the pointer, and the release that ends the press on its
/// button must not tick what happens to be there.
void StayingMenu::mouseReleaseEvent(QMouseEvent* event)
{
    if (std::exchange(m_pressed, nullptr) != nullptr && !triggerAndStay(actionAt(event->pos())))
        QMenu::mouseReleaseEvent(event);
}

void StayingMenu::keyPressEvent(QKeyEvent* event)
{
    const bool presses = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return
                         || event->key() == Qt::Key_Enter;
    if (!presses || !triggerAndStay(activeAction()))
        QMenu::keyPressEvent(event);
}

} // namespace vantroque

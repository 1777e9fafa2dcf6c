#pragma once

#include <QMenu>

namespace vantroque {

/// A menu of switches: it stays open while they are thrown.
class StayingMenu : public QMenu {
    Q_OBJECT

public:
    using QMenu::QMenu;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    static bool triggerAndStay(QAction* action);

    const QAction* m_pressed = nullptr; ///< What the pointer was pressed on.
};

} // namespace vantroque

#pragma once

#include <QPointer>
#include <QWidget>

namespace vantroque {

/// Shows where the keyboard is, once the keyboard is used to get there. One for the application;
/// what it draws belongs to the window that it draws in.
class FocusRing : public QObject {
public:
    FocusRing();

    bool isShown() const { return m_ring && m_ring->isVisible(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();
    void hide();

    bool m_byKeyboard = false;
    QPointer<QWidget> m_ring;
};

} // namespace vantroque

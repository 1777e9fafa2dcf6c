#pragma once

#include <QWidget>

namespace vantroque {

/// Shows where the keyboard is, once the keyboard is used to get there. One for the application.
class FocusRing : public QWidget {
public:
    FocusRing();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();
    static QRect ringed(const QWidget& focused);

    bool m_byKeyboard = false;
};

} // namespace vantroque

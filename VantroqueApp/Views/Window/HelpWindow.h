#pragma once

#include <QWidget>

class QMenu;
class QTextBrowser;
class QUrl;

namespace vantroque {

/// A window in which the pages for the operator are read, with the way back and forward among them
/// and to each. Escape hides it.
class HelpWindow : public QWidget {
public:
    explicit HelpWindow(QWidget* owner);

    void show(const QUrl& page);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* bar();
    QMenu* contents();

    QTextBrowser* m_page;
};

} // namespace vantroque

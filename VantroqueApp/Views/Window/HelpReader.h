#pragma once

#include "VantroqueApp/Views/Window/HelpPage.h"

#include <QObject>

class QWidget;

namespace vantroque {

class HelpWindow;

/// Shows the pages for the operator: in the browser, or in a window of its own where the desktop
/// has none.
class HelpReader : public QObject {
public:
    /// `owner` is the widget whose window its own belongs to, and outlives it.
    explicit HelpReader(QWidget& owner);

    /// Asks the desktop for its browser first, without waiting for the answer.
    void show(const HelpPage& page);

private:
    void answer(const QUrl& file, bool hasBrowser);
    void showHere(const QUrl& file);

    QWidget& m_owner;
    HelpWindow* m_window = nullptr; ///< Once it was needed.
};

} // namespace vantroque

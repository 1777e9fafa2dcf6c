#pragma once

#include "VantroqueApp/Model/Compare/ComparePair.h"

#include <QWidget>

class QStackedWidget;

namespace vantroque {

class CompareBar;
class CompareGrid;
class PairPage;

/// Versions of a film side by side, over the whole window.
class CompareView : public QWidget {
    Q_OBJECT

public:
    /// `compare` must outlive it.
    explicit CompareView(CompareController& compare, QWidget* parent = nullptr);

    ComparePair& pair() { return m_pair; }
    /// What a notice may lie on.
    QWidget& pages();

Q_SIGNALS:
    /// The user wants the reports back. Emitted while a key is dealt with: a slot that
    /// deletes the view is connected as queued.
    void left();

private:
    void addKeys();
    TransportActions transportActions();
    void showMode();

    CompareController& m_compare;
    ComparePair m_pair;
    QStackedWidget* m_pages;
    CompareGrid* m_grid;
    PairPage* m_page;
    CompareBar* m_bar;
};

} // namespace vantroque

#pragma once

#include "VantroqueApp/Model/Compare/ComparePair.h"

#include <QWidget>

#include <functional>

class QStackedWidget;

namespace vantroque {

class CompareBar;
class CompareGrid;
class PairPage;

/// Versions of a film side by side, over the whole window.
class CompareView : public QWidget {
    Q_OBJECT

public:
    /// `compare` must outlive it; `leave` goes back to the reports.
    CompareView(CompareController& compare, std::function<void()> leave, QWidget* parent = nullptr);

    ComparePair& pair() { return m_pair; }
    /// What a notice may lie on.
    QWidget& pages();

private:
    void addKeys();
    TransportActions transportActions(std::function<void()> leave);
    void showMode();

    CompareController& m_compare;
    ComparePair m_pair;
    QStackedWidget* m_pages;
    CompareGrid* m_grid;
    PairPage* m_page;
    CompareBar* m_bar;
};

} // namespace vantroque

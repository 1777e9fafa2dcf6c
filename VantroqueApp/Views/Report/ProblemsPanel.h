#pragma once

#include "Check/Problems.h"

#include <QWidget>

class QBoxLayout;
class QLabel;
class QToolButton;

namespace vantroque {

class ProblemRow;

/// What is wrong with a file, each cause once, worst first.
class ProblemsPanel : public QWidget {
    Q_OBJECT

public:
    explicit ProblemsPanel(QWidget* parent = nullptr);

    /// Those of another file are all closed. Moments count frames at `frameRate`.
    void show(std::vector<Problem> problems, double frameRate, bool fresh);
    /// Opens the next one, or the one before, and goes to where it is.
    void step(bool forward);

Q_SIGNALS:
    void momentChosen(const vantroque::SignalEvent& event);
    void copyRequested();
    /// One was opened by stepping.
    void rowShown(QWidget* row);

private:
    QWidget* heading();
    void refill(bool fresh);
    void addRow(const Problem& problem);
    void showCurrent();
    /// Where `m_current` is in the list; its size when nowhere.
    std::size_t current() const;

    std::vector<Problem> m_problems;
    double m_frameRate = 0;
    QLabel* m_count;
    QToolButton* m_previous = nullptr;
    QToolButton* m_next = nullptr;
    QToolButton* m_copy = nullptr;
    QLabel* m_none;
    QBoxLayout* m_list;
    std::vector<ProblemRow*> m_rows;
    std::optional<QString> m_current; ///< The check where the keyboard is, or was stepped to.
};

} // namespace vantroque

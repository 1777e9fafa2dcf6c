#pragma once

#include "Check/Problems.h"
#include "VantroqueApp/Views/Report/OpenRows.h"

#include <QTimer>
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

    /// Those of a file. `conflict` says that no file can suit all platforms. `open` is what is open
    /// of the file, is kept up and must stay. Moments count frames at `frameRate`.
    void show(std::vector<Problem> problems, const std::optional<QString>& conflict,
              double frameRate, OpenRows& open);
    /// There is room for a problem on one line.
    void setWide(bool wide);
    /// Opens the next one, or the one before, and goes to where it is.
    void step(bool forward);

Q_SIGNALS:
    void momentChosen(const QString& check, const vantroque::CheckMoment& moment);
    void platformChosen(const QString& profile, const QString& check);
    void copyRequested();
    /// One was opened by stepping.
    void rowShown(QWidget* row);

private:
    QWidget* heading();
    void sayCopied(bool copied);
    void noteOpen(const ProblemRow& row);
    void refill();
    void addRow(const Problem& problem);
    void showCurrent();
    /// Where `m_current` is in the list; its size when nowhere.
    std::size_t current() const;

    std::vector<Problem> m_problems;
    double m_frameRate = 0;
    QLabel* m_count;
    QToolButton* m_previous = nullptr;
    QToolButton* m_next = nullptr;
    QWidget* m_steps = nullptr;
    QToolButton* m_copy = nullptr;
    QTimer m_copied; ///< Runs while the button says that it was done.
    QLabel* m_conflict;
    QLabel* m_none;
    QBoxLayout* m_list;
    std::vector<ProblemRow*> m_rows;
    bool m_wide = false;
    OpenRows m_noFile;
    OpenRows* m_open = &m_noFile;
    std::optional<QString> m_current; ///< The check where the keyboard is, or was stepped to.
};

} // namespace vantroque

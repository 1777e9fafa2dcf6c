#pragma once

#include "Check/Problems.h"

#include <QFrame>

class QBoxLayout;

namespace vantroque {

class ProblemLine;

/// A problem that opens to what each platform asks for, and how to fix it.
class ProblemRow : public QFrame {
    Q_OBJECT

public:
    ProblemRow(Problem problem, double frameRate, QWidget* parent = nullptr);

    const Problem& problem() const { return m_problem; }
    ProblemLine& line() { return *m_line; }
    bool isOpen() const;
    void setOpen(bool open);
    /// To where it is on the picture, if it is anywhere.
    void go();

Q_SIGNALS:
    void momentChosen(const vantroque::SignalEvent& event);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showDetails(bool open);
    QWidget* details();

    const Problem m_problem;
    const double m_frameRate;
    ProblemLine* m_line;
    QBoxLayout* m_layout;
    QWidget* m_details = nullptr; ///< Once it was opened.
};

} // namespace vantroque

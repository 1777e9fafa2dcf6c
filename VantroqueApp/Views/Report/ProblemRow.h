#pragma once

#include "Check/Problems.h"

#include <QFrame>

class QBoxLayout;
class QLabel;

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
    void setWide(bool wide);
    /// To where it is on the picture, if it is anywhere.
    void go();

Q_SIGNALS:
    void momentChosen(const QString& check, const vantroque::CheckMoment& moment);
    /// One of its platforms was.
    void platformChosen(const QString& profile, const QString& check);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showDetails(bool open);
    QWidget* details();
    void addLimit(QBoxLayout& layout, const Problem::Limit& limit);
    void copy() const;

    const Problem m_problem;
    const double m_frameRate;
    ProblemLine* m_line;
    QBoxLayout* m_layout;
    QWidget* m_details = nullptr; ///< Once it was opened.
    QLabel* m_whole = nullptr;    ///< What the line has no room for.
};

} // namespace vantroque

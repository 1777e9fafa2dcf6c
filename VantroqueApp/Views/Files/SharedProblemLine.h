#pragma once

#include "Check/SharedProblems.h"
#include "VantroqueApp/Views/Controls/FoldLine.h"

namespace vantroque {

/// A problem of several files: what, measured and expected, how many of them and whom it costs.
class SharedProblemLine : public FoldLine {
public:
    /// `of` so many files, which are selected. `problem` must outlive it.
    SharedProblemLine(const SharedProblem& problem, std::size_t of, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString pair() const;

    const SharedProblem& m_problem;
    const QString m_count;
};

} // namespace vantroque

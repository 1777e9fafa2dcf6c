#pragma once

#include "Check/Problems.h"
#include "VantroqueApp/Views/Controls/FoldLine.h"

namespace vantroque {

/// A problem: what and whom it costs, measured, expected and when; in two lines, or in one where
/// there is room. Pressed, it opens, and leaves what was cut short to the details; the time code
/// goes there.
class ProblemLine : public FoldLine {
    Q_OBJECT

public:
    ProblemLine(const Problem& problem, double frameRate, QWidget* parent = nullptr);

    void setWide(bool wide);
    /// Not all of measured and expected is in sight.
    bool isCut() const;
    QSize sizeHint() const override;

Q_SIGNALS:
    void timePressed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// Where the parts of the row are.
    struct Places {
        QRect sign;
        QRect title;
        QRect whose;
        QRect time; ///< Nothing where there is none.
        QRect pair;
        QRect chevron;
    };

    Places places() const;
    /// The details say all of it just below.
    bool leavesPair() const { return isChecked() && isCut(); }
    void paintPair(QPainter& painter, QRect room) const;

    const Problem& m_problem;
    const QString m_time; ///< Empty where there is nothing to go to.
    bool m_wide = false;
};

} // namespace vantroque

#pragma once

#include "Check/Problems.h"

#include <QAbstractButton>

namespace vantroque {

/// A problem in two lines: what and whom it costs; measured, expected and when. Pressed, it opens;
/// the time code goes there.
class ProblemLine : public QAbstractButton {
    Q_OBJECT

public:
    ProblemLine(const Problem& problem, double frameRate, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void timePressed();
    void focused();
    void left(bool downward); ///< With an arrow key.

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRect timeRect() const;
    void paintPair(QPainter& painter, QRect room) const;

    const Problem& m_problem;
    const QString m_time; ///< Empty where there is nothing to go to.
};

} // namespace vantroque

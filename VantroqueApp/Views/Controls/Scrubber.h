#pragma once

#include <QSlider>

namespace vantroque {

/// A place on a line, to be dragged or to be moved with the keys up and down, Page up and Page down
/// (left and right step the film). A press on the line moves it there.
class Scrubber : public QSlider {
    Q_OBJECT

public:
    explicit Scrubber(const QString& accessibleName, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void scrubbed(int value); ///< By the operator.

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    double handleAt() const;
    void scrubTo(double x);
};

} // namespace vantroque

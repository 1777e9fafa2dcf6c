#pragma once

#include <QWidget>

#include <optional>

namespace vantroque {

/// The handle under the picture, by which its share of the pane is chosen: with the pointer, or
/// with the arrow keys up and down.
class VerticalDragCatcher : public QWidget {
    Q_OBJECT

public:
    static constexpr int usualHeight = 8;

    explicit VerticalDragCatcher(QWidget* parent = nullptr);

Q_SIGNALS:
    void dragBegan();
    void draggedBy(int points); ///< Since it began.
    void dragEnded();
    void reset(); ///< Back to what is usual.

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::optional<double> m_from; ///< On the screen, since the handle itself moves.
};

} // namespace vantroque

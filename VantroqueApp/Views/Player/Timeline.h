#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"
#include "VantroqueApp/Views/Player/TimelineMarks.h"

#include <QWidget>

#include <optional>

namespace vantroque {

/// The film as a line: findings, notes and the playhead. Dragging moves the playhead along; a click
/// on a mark goes to it. With lanes a part of the film can be looked at closely.
class Timeline : public QWidget {
    Q_OBJECT

public:
    static constexpr int usualHeight = 34;

    explicit Timeline(PlayerController& player, QWidget* parent = nullptr);

    /// Higher, with a lane for each thing that findings are about.
    void setLanes(bool lanes);
    const TimelineMarks& marks() const { return m_marks; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void refresh();
    void layOut();
    void follow();
    void setRange(const TimelineRange& range);
    void zoomBy(double factor);
    void paintScale(QPainter& painter) const;
    void paintMarks(QPainter& painter) const;
    void tellWhatLiesAt(QPointF point, QPoint onScreen);

    PlayerController& m_player;
    TimelineMarks m_marks;
    double m_followed = 0; ///< The frame that was under the playhead.
    std::optional<QPointF> m_press;
    bool m_scrubs = false; ///< The pointer has moved since it was pressed.
};

} // namespace vantroque

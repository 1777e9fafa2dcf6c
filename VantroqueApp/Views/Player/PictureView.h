#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"
#include "VantroqueApp/Views/Player/LaidOverlay.h"

#include <QWidget>

#include <optional>

namespace vantroque {

/// The frame on screen with what lies on it, through zoom and pan. What lies on it is drawn in the
/// background and shows as soon as it is there. It is drawn on, and takes caption files that are
/// dropped on it.
class PictureView : public QWidget {
    Q_OBJECT

public:
    explicit PictureView(PlayerController& player, QWidget* parent = nullptr);

    /// Where the picture stands, which may be beyond the edges.
    QRectF pictureRect() const;
    /// Another view shows this player meanwhile.
    void setResting(bool resting);
    /// Everything that lies on the picture now is drawn, and shows when this is next painted.
    bool isOverlayWhole() const;

Q_SIGNALS:
    void focusChanged(bool focused);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void tabletEvent(QTabletEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Drag {
        QPointF begin; ///< Of the pointer.
        QPointF pan;   ///< Of the picture by then.
    };

    void paintOverlay(QPainter& painter);
    Overlay overlay() const;
    OverlayPlace overlayPlace() const;
    void takeRoom();
    void showCursor();
    QPointF placeIn(QPointF viewport) const;
    void beginStroke(QPointF at);
    void extendStroke(QPointF to);
    void endStroke();

    PlayerController& m_player;
    LaidOverlay m_laid;
    bool m_resting = false;
    std::optional<Drag> m_drag;
    std::optional<AnnotationStroke> m_stroke; ///< That follows the pointer.
};

} // namespace vantroque

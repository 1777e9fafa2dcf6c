#pragma once

#include "VantroqueApp/Model/Compare/ComparePair.h"
#include "VantroqueApp/Views/Player/LaidOverlay.h"

#include <QWidget>

namespace vantroque {

/// A and B as one picture: A left of an edge that is dragged and B right of it, or where the two
/// differ.
class PairPicture : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive it.
    PairPicture(CompareController& compare, ComparePair& pair, QWidget* parent = nullptr);

    /// Where A's picture stands.
    QRectF pictureRect() const;
    /// What is said on the picture of how it is seen: "A − B, gain 4".
    QString label() const;
    /// What is said in the middle of it: "No difference on this frame".
    std::optional<QString> message() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    double edgeAt() const;
    bool isNearEdge(QPointF at) const;
    void dragTo(double x);
    void paintWipe(QPainter& painter, const QRectF& picture) const;
    void paintEdge(QPainter& painter, const QRectF& picture) const;
    void paintLetters(QPainter& painter, const QRectF& picture) const;
    void showGuides();
    void showWords();

    CompareController& m_compare;
    ComparePair& m_pair;
    bool m_dragging = false;
    Overlay m_overlay;
    LaidOverlay m_laid;
};

} // namespace vantroque

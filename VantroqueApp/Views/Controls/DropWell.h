#pragma once

#include <QPushButton>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace vantroque {

/// A dashed place that says where files can be dropped. The window takes the drop itself, wherever
/// it falls; the well shows that it would.
class DropWell : public QWidget {
    Q_OBJECT

public:
    /// The large one of an empty window.
    static DropWell* large(bool toolMissing, const QString& problem, QWidget* parent = nullptr);
    /// The small one under the list.
    static DropWell* small(QWidget* parent = nullptr);

    /// Of the large one: whether there is one to be read.
    void offerGuide(bool offered) { m_guide->setVisible(offered); }
    /// Something that can be dropped is over the window.
    void setInviting(bool inviting);

Q_SIGNALS:
    void pressed();
    void guideWanted(); ///< By somebody new, of the large one.

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    DropWell(int radius, int margin, QWidget* parent);
    void addGuideLine(QVBoxLayout& layout);
    void addWarning(QVBoxLayout& layout, const QString& text, const QString& hint);

    const int m_radius;
    const int m_margin;
    QWidget* m_guide = nullptr; ///< Of the large one alone.
    bool m_inviting = false;
};

} // namespace vantroque

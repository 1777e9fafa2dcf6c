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

    /// Something that can be dropped is over the window.
    void setInviting(bool inviting);

Q_SIGNALS:
    void pressed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    DropWell(int radius, int margin, QWidget* parent);
    void addWarning(QVBoxLayout& layout, const QString& text, const QString& hint);

    const int m_radius;
    const int m_margin;
    bool m_inviting = false;
};

} // namespace vantroque

#pragma once

#include <QToolButton>

namespace vantroque {

/// A button of the toolbar: icon, words, and a chevron when a menu opens from it.
class ToolButton : public QToolButton {
    Q_OBJECT

public:
    ToolButton(QString icon, const QString& text, QWidget* parent = nullptr);

    /// Without an edge, for a row of tools.
    void setPlain();
    /// Only the icon, for want of room.
    void setCompact(bool compact);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QString m_icon;
    bool m_plain = false;
    bool m_compact = false;
};

} // namespace vantroque

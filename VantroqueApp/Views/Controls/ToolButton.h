#pragma once

#include <QToolButton>

namespace vantroque {

/// A button of the toolbar: icon, words, and a chevron when a menu opens from it.
class ToolButton : public QToolButton {
    Q_OBJECT

public:
    ToolButton(QString icon, const QString& text, QWidget* parent = nullptr);

    void setMenu(QMenu* menu);
    /// Something opens from it that is no menu: it has a chevron, and is checked meanwhile.
    void setOpens();
    /// Without an edge, for a row of tools.
    void setPlain();
    /// In the accent colour, for what one most likely wants.
    void setAccented();
    enum class Parts { all, icon, words };
    /// What is left for want of room.
    void setParts(Parts parts);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void nextCheckState() override;
    void paintEvent(QPaintEvent* event) override;

private:
    int inset() const;
    bool hasIcon() const { return m_parts != Parts::words; }
    bool hasWords() const { return m_parts != Parts::icon && !text().isEmpty(); }
    bool hasChevron() const
    {
        return m_parts == Parts::all && (menu() != nullptr || m_opens) && hasWords();
    }

    const QString m_icon;
    bool m_opens = false;
    bool m_plain = false;
    bool m_accented = false;
    Parts m_parts = Parts::all;
};

} // namespace vantroque

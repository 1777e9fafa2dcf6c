#pragma once

#include <QPushButton>

namespace vantroque {

/// A saved set of platforms: its name and how many it has. Checked while it equals the choice.
class SetChip : public QPushButton {
    Q_OBJECT

public:
    static constexpr int chipHeight = 26;

    SetChip(const QString& name, std::size_t count, QWidget* parent = nullptr);

    bool shows(const QString& name, std::size_t count) const
    {
        return text() == name && m_count == QString::number(count);
    }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void renameWanted();
    void updateWanted();
    void deleteWanted();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void nextCheckState() override {} ///< The choice says it.
    void paintEvent(QPaintEvent* event) override;

private:
    void showMenu(const QPoint& place);

    const QString m_count;
};

} // namespace vantroque

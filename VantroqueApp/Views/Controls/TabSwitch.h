#pragma once

#include <QFrame>

#include <vector>

class QAbstractButton;
class QHBoxLayout;
class QPushButton;

namespace vantroque {

/// Tabs in one frame, of which one is chosen. They are pressed with Return, since the space bar
/// plays.
class TabSwitch : public QFrame {
    Q_OBJECT

public:
    explicit TabSwitch(const QString& accessibleName, QWidget* parent = nullptr);
    /// Of words alone, and without help until it is offered.
    TabSwitch(const QString& accessibleName, const QStringList& tabs, QWidget* parent = nullptr);

    /// One more tab, with an icon or, where that is empty, with words alone.
    QPushButton* add(const QString& icon, const QString& name, const QString& help);
    void rename(int tab, const QString& name);
    void choose(int tab);
    bool isChosen(int tab) const;
    /// Whether that one can be chosen, and what it is for, or why not.
    void offer(int tab, bool can, const QString& help);
    /// Icons alone, for want of room; the name is then in the help.
    void setWords(bool words);

Q_SIGNALS:
    void pressed(int tab);

private:
    struct Tab {
        QPushButton* button = nullptr;
        QString name;
        bool hasIcon = false;
    };

    std::vector<Tab> m_tabs;
    QHBoxLayout* m_layout;
};

} // namespace vantroque

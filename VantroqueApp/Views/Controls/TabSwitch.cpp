#include "VantroqueApp/Views/Controls/TabSwitch.h"

#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace vantroque {

using namespace Qt::StringLiterals;

TabSwitch::TabSwitch(const QString& accessibleName, QWidget* parent)
    : QFrame(parent), m_layout(new QHBoxLayout(this))
{
    setObjectName(u"tabSwitch"_s);
    setAccessibleName(accessibleName);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_layout->setContentsMargins(2, 2, 2, 2);
    m_layout->setSpacing(0);
}

TabSwitch::TabSwitch(const QString& accessibleName, const QStringList& tabs, QWidget* parent)
    : TabSwitch(accessibleName, parent)
{
    for (const QString& name : tabs)
        add({}, name, {});
}

QPushButton* TabSwitch::add(const QString& icon, const QString& name, const QString& help)
{
    auto* button = new QPushButton(name, this);
    button->setProperty("kind", u"tab"_s);
    button->setAccessibleName(name);
    button->setFont(Type::text(Type::caption, QFont::Medium));
    button->setToolTip(help);
    button->setCheckable(true);
    button->setAutoExclusive(true);
    button->setAutoDefault(true);
    button->setFocusPolicy(Qt::TabFocus);
    if (!icon.isEmpty())
        Icons::give(*button, icon, 16, &Theme::text2);
    const int number = static_cast<int>(m_tabs.size());
    connect(button, &QPushButton::clicked, this, [this, number] { Q_EMIT pressed(number); });
    m_layout->addWidget(button);
    m_tabs.push_back({.button = button, .name = name, .hasIcon = !icon.isEmpty()});
    return button;
}

void TabSwitch::rename(int tab, const QString& name)
{
    Tab& renamed = m_tabs.at(static_cast<std::size_t>(tab));
    if (!renamed.hasIcon || renamed.button->text() == renamed.name)
        renamed.button->setText(name);
    renamed.button->setAccessibleName(name);
    renamed.name = name;
}

void TabSwitch::choose(int tab)
{
    m_tabs.at(static_cast<std::size_t>(tab)).button->setChecked(true);
}

bool TabSwitch::isChosen(int tab) const
{
    return m_tabs.at(static_cast<std::size_t>(tab)).button->isChecked();
}

void TabSwitch::offer(int tab, bool can, const QString& help)
{
    QPushButton& button = *m_tabs.at(static_cast<std::size_t>(tab)).button;
    button.setEnabled(can);
    button.setToolTip(help);
}

void TabSwitch::setWords(bool words)
{
    for (const Tab& tab : m_tabs)
        tab.button->setText(words || !tab.hasIcon ? tab.name : QString());
}

} // namespace vantroque

#include "VantroqueApp/Views/Controls/MenuHeading.h"

#include "VantroqueApp/Views/Style/Type.h"

#include <QLabel>
#include <QMenu>
#include <QWidgetAction>

namespace vantroque::MenuHeading {

QAction* add(QMenu& menu, const QString& text)
{
    constexpr int height = 24;
    const int inset = menu.property("checklist").toBool() ? 10 : 14; // as the style has entries
    auto* label = Type::label(text, Type::badge, QFont::DemiBold, Type::Ink::text2, &menu);
    label->setFixedHeight(height);
    label->setContentsMargins(inset, 0, inset, 0);
    auto* heading = new QWidgetAction(&menu);
    heading->setText(text);
    heading->setDefaultWidget(label);
    heading->setEnabled(false);
    menu.addAction(heading);
    return heading;
}

void setText(QAction& heading, const QString& text)
{
    heading.setText(text);
    auto& shown = static_cast<QWidgetAction&>(heading);
    static_cast<QLabel*>(shown.defaultWidget())->setText(text);
}

} // namespace vantroque::MenuHeading

#include "VantroqueApp/Views/Controls/IconButton.h"

#include "VantroqueApp/Views/Style/Icons.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QToolButton>

namespace vantroque::IconButton {

using namespace Qt::StringLiterals;

QToolButton* make(const QString& icon, const QString& name, const QString& help, QWidget* parent)
{
    constexpr int side = 26;
    auto* button = new QToolButton(parent);
    button->setIcon(Icons::tool(icon));
    button->setAccessibleName(name);
    button->setToolTip(help);
    button->setProperty("kind", u"icon"_s);
    button->setFixedSize(side, side);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QToolButton* previousProblem()
{
    return make(u"up"_s, u"Previous problem"_s, u"Previous problem  (Shift+N)"_s);
}

QToolButton* nextProblem()
{
    return make(u"chev"_s, u"Next problem"_s, u"Next problem  (N)"_s);
}

QWidget* steps(QToolButton& previous, QToolButton& next)
{
    auto* frame = new QFrame;
    frame->setObjectName(u"problemSteps"_s);
    frame->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* between = new QFrame;
    between->setObjectName(u"hairline"_s);
    between->setFixedWidth(1);
    auto* layout = new QHBoxLayout(frame);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(&previous);
    layout->addWidget(between);
    layout->addWidget(&next);
    return frame;
}

} // namespace vantroque::IconButton

#include "Views/WindowFixture.h"

#include <QScrollBar>

namespace vantroque {
namespace {

/// Widgets that a person meets: what takes the focus, or can be pressed.
QStringList nameless(const QWidget& window)
{
    QStringList found;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const bool isControl = widget->focusPolicy() != Qt::NoFocus
                               || qobject_cast<const QAbstractButton*>(widget) != nullptr;
        if (!isControl || widget->isHidden() || qobject_cast<const QScrollBar*>(widget) != nullptr)
            continue;
        QAccessibleInterface* interface =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
        if (interface == nullptr || interface->text(QAccessible::Name).isEmpty()
            || interface->role() == QAccessible::NoRole)
            found << QString::fromLatin1(widget->metaObject()->className()) + u' '
                         + widget->objectName();
    }
    return found;
}

using Names = WindowTest;

TEST_F(Names, EveryControlOfAnEmptyWindowHasANameAndARole)
{
    open();
    EXPECT_EQ(nameless(window()), QStringList());
}

TEST_F(Names, EveryControlAroundAReportHasANameAndARole)
{
    open();
    drop({anyFile("fail.mp4"), anyFile("run.mp4")});
    ASSERT_TRUE(soon([&] { return model().analyses()[0].report() != nullptr; }));
    EXPECT_EQ(nameless(window()), QStringList());
}

} // namespace
} // namespace vantroque

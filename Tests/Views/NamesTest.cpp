#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Notes/CommentsPanel.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "Views/WindowFixture.h"

#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QSplitter>

namespace vantroque {
namespace {

using Interface = QAccessibleInterface*;

QString described(Interface interface)
{
    const QObject* object = interface->object();
    return u"%1 of role %2"_s
        .arg(object != nullptr ? QString::fromLatin1(object->metaObject()->className()) : u"?"_s)
        .arg(interface->role());
}

/// What one can go to or press.
bool isControl(Interface interface)
{
    switch (interface->role()) {
    case QAccessible::ScrollBar:
    case QAccessible::Grip:
    case QAccessible::Separator: return false;
    case QAccessible::Button:
    case QAccessible::ButtonMenu:
    case QAccessible::MenuBar:
    case QAccessible::MenuItem:
    case QAccessible::PopupMenu:
    case QAccessible::List:
    case QAccessible::ListItem: return true;
    default: return interface->state().focusable;
    }
}

/// Lines between parts, and the ring that shows where the keyboard is.
bool isDecoration(const QWidget& widget)
{
    return widget.objectName() == u"hairline"_s || widget.objectName() == u"focusRing"_s;
}

/// A widget that draws itself, and not for mere decoration of one that has a name.
bool isPicture(Interface interface)
{
    const auto* widget = qobject_cast<QWidget*>(interface->object());
    return widget != nullptr && !isDecoration(*widget) && widget->findChildren<QWidget*>().isEmpty()
           && qobject_cast<const QLabel*>(widget) == nullptr
           && qobject_cast<const QScrollBar*>(widget) == nullptr
           && qobject_cast<const QSplitterHandle*>(widget) == nullptr
           && widget->parentWidget() != nullptr
           && widget->parentWidget()->accessibleName().isEmpty();
}

/// Those in sight, in this and all that is in it, that lack a name or a role.
QStringList nameless(Interface interface)
{
    QStringList found;
    if (interface == nullptr || interface->state().invisible)
        return found;
    if ((isControl(interface) || isPicture(interface))
        && (interface->text(QAccessible::Name).isEmpty()
            || interface->role() == QAccessible::NoRole))
        found << described(interface);
    for (int i = 0; i < interface->childCount(); ++i)
        found << nameless(interface->child(i));
    return found;
}

class Names : public WindowTest {
protected:
    QStringList missing() { return nameless(QAccessible::queryAccessibleInterface(&window())); }
    static QStringList missing(QMenu& menu)
    {
        menu.popup(QPoint(50, 50));
        const QStringList found = nameless(QAccessible::queryAccessibleInterface(&menu));
        menu.hide();
        return found;
    }
    /// How many of that role are in sight.
    static int count(Interface interface, QAccessible::Role role)
    {
        int found = interface->role() == role && !interface->state().invisible ? 1 : 0;
        for (int i = 0; i < interface->childCount(); ++i)
            found += count(interface->child(i), role);
        return found;
    }
};

TEST_F(Names, AreThereInAnEmptyWindow)
{
    open();
    EXPECT_EQ(missing(), QStringList());
    m_window.reset();
    open(failure(u"a.json: .id: missing"_s));
    EXPECT_EQ(missing(), QStringList());
}

TEST_F(Names, AreThereInEveryStateOfAFile)
{
    open();
    drop({anyFile("fail.mp4"), anyFile("bad.mp4"), anyFile("run.mp4"), anyFile("wait.mp4")});
    ASSERT_TRUE(soon(
        [&] { return model().queue().progress(model().files().analyses()[2].id) != nullptr; }));
    for (const FileAnalysis& file : model().files().analyses()) {
        model().files().select(file.id);
        if (model().player() != nullptr) {
            ASSERT_NE(soonThe<CommentsPanel>(), nullptr);
        }
        EXPECT_EQ(missing(), QStringList()) << file.url.fileName().toStdString();
    }
    model().files().select(std::nullopt);
    EXPECT_EQ(missing(), QStringList());
}

TEST_F(Names, AreThereForEachRowOfListAndReport)
{
    open();
    drop({anyFile("fail.mp4"), anyFile("ok.mp4")});
    ASSERT_TRUE(soonIdle());
    const auto rowsOf = [](QAbstractItemView& view) {
        return count(QAccessible::queryAccessibleInterface(&view), QAccessible::ListItem);
    };
    EXPECT_EQ(rowsOf(*the<FileListView>()), 2);
    EXPECT_EQ(rowsOf(*the<ReportSections>()), the<ReportSections>()->model()->rowCount());
}

TEST_F(Names, AreThereInEveryMenu)
{
    open();
    drop({anyFile("ok.mp4")});
    ASSERT_TRUE(soonIdle());
    int menus = 0;
    for (QMenu* menu : window().findChildren<QMenu*>()) {
        if (qobject_cast<QMenuBar*>(menu->parent()) != nullptr && menu->title().isEmpty())
            continue; // for what has no room in the bar
        EXPECT_EQ(missing(*menu), QStringList())
            << menu->title().toStdString() << " in " << menu->parent()->metaObject()->className();
        ++menus;
    }
    // File, View, Appearance, Help, Export Report; Sort; Zoom, Guides, Scopes, More
    EXPECT_EQ(menus, 10);
}

TEST_F(Names, TellWhatAControlIs)
{
    open();
    drop({anyFile("ok.mp4")});
    ASSERT_TRUE(soonIdle());
    const auto role = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->role();
    };
    EXPECT_EQ(role(the<FileListView>()), QAccessible::List);
    EXPECT_EQ(role(the<ToolButton>(u"Add File"_s)), QAccessible::Button);
    EXPECT_EQ(role(the<ToolButton>(u"Export Report"_s)), QAccessible::ButtonMenu);
    EXPECT_EQ(role(the<ToolButton>(u"Profiles"_s)), QAccessible::CheckBox) << "open or not";
    EXPECT_EQ(role(the<QPushButton>(u"Clear All"_s)), QAccessible::Button);
    EXPECT_EQ(role(the<QMenuBar>()), QAccessible::MenuBar);
}

TEST_F(Names, AreMissedWhereThereAreNone)
{
    QWidget window;
    auto* button = new QPushButton(&window);
    auto* picture = new QWidget(&window);
    auto* list = new QListView(&window);
    window.show();
    const auto found = [&] { return nameless(QAccessible::queryAccessibleInterface(&window)); };
    EXPECT_EQ(found().size(), 3) << found().join(u", "_s).toStdString();
    for (QWidget* widget : {static_cast<QWidget*>(button), picture, static_cast<QWidget*>(list)})
        widget->setAccessibleName(u"named"_s);
    EXPECT_EQ(found(), QStringList());
}

} // namespace
} // namespace vantroque

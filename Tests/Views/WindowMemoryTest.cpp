#include "VantroqueApp/Views/Files/Sidebar.h"
#include "Views/WindowFixture.h"

#include <QScreen>
#include <QSplitter>

namespace vantroque {
namespace {

class MemoryOfTheWindow : public WindowTest {
protected:
    /// The window is closed, and the program starts anew.
    MainWindow& openAgain()
    {
        window().close();
        m_window.reset();
        quit();
        return open();
    }
    MainWindow& openWith(const QString& key, const QString& stored)
    {
        {
            UserDefaults defaults(QString::fromStdString((m_folder / "settings").native()));
            defaults.setText(key, stored);
        }
        return open();
    }
    bool isOnScreen()
    {
        return window().screen()->availableGeometry().contains(QRect(window().pos(), QSize(96, 1)));
    }
};

TEST_F(MemoryOfTheWindow, SizeAndPlaceComeBack)
{
    open();
    window().move(12, 20);
    resizeTo({1030, 705});
    openAgain();
    EXPECT_EQ(window().pos(), QPoint(12, 20));
    EXPECT_EQ(window().size(), QSize(1030, 705));
    EXPECT_FALSE(window().isMaximized());
}

TEST_F(MemoryOfTheWindow, OneThatFilledTheScreenDoesSoAgain)
{
    open();
    window().showMaximized();
    ASSERT_TRUE(soon([&] { return window().isMaximized(); }));
    openAgain();
    EXPECT_TRUE(window().isMaximized());
}

TEST_F(MemoryOfTheWindow, AScreenThatIsGoneDoesNotTakeItAlong)
{
    for (const QString& place : {u"5000 4000 1030 705 normal"_s, u"-3000 0 1030 705 normal"_s,
                                 u"0 -900 1030 705 normal"_s, u"1030 0 1030 705 normal"_s}) {
        openWith(u"window.place"_s, place);
        EXPECT_TRUE(isOnScreen()) << place.toStdString();
        EXPECT_EQ(window().size(), QSize(1030, 705));
    }
}

TEST_F(MemoryOfTheWindow, OneOfALargerScreenFitsThisOne)
{
    openWith(u"window.place"_s, u"0 0 3000 2000 normal"_s);
    EXPECT_EQ(window().size(), window().screen()->availableSize());
    openWith(u"window.place"_s, u"0 0 1 1 normal"_s);
    EXPECT_EQ(window().size(), window().minimumSize());
}

TEST_F(MemoryOfTheWindow, WhatIsNoPlaceIsIgnored)
{
    open();
    const QSize usual = window().size();
    for (const QString& stored : {u""_s, u"a b c d"_s, u"1 2 3"_s, u"0 0 -5 700 normal"_s,
                                  u"0 0 99999999999 700 normal"_s, u"0 0 900000 700 normal"_s}) {
        openWith(u"window.place"_s, stored);
        EXPECT_EQ(window().size(), usual) << stored.toStdString();
        EXPECT_TRUE(isOnScreen());
    }
}

TEST_F(MemoryOfTheWindow, TheWidthOfTheListComesBack)
{
    open();
    drop({anyFile("ok.mp4")});
    QSplitterHandle* handle = the<QSplitter>()->handle(1);
    const QPoint grip(0, 300);
    const int before = the<Sidebar>()->width();
    QTest::mousePress(handle, Qt::LeftButton, {}, grip);
    QTest::mouseMove(handle, grip + QPoint(20, 0));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, grip + QPoint(20, 0));
    const int chosen = the<Sidebar>()->width();
    ASSERT_GT(chosen, before);
    openAgain();
    EXPECT_EQ(the<Sidebar>()->width(), chosen);
    openWith(u"window.sidebar"_s, u"100000"_s);
    EXPECT_GT(the<Sidebar>()->width(), chosen);
    EXPECT_LE(the<Sidebar>()->width(), Sidebar::widest);
    openWith(u"window.sidebar"_s, u"wide"_s);
    EXPECT_EQ(the<Sidebar>()->width(), before);
}

TEST_F(MemoryOfTheWindow, HasTheIconOfTheProgram)
{
    open();
    EXPECT_FALSE(window().windowIcon().isNull());
    const QImage icon = window().windowIcon().pixmap(128).toImage();
    ASSERT_EQ(icon.width(), 128);
    EXPECT_EQ(icon.pixelColor(64, 80), QColor(0x4A, 0xDE, 0x80));
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
}

} // namespace
} // namespace vantroque

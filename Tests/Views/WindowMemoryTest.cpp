#include "VantroqueApp/Views/Files/Sidebar.h"
#include "VantroqueApp/Views/Report/ProblemRow.h"
#include "VantroqueApp/Views/Report/ProblemsPanel.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
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

TEST_F(MemoryOfTheWindow, OpenRowsOfAReportComeBack)
{
    open();
    const std::vector<FileUrl> film{anyFile("fail.mp4")};
    const auto showFilm = [&] {
        if (model().files().analyses().empty())
            drop(film);
        ASSERT_TRUE(soonIdle());
        model().files().select(model().files().analyses().front().id);
        ASSERT_TRUE(soon([&] { return the<ReportView>()->isVisible(); }));
    };
    showFilm();
    auto* sections = the<ReportSections>();
    Q_EMIT sections->clicked(sections->model()->index(0, 0)); // one that fails: it was open
    the<ProblemsPanel>()->step(true);
    const QStringList chosen = rows(*sections);
    openAgain();
    showFilm();
    EXPECT_EQ(rows(*the<ReportSections>()), chosen);
    EXPECT_TRUE(the<ProblemRow>()->isOpen());
    openWith(u"window.openRows"_s, u"[\"\", \"file:///x\", 5, \"\\n\\n\\n\\n\\n\"]"_s);
    showFilm();
    EXPECT_NE(rows(*the<ReportSections>()), chosen);
    EXPECT_FALSE(the<ProblemRow>()->isOpen());
}

TEST_F(MemoryOfTheWindow, OpenRowsAreThoseOfTheLastFiles)
{
    UserDefaults defaults(QString::fromStdString((m_folder / "rows").native()));
    const auto file = [](qsizetype number) {
        return FileUrl::fromPath("/films/" + std::to_string(number) + ".mov");
    };
    {
        OpenRowsMemory memory(defaults);
        for (qsizetype i = 0; i <= OpenRowsMemory::most; ++i) {
            OpenRows& open = memory.of(file(i));
            open.problems = {u"loudness"_s, u"true-peak"_s};
            open.rows = {u"a"_s, u"a/loudness"_s};
            open.seen = {u"a"_s, u"b"_s};
            open.isChosen = i != 7;
            memory.keep(file(i));
        }
        memory.of(file(1)).problems.clear();
        memory.keep(file(1));
        memory.of(file(OpenRowsMemory::most + 1)).isChosen = true;
        memory.keep(file(OpenRowsMemory::most + 1));
    }
    OpenRowsMemory memory(defaults);
    EXPECT_FALSE(memory.of(file(0)).isChosen) << "the one of longest ago";
    EXPECT_FALSE(memory.of(file(7)).isChosen) << "nobody chose any";
    EXPECT_TRUE(memory.of(file(1)).problems.empty());
    EXPECT_EQ(memory.of(file(1)).rows, (QSet<QString>{u"a"_s, u"a/loudness"_s}));
    EXPECT_EQ(memory.of(file(9)).problems, (std::set<QString>{u"loudness"_s, u"true-peak"_s}));
    EXPECT_EQ(memory.of(file(9)).seen, (QSet<QString>{u"a"_s, u"b"_s}));
    EXPECT_EQ(defaults.textList(u"window.openRows"_s)->size(), OpenRowsMemory::most);
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

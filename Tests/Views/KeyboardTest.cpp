#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Profiles/ProfilesPanel.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "Views/WindowFixture.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

namespace vantroque {
namespace {

class Keyboard : public WindowTest {
protected:
    FileListView& openList()
    {
        open();
        drop({anyFile("fail.mp4"), anyFile("ok.mp4"), anyFile("ok2.mp4")});
        EXPECT_TRUE(soonIdle());
        auto& list = *the<FileListView>();
        list.setFocus();
        return list;
    }
    /// The names of what Tab comes to, from here until it comes back.
    QStringList walk(Qt::Key key = Qt::Key_Tab)
    {
        QStringList names;
        const QWidget* begin = QApplication::focusWidget();
        do {
            QWidget* focused = QApplication::focusWidget();
            if (focused == nullptr || names.size() > 50)
                return names << u"lost"_s;
            names << focused->accessibleName();
            QTest::keyClick(focused, key);
        } while (QApplication::focusWidget() != begin);
        return names;
    }
    static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    QString selected()
    {
        return model().files().analysis(*model().files().selectedAnalysisID())->url.fileName();
    }
};

TEST_F(Keyboard, ArrowsChooseAFile)
{
    auto& list = openList();
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(selected(), u"ok.mp4"_s);
    QTest::keyClick(&list, Qt::Key_Up);
    EXPECT_EQ(selected(), u"fail.mp4"_s);
}

TEST_F(Keyboard, DeleteTakesAFileOffTheList)
{
    auto& list = openList();
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(names(), (QStringList{u"ok.mp4"_s, u"ok2.mp4"_s}));
    EXPECT_EQ(selected(), u"ok.mp4"_s);
}

TEST_F(Keyboard, RowsOfTheReportOpenAndClose)
{
    openList();
    auto& sections = *the<ReportSections>();
    const auto texts = [&] { return rows(sections); };
    const QStringList before = texts();
    const auto row = static_cast<int>(
        std::ranges::find_if(
            before, [](const QString& text) { return text.startsWith(u"Fail, Loudness"_s); })
        - before.begin());
    ASSERT_LT(row, before.size());
    EXPECT_FALSE(before[row].contains(u"loudnorm"_s)) << "the fix";
    sections.setFocus();
    sections.setCurrentIndex(sections.model()->index(row, 0));
    QTest::keyClick(&sections, Qt::Key_Return);
    EXPECT_TRUE(texts()[row].contains(u"loudnorm"_s));
    QTest::keyClick(&sections, Qt::Key_Return);
    EXPECT_EQ(texts(), before);
}

TEST_F(Keyboard, TabGoesFromTheListToTheReportToThePlayerAndToTheHeader)
{
    openList();
    // The file is shown as stills, so there is no play button to press.
    const QStringList order{u"Files"_s,
                            u"Drop more files"_s,
                            u"All, 3"_s,
                            u"Sort: Added"_s,
                            u"Clear All"_s,
                            u"Copy the problems"_s,
                            u"Previous problem"_s,
                            u"Next problem"_s,
                            u"Fail, Loudness, 2 platforms, -19.6 LKFS, expected -24 LKFS ± 2 LU"_s,
                            u"Platforms"_s,
                            u"Picture"_s,
                            u"Timeline"_s,
                            u"Timecode"_s,
                            u"Zoom, Fit"_s,
                            u"Guides"_s,
                            u"Scopes"_s,
                            u"More"_s,
                            u"Height of the picture"_s,
                            u"Notes 0"_s,
                            u"Approve"_s,
                            u"Needs revisions"_s,
                            u"Leave a note on this frame"_s,
                            u"Pointer"_s,
                            u"Red"_s,
                            u"Report"_s,
                            u"Add File"_s,
                            u"Compare"_s,
                            u"Profiles"_s,
                            u"Export Report"_s};
    EXPECT_EQ(walk(), order);
    QStringList back = walk(Qt::Key_Backtab);
    std::reverse(back.begin() + 1, back.end());
    EXPECT_EQ(back, order);
}

TEST_F(Keyboard, AnEmptyWindowBeginsAtItsButton)
{
    open();
    ASSERT_TRUE(soon([] { return QApplication::focusWidget() != nullptr; }));
    // What cannot be done yet is skipped.
    EXPECT_EQ(walk(), (QStringList{u"Choose Files"_s, u"New here? Read the guide"_s, u"Add File"_s,
                                   u"Compare"_s, u"Profiles"_s}));
}

TEST_F(Keyboard, TheFirstFileBringsItToTheList)
{
    open();
    drop({anyFile("ok.mp4")});
    EXPECT_TRUE(soon([&] { return QApplication::focusWidget() == the<FileListView>(); }));
    QTest::keyClick(the<FileListView>(), Qt::Key_Delete);
    EXPECT_TRUE(names().isEmpty());
    EXPECT_EQ(QApplication::focusWidget(), the<QPushButton>(u"Choose Files"_s));
}

TEST_F(Keyboard, MenusOpenByTheirLettersAndByF10AndEscapeClosesThem)
{
    openList();
    const auto opens = [&](Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& first) {
        QTest::keyClick(&window(), key, modifiers);
        ASSERT_TRUE(soon([] { return openMenu() != nullptr; }));
        EXPECT_EQ(openMenu()->actions().first()->text(), first);
        QTest::keyClick(openMenu(), Qt::Key_Escape);
        ASSERT_TRUE(soon([] { return openMenu() == nullptr; }));
        QTest::keyClick(the<QMenuBar>(), Qt::Key_Escape);
    };
    opens(Qt::Key_F, Qt::AltModifier, u"Add Files"_s);
    opens(Qt::Key_V, Qt::AltModifier, u"Full Screen Picture"_s);
    opens(Qt::Key_F10, {}, u"Add Files"_s);
    EXPECT_EQ(QApplication::focusWidget(), the<FileListView>());
}

TEST_F(Keyboard, ButtonsWithAMenuOpenItByReturn)
{
    openList();
    auto* button = the<ToolButton>(u"Export Report"_s);
    button->setFocus();
    // The button waits in it until the menu is closed.
    QTimer::singleShot(0, [&] {
        EXPECT_EQ(openMenu(), button->menu());
        QTest::keyClick(openMenu(), Qt::Key_Escape);
    });
    QTest::keyClick(button, Qt::Key_Return);
    EXPECT_EQ(openMenu(), nullptr);
    EXPECT_EQ(window().focusWidget(), button);
}

TEST_F(Keyboard, ReturnOpensTheProfilesAndEscapeComesBack)
{
    openList();
    auto* button = the<ToolButton>(u"Profiles"_s);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Return);
    ASSERT_TRUE(the<ProfilesPanel>()->isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(the<ProfilesPanel>()->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), button);
}

TEST_F(Keyboard, TheMenuKeyOpensTheMenuOfARow)
{
    auto& list = openList();
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(list.viewport(), &byKey);
    ASSERT_NE(openMenu(), nullptr);
    QTest::keyClick(openMenu(), Qt::Key_Up);
    QTest::keyClick(openMenu(), Qt::Key_Return);
    EXPECT_EQ(names(), (QStringList{u"ok.mp4"_s, u"ok2.mp4"_s}));
}

TEST_F(Keyboard, WithoutAPlayerSpacePressesButtons)
{
    open();
    drop({anyFile("sound.wav")});
    ASSERT_TRUE(soonIdle());
    ASSERT_EQ(model().player(), nullptr);
    auto* button = the<ToolButton>(u"Profiles"_s);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_TRUE(the<ProfilesPanel>()->isVisible());
}

TEST_F(Keyboard, WithoutAPlayerSpaceAndArrowsOpenRowsOfAReport)
{
    openList();
    const auto* file = model().files().selected();
    OpenRows open;
    ReportSections sections;
    sections.show(*file->report(), model().profiles().profiles(), 25, open);
    sections.QWidget::show();
    sections.setCurrentIndex(sections.model()->index(0, 0));
    const QStringList before = rows(sections);
    QTest::keyClick(&sections, Qt::Key_Space);
    EXPECT_EQ(rows(sections).size(), before.size() - 2); // it was open
    QTest::keyClick(&sections, Qt::Key_Right);
    EXPECT_EQ(rows(sections), before);
    QTest::keyClick(&sections, Qt::Key_Left);
    EXPECT_EQ(rows(sections).size(), before.size() - 2);
}

TEST_F(Keyboard, TheRingShowsOnlyWhenTheKeyboardIsUsed)
{
    auto& list = openList();
    FocusRing ring;
    EXPECT_FALSE(ring.isShown());
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_TRUE(soon([&] { return ring.isShown(); }));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(60, 20));
    EXPECT_TRUE(soon([&] { return !ring.isShown(); }));
}

} // namespace
} // namespace vantroque

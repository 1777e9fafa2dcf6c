#include "VantroqueApp/Views/DropWell.h"
#include "VantroqueApp/Views/ReportSections.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

class Keyboard : public WindowTest {
protected:
    FileListView& openList()
    {
        open();
        drop({anyFile("fail.mp4"), anyFile("ok.mp4"), anyFile("ok2.mp4")});
        EXPECT_TRUE(soonIdle());
        window().activateWindow();
        auto& list = *the<FileListView>();
        list.setFocus();
        return list;
    }
    QString selected() { return model().analysis(*model().selectedAnalysisID())->url.fileName(); }
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
    EXPECT_FALSE(before[row].contains(u"Expected: "_s));
    sections.setFocus();
    sections.setCurrentIndex(sections.model()->index(row, 0));
    QTest::keyClick(&sections, Qt::Key_Right);
    EXPECT_TRUE(texts()[row].contains(u"Expected: "_s));
    QTest::keyClick(&sections, Qt::Key_Left);
    EXPECT_EQ(texts(), before);
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

#include "VantroqueApp/Views/Compare/CompareView.h"
#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

/// The window while files are compared. They hold nothing, so that they are shown as stills that
/// never come.
class CompareWindow : public WindowTest {
protected:
    void openWith(int count)
    {
        open();
        std::vector<FileUrl> files;
        for (int i = 0; i < count; ++i)
            files.push_back(anyFile("ok" + std::to_string(i) + ".mp4"));
        drop(files);
        ASSERT_TRUE(soonIdle());
    }
    ToolButton& button() { return *the<ToolButton>(u"Compare"_s); }
    CompareView* view() { return the<CompareView>(); }
    bool soonLeft()
    {
        return soon([this] { return view() == nullptr; });
    }
};

TEST_F(CompareWindow, OneFileAsksForAnother)
{
    openWith(1);
    EXPECT_EQ(button().toolTip(), u"Add a second video to compare"_s);
    EXPECT_TRUE(button().isEnabled());
}

TEST_F(CompareWindow, TwoAreShownOverTheWholeWindow)
{
    openWith(2);
    EXPECT_EQ(button().toolTip(), u"Play every video together to compare graphics and end cards"_s);
    button().click();
    ASSERT_NE(view(), nullptr);
    EXPECT_TRUE(view()->isVisible());
    EXPECT_FALSE(the<FileListView>()->isVisible());
    EXPECT_FALSE(button().isVisible());
    EXPECT_FALSE(the<ToolButton>(u"Profiles"_s)->isVisible());
    EXPECT_TRUE(view()->isAncestorOf(window().focusWidget())) << "the keyboard is there";
}

TEST_F(CompareWindow, EscapeAndTheCrossLeadBackToTheReports)
{
    openWith(2);
    button().click();
    QTest::keyClick(window().focusWidget(), Qt::Key_Escape);
    ASSERT_TRUE(soonLeft());
    EXPECT_TRUE(the<FileListView>()->isVisible());
    EXPECT_TRUE(button().isVisible());
    button().click();
    auto& leave = *the<ToolButton>(u"Back to the reports"_s);
    EXPECT_TRUE(leave.isVisible());
    EXPECT_EQ(leave.toolTip(), u"Back to the reports  (esc)"_s);
    leave.click();
    ASSERT_TRUE(soonLeft());
    EXPECT_FALSE(model().comparison().comparing());
    EXPECT_FALSE(leave.isVisible());
}

TEST_F(CompareWindow, AReportsDeskLeadsBackToo)
{
    openWith(2);
    button().click();
    ASSERT_NE(view(), nullptr);
    QTest::keyClick(&window(), Qt::Key_F2);
    ASSERT_TRUE(soonLeft());
    EXPECT_TRUE(the<FileListView>()->isVisible());
}

TEST_F(CompareWindow, AKeyOfTheViewMenuComparesAndLeadsBack)
{
    openWith(2);
    QTest::keyClick(&window(), Qt::Key_F4);
    ASSERT_NE(view(), nullptr);
    QTest::keyClick(&window(), Qt::Key_F4);
    ASSERT_TRUE(soonLeft());
    EXPECT_TRUE(the<FileListView>()->isVisible());
}

TEST_F(CompareWindow, ADroppedFileJoins)
{
    openWith(2);
    button().click();
    drop({anyFile("ok_more.mp4")});
    ASSERT_TRUE(soon([&] { return model().openComparison().controller()->tiles().size() == 3; }));
    EXPECT_NE(view(), nullptr);
}

TEST_F(CompareWindow, OfThirtyFilesItSaysWhichAreCompared)
{
    openWith(30);
    button().click();
    EXPECT_TRUE(soonShows(u"Comparing the first 12 of 30 files. Select those to compare"_s));
    model().comparison().setComparing(false);
    EXPECT_TRUE(soon(
        [&] { return !shows(u"Comparing the first 12 of 30 files. Select those to compare"_s); }));
}

TEST_F(CompareWindow, ALostListGoesBackToTheWell)
{
    openWith(2);
    button().click();
    model().files().clearAll();
    EXPECT_EQ(view(), nullptr);
    EXPECT_TRUE(the<DropWell>()->isVisible());
}

} // namespace
} // namespace vantroque

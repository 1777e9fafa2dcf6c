#include "VantroqueApp/Views/Controls/FixBox.h"
#include "VantroqueApp/Views/Files/FilterBar.h"
#include "VantroqueApp/Views/Files/Sidebar.h"
#include "VantroqueApp/Views/Report/MeasurementCards.h"
#include "VantroqueApp/Views/Report/ProblemsPanel.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "VantroqueApp/Views/Window/FailedPane.h"
#include "Views/WindowFixture.h"

#include <QScrollBar>
#include <QSplitter>

namespace vantroque {
namespace {

class Layout : public WindowTest {
protected:
    int sidebarAt(int width)
    {
        resizeTo({width, 900});
        return the<Sidebar>()->width();
    }
};

TEST_F(Layout, TheListYieldsInNarrowWindowsAndGrowsInVeryWideOnes)
{
    open();
    drop({anyFile("ok.mp4")});
    EXPECT_EQ(sidebarAt(1440), 280);
    EXPECT_EQ(sidebarAt(1024), 220);
    EXPECT_EQ(sidebarAt(1920), 280);
    EXPECT_EQ(sidebarAt(3840), 320);
}

TEST_F(Layout, AWidthThatTheOperatorChoseStays)
{
    open();
    drop({anyFile("ok.mp4")});
    ASSERT_EQ(sidebarAt(1440), 280);
    auto* splitter = the<QSplitter>();
    QSplitterHandle* handle = splitter->handle(1);
    const QPoint grip(handle->width() / 2, 300);
    QTest::mousePress(handle, Qt::LeftButton, {}, grip);
    QTest::mouseMove(handle, grip + QPoint(60, 0));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, grip + QPoint(60, 0));
    EXPECT_NEAR(the<Sidebar>()->width(), 340, 2);
    EXPECT_NEAR(sidebarAt(1600), 340, 2);
}

TEST_F(Layout, NothingInAReportIsWiderThanTheWindow)
{
    auto profiles = WindowScenes::profiles();
    profiles[1].name = QString(120, u'W');
    open(profiles);
    drop({anyFile("long" + std::string(200, 'a') + ".mp4")});
    ASSERT_TRUE(soonIdle());
    resizeTo(window().minimumSize());
    EXPECT_EQ(window().size(), window().minimumSize());
    const auto& report = *the<ReportView>();
    EXPECT_EQ(report.horizontalScrollBar()->maximum(), 0);
    for (const QWidget* widget : report.widget()->findChildren<QWidget*>()) {
        const int right = widget->mapTo(&report, QPoint(widget->width(), 0)).x();
        EXPECT_TRUE(widget->isHidden() || right <= report.width())
            << widget->metaObject()->className() << right;
    }
}

TEST_F(Layout, ALongErrorIsShownWholeAndScrolls)
{
    open();
    drop({anyFile("bad-long.mp4")});
    ASSERT_TRUE(soonShows(u"Could not analyze this file"_s));
    resizeTo(window().minimumSize());
    const auto& pane = *the<FailedPane>();
    EXPECT_TRUE(soon([&] { return pane.verticalScrollBar()->maximum() > 0; }));
    for (const QLabel* label : pane.findChildren<QLabel*>())
        EXPECT_GE(label->height(), label->heightForWidth(label->width()))
            << label->text().toStdString();
    EXPECT_EQ(pane.focusPolicy(), Qt::StrongFocus);
}

TEST_F(Layout, RowsDoNotStretchOverAVeryWideScreen)
{
    open();
    drop({anyFile("fail.mp4")});
    ASSERT_TRUE(soonIdle());
    resizeTo({3840, 2160});
    EXPECT_LE(the<ReportSections>()->width(), 720);
}

TEST_F(Layout, NothingIsCutWhenTheWindowBecomesNarrower)
{
    open();
    drop({anyFile("fail_events.mp4"), anyFile("bad.mp4")});
    ASSERT_TRUE(soonIdle());
    resizeTo({1440, 900});
    the<ProblemsPanel>()->step(true);
    QApplication::processEvents();
    resizeTo({1024, 700});
    int fixes = 0;
    for (const QWidget* box : window().findChildren<QWidget*>())
        if (box->isVisible() && dynamic_cast<const FixBox*>(box) != nullptr) {
            ++fixes;
            EXPECT_TRUE(soon([&] { return box->height() >= box->heightForWidth(box->width()); }));
        }
    EXPECT_GT(fixes, 0);
    const auto cards =
        the<MeasurementCards>()->findChildren<QAbstractButton*>(Qt::FindDirectChildrenOnly);
    for (const auto* card : cards)
        EXPECT_TRUE(soon([&] {
            return card->isHidden() || card->height() >= card->heightForWidth(card->width());
        })) << card->accessibleName().toStdString()
            << card->height();
    const QWidget& filter = *the<FilterBar>();
    EXPECT_GE(filter.height(), filter.heightForWidth(filter.width()));
    for (const auto* chip : filter.findChildren<QAbstractButton*>(Qt::FindDirectChildrenOnly))
        EXPECT_TRUE(filter.rect().contains(chip->geometry())) << chip->text().toStdString();
}

TEST_F(Layout, TheFootOfTheListKeepsItsHeightWhileFilesAreChecked)
{
    open();
    const auto foot = [&] {
        const auto& below = *window().findChild<QWidget*>(u"sidebarFoot"_s);
        return window().height() - below.mapTo(&window(), QPoint()).y();
    };
    drop({anyFile("run.mp4"), anyFile("wait.mp4")});
    ASSERT_TRUE(soon([&] { return model().queueRun().isRunning(); }));
    resizeTo({1440, 900});
    EXPECT_TRUE(soon([&] { return foot() == 116; })) << foot();
}

} // namespace
} // namespace vantroque

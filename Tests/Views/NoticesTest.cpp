#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Controls/NoticeBar.h"
#include "VantroqueApp/Views/Controls/NoticeBars.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "Views/PaintedWords.h"
#include "Views/WindowFixture.h"

#include <QTimer>

namespace vantroque {
namespace {

class Notices : public WindowTest {
protected:
    NoticeBars& bars() { return window().notices(); }
    /// From the top down.
    std::vector<NoticeBar*> all()
    {
        std::vector<NoticeBar*> all;
        for (NoticeBar* bar : bars().findChildren<NoticeBar*>())
            if (bar->isVisible())
                all.push_back(bar);
        std::ranges::sort(all, {}, [](const NoticeBar* bar) { return bar->y(); });
        return all;
    }
    QStringList texts()
    {
        QStringList texts;
        for (const NoticeBar* bar : all())
            texts << bar->accessibleName();
        return texts;
    }
    static ToolButton& button(const NoticeBar& bar, const QString& name)
    {
        for (ToolButton* button : bar.findChildren<ToolButton*>())
            if (button->accessibleName() == name)
                return *button;
        throw std::runtime_error("no such button");
    }
    static Notice said(const QString& text) { return {.icon = u"info.circle"_s, .text = text}; }
    void openWithFile()
    {
        open();
        drop({anyFile("ok.mp4")});
        ASSERT_TRUE(soonIdle());
    }
};

TEST_F(Notices, StandAtTheBottomLeftOfThePaneTheNewestLowest)
{
    openWithFile();
    bars().tell(said(u"First"_s));
    bars().tell(said(u"Second"_s));
    EXPECT_EQ(texts(), (QStringList{u"First"_s, u"Second"_s}));
    const QWidget& pane = *the<ReportView>(); // beside it notes are written
    const NoticeBar& lowest = *all().back();
    const QPoint corner =
        lowest.mapTo(&window(), QPoint(0, lowest.height())) - pane.mapTo(&window(), QPoint());
    EXPECT_EQ(corner, QPoint(24, pane.height() - 24));
    EXPECT_EQ(lowest.size(), QSize(pane.width() - 2 * 24, 40));
    EXPECT_TRUE(paintedWords(*all().front()).contains(u"First"_s));
    resizeTo({1100, 760});
    EXPECT_EQ(lowest.mapTo(&window(), QPoint(0, lowest.height())).y(), 760 - 24);
}

TEST_F(Notices, StandOverTheWellWhereNoFileIs)
{
    open();
    bars().tell(said(u"Nothing"_s));
    ASSERT_EQ(all().size(), 1U);
    EXPECT_EQ(all().front()->mapTo(&window(), QPoint()).x(), 40) << "clear of its dashes";
}

TEST_F(Notices, AreWiderWhereNoFilmStandsBesideThem)
{
    open();
    drop({anyFile("bad.mp4")});
    ASSERT_TRUE(soonIdle());
    bars().tell(said(u"Nothing"_s));
    const QWidget& pane = *window().findChild<QWidget*>(u"detail"_s);
    const NoticeBar& bar = *all().front();
    EXPECT_EQ(bar.mapTo(&window(), QPoint(0, bar.height())) - pane.mapTo(&window(), QPoint()),
              QPoint(24, pane.height() - 24));
    EXPECT_EQ(bar.size(), QSize(480, 40));
}

TEST_F(Notices, AreThreeAtMost)
{
    openWithFile();
    for (const QString& text : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
        bars().tell(said(text));
    EXPECT_EQ(texts(), (QStringList{u"b"_s, u"c"_s, u"d"_s}));
}

TEST_F(Notices, ALaterOneOfTheSameSubjectTakesThePlaceOfTheFirst)
{
    openWithFile();
    bars().tell({.subject = u"export"_s, .icon = u"export"_s, .text = u"Saved a.pdf"_s});
    bars().tell(said(u"other"_s));
    bars().tell({.subject = u"export"_s, .icon = u"export"_s, .text = u"Saved b.pdf"_s});
    EXPECT_EQ(texts(), (QStringList{u"other"_s, u"Saved b.pdf"_s}));
    bars().withdraw(u"export"_s);
    bars().withdraw(u"export"_s);
    EXPECT_EQ(texts(), QStringList{u"other"_s});
}

TEST_F(Notices, TheActionIsDoneAndClosesTheBar)
{
    openWithFile();
    int done = 0;
    bars().tell({.icon = u"trash"_s,
                 .text = u"Removed 4 files"_s,
                 .action = {u"Undo"_s, u"undo"_s, [&] { ++done; }}});
    QTest::mouseClick(&button(*all().front(), u"Undo"_s), Qt::LeftButton);
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(all().empty());
    EXPECT_TRUE(bars().isHidden());
}

TEST_F(Notices, TheActionMayTellOfSomethingElse)
{
    openWithFile();
    bars().tell({.subject = u"removal"_s,
                 .icon = u"trash"_s,
                 .text = u"Removed"_s,
                 .action = {u"Undo"_s, {}, [&] {
                                bars().withdraw(u"removal"_s);
                                bars().tell(said(u"Back"_s));
                            }}});
    QTest::mouseClick(&button(*all().front(), u"Undo"_s), Qt::LeftButton);
    EXPECT_EQ(texts(), QStringList{u"Back"_s});
}

TEST_F(Notices, AreReachedAndClosedByKeyboard)
{
    openWithFile();
    int done = 0;
    bars().tell({.icon = u"trash"_s, .text = u"Removed"_s, .action = {u"Undo"_s, u"undo"_s, [&] {
                                                                          ++done;
                                                                      }}});
    bars().tell(said(u"Other"_s));
    the<FileListView>()->setFocus();
    ToolButton& undo = button(*all().front(), u"Undo"_s);
    for (int i = 0; i < 100 && !undo.hasFocus(); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(undo.hasFocus());
    QTest::keyClick(&undo, Qt::Key_Return);
    EXPECT_EQ(done, 1);
    button(*all().front(), u"Close"_s).setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(all().empty());
}

TEST_F(Notices, APassingOneGoesAfterTenSecondsAndWaitsUnderThePointer)
{
    openWithFile();
    Notice notice = said(u"Removed"_s);
    notice.isPassing = true;
    QTest::mouseMove(&window(), QPoint(window().width() / 2, 10)); // not where the bar comes up
    bars().tell(notice);
    bars().tell(said(u"Stays"_s));
    NoticeBar& bar = *all().front();
    auto& end = *bar.findChild<QTimer*>();
    EXPECT_TRUE(end.isActive());
    EXPECT_EQ(end.interval(), 10'000);
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QApplication::sendEvent(&bar, &enter);
    EXPECT_FALSE(end.isActive());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&bar, &leave);
    EXPECT_TRUE(end.isActive());
    EXPECT_LE(end.interval(), 10'000);
    EXPECT_FALSE(all().back()->findChild<QTimer*>()->isActive());
    end.setInterval(0);
    EXPECT_TRUE(soon([&] { return texts() == QStringList{u"Stays"_s}; }));
}

TEST_F(Notices, AreAlertsToAScreenReader)
{
    openWithFile();
    bars().tell(said(u"Saved spot.pdf"_s));
    const auto* spoken = QAccessible::queryAccessibleInterface(all().front());
    EXPECT_EQ(spoken->role(), QAccessible::AlertMessage);
    EXPECT_EQ(spoken->text(QAccessible::Name), u"Saved spot.pdf"_s);
}

TEST_F(Notices, ALongSentenceIsBrokenAndNeverCut)
{
    openWithFile();
    const QString name(150, u'x');
    bars().tell(said(u"1 file skipped: %1.wav is not a video file"_s.arg(name)));
    EXPECT_GT(all().front()->height(), 40);
    const QString painted = paintedWords(*all().front()).join(QString()).remove(u' ');
    EXPECT_TRUE(painted.contains(u"isnotavideo"_s)) << painted.toStdString();
    EXPECT_FALSE(painted.contains(QChar(0x2026)));
}

} // namespace
} // namespace vantroque

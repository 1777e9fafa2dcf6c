#include "VantroqueApp/Views/Controls/NoticeBar.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Files/FilterChip.h"
#include "VantroqueApp/Views/Files/QueueFoot.h"
#include "VantroqueApp/Views/Files/SkippedDialog.h"
#include "Views/PaintedWords.h"
#include "Views/WindowFixture.h"

#include <QDialog>
#include <QMenu>
#include <QTreeWidget>

#include <future>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Queue : public WindowTest {
protected:
    void openWith(const std::vector<std::string>& names)
    {
        auto profiles = WindowScenes::profiles();
        profiles.erase(profiles.begin() + 2); // refuses all of them
        open(profiles);
        std::vector<FileUrl> files;
        for (const std::string& name : names)
            files.push_back(anyFile(name));
        drop(files);
        ASSERT_TRUE(soonIdle());
    }
    FileListView& list() { return *the<FileListView>(); }
    QStringList shown()
    {
        QStringList names;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            names << list().model()->index(row, 0).data().toString();
        return names;
    }
    QStringList selected()
    {
        QStringList names;
        for (const FileAnalysis* file : model().files().allSelected())
            names << file->url.fileName();
        return names;
    }
    void click(int row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers,
                          list().visualRect(list().model()->index(row, 0)).center());
    }
    FilterChip& chip(const QString& name)
    {
        for (FilterChip* chip : window().findChildren<FilterChip*>())
            if (chip->text() == name)
                return *chip;
        throw std::runtime_error("no such chip");
    }
    void press(const QString& name) { QTest::mouseClick(&chip(name), Qt::LeftButton); }
    void sortBy(const QString& name)
    {
        for (QAction* action : window().findChildren<QAction*>())
            if (action->text() == name)
                action->trigger();
    }
    QStringList notices()
    {
        QStringList texts;
        for (const NoticeBar* bar : window().findChildren<NoticeBar*>())
            if (bar->isVisible())
                texts << bar->accessibleName();
        return texts;
    }
    void pressOnBar(const QString& name)
    {
        for (ToolButton* button : window().findChildren<ToolButton*>(QString()))
            if (button->isVisible() && button->accessibleName() == name
                && qobject_cast<NoticeBar*>(button->parentWidget()) != nullptr)
                return QTest::mouseClick(button, Qt::LeftButton);
        FAIL() << "no such button";
    }
    QString footLine() { return the<QLabel>(u"Queue"_s)->text().replace(QChar(QChar::Nbsp), u' '); }
};

TEST_F(Queue, FilesAreSelectedWithShiftCtrlAndCtrlA)
{
    openWith({"a.mp4", "b.mp4", "c.mp4", "d.mp4"});
    click(1);
    EXPECT_THAT(selected(), ElementsAre(u"b.mp4"_s));
    click(3, Qt::ShiftModifier);
    EXPECT_THAT(selected(), ElementsAre(u"b.mp4"_s, u"c.mp4"_s, u"d.mp4"_s));
    click(2, Qt::ControlModifier);
    EXPECT_THAT(selected(), ElementsAre(u"b.mp4"_s, u"d.mp4"_s));
    EXPECT_TRUE(shows(u"4 files · 2 selected"_s));
    QTest::keyClick(&list(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected().size(), 4);
    click(0);
    QTest::keyClick(&list(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(selected(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s));
}

TEST_F(Queue, ACrossTakesTheWholeSelectionOrItsRowAlone)
{
    openWith({"a.mp4", "b.mp4", "c.mp4", "d.mp4"});
    click(0);
    click(1, Qt::ControlModifier);
    const auto pressCross = [&](int row) {
        const QRect rect = list().visualRect(list().model()->index(row, 0));
        const QPoint cross(rect.right() - 12, rect.center().y());
        QTest::mouseMove(list().viewport(), cross);
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, cross);
    };
    pressCross(3);
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s, u"c.mp4"_s));
    EXPECT_EQ(selected().size(), 2);
    pressCross(1);
    EXPECT_THAT(names(), ElementsAre(u"c.mp4"_s));
}

TEST_F(Queue, DeleteRemovesTheSelectionAndUndoBringsItBack)
{
    openWith({"a.mp4", "fail.mp4", "c.mp4"});
    click(0);
    click(1, Qt::ShiftModifier);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_THAT(names(), ElementsAre(u"c.mp4"_s));
    EXPECT_THAT(notices(), ElementsAre(u"Removed 2 files"_s));
    pressOnBar(u"Undo"_s);
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"fail.mp4"_s, u"c.mp4"_s));
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s, u"done"_s));
    EXPECT_THAT(selected(), ElementsAre(u"a.mp4"_s, u"fail.mp4"_s));
    EXPECT_EQ(shown(), names());
    EXPECT_EQ(list().selectionModel()->selectedIndexes().size(), 2);
    EXPECT_THAT(notices(), IsEmpty());
}

TEST_F(Queue, CtrlZInTheListBringsBackWhatWasCleared)
{
    openWith({"a.mp4", "b.mp4"});
    QTest::mouseClick(the<QPushButton>(u"Clear All"_s), Qt::LeftButton);
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_TRUE(shows(u"Drop video files here"_s));
    EXPECT_THAT(notices(), ElementsAre(u"Removed 2 files"_s)) << "over the empty window";
    drop({anyFile("c.mp4")});
    ASSERT_TRUE(soonIdle());
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s, u"c.mp4"_s));
    EXPECT_THAT(notices(), IsEmpty());
}

TEST_F(Queue, ShiftF10OpensTheMenuOfTheRowForAllThatAreSelected)
{
    openWith({"a.mp4", "b.mp4", "c.mp4"});
    click(0);
    click(1, Qt::ShiftModifier);
    QTest::keyClick(&list(), Qt::Key_F10, Qt::ShiftModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (const QAction* action : menu->actions())
        texts << action->text();
    EXPECT_THAT(texts, ElementsAre(u"Analyze Again"_s, u"Remove from List"_s));
    menu->actions().last()->trigger();
    menu->close();
    EXPECT_THAT(names(), ElementsAre(u"c.mp4"_s));
}

TEST_F(Queue, TheMenuAnalysesTheSelectedAgain)
{
    openWith({"a.mp4", "b.mp4", "c.mp4"});
    click(0);
    click(1, Qt::ShiftModifier);
    QTest::keyClick(&list(), Qt::Key_F10, Qt::ShiftModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    menu->actions().front()->trigger();
    menu->close();
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"queued"_s, u"done"_s));
    EXPECT_TRUE(soonIdle());
}

TEST_F(Queue, FiltersHideRowsAndNeverChangeTheSelection)
{
    openWith({"a.mp4", "fail1.mp4", "bad.mp4", "fail2.mp4"});
    EXPECT_EQ(chip(u"All"_s).accessibleName(), u"All, 4"_s);
    EXPECT_EQ(chip(u"Fail"_s).accessibleName(), u"Fail, 2"_s);
    EXPECT_EQ(chip(u"Could not analyze"_s).accessibleName(), u"Could not analyze, 1"_s);
    click(0);
    press(u"Fail"_s);
    EXPECT_THAT(shown(), ElementsAre(u"fail1.mp4"_s, u"fail2.mp4"_s));
    EXPECT_THAT(selected(), ElementsAre(u"a.mp4"_s));
    EXPECT_TRUE(shows(u"4 files · 2 shown"_s));
    press(u"Could not analyze"_s);
    EXPECT_THAT(shown(), ElementsAre(u"bad.mp4"_s));
    press(u"All"_s);
    EXPECT_EQ(shown(), names());
    EXPECT_TRUE(shows(u"4 files"_s));
    EXPECT_EQ(list().currentIndex().row(), 0);
}

TEST_F(Queue, AFilterWithoutAHitOffersAllAgain)
{
    openWith({"a.mp4", "b.mp4"});
    press(u"Fail"_s);
    EXPECT_TRUE(shows(u"No files here"_s));
    EXPECT_FALSE(list().isVisible());
    auto* all = the<QPushButton>(u"Show all"_s);
    all->setFocus();
    QTest::keyClick(all, Qt::Key_Return);
    EXPECT_EQ(shown().size(), 2);
    EXPECT_TRUE(list().isVisible());
    EXPECT_TRUE(chip(u"All"_s).isChecked());
}

TEST_F(Queue, SortsTheViewAlone)
{
    openWith({"spot10.mp4", "Spot9.mp4", "fail.mp4", "bad.mp4"});
    sortBy(u"Name"_s);
    EXPECT_THAT(shown(), ElementsAre(u"bad.mp4"_s, u"fail.mp4"_s, u"Spot9.mp4"_s, u"spot10.mp4"_s));
    EXPECT_THAT(names(), ElementsAre(u"spot10.mp4"_s, u"Spot9.mp4"_s, u"fail.mp4"_s, u"bad.mp4"_s));
    sortBy(u"Verdict"_s);
    EXPECT_EQ(shown().first(), u"fail.mp4"_s);
    EXPECT_EQ(shown().at(1), u"bad.mp4"_s);
    sortBy(u"Added"_s);
    EXPECT_EQ(shown(), names());
}

TEST_F(Queue, TheFootCountsVerdictsAndTroubleApartAndLeadsToTheRunningFile)
{
    openWith({"fail.mp4", "bad.mp4", "a.mp4"});
    EXPECT_EQ(footLine(), u"Last run: 3 files checked · 1 fail · 1 could not be analyzed"_s);
    std::vector<FileUrl> more;
    for (const char* name : {"fail2.mp4", "run.mp4", "wait.mp4"})
        more.push_back(anyFile(name));
    drop(more);
    ASSERT_TRUE(soon([&] { return footLine().startsWith(u"This run: 1 of 3 · 1 fail · about"_s); }))
        << footLine().toStdString();
    click(0);
    QTest::mouseClick(the<ToolButton>(u"Show the running file"_s), Qt::LeftButton);
    EXPECT_EQ(selectedName(), u"run.mp4"_s);
    m_scene.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_TRUE(soon([&] { return footLine() == u"Last run: 3 files checked · 1 fail"_s; }));
    EXPECT_FALSE(the<ToolButton>(u"Show the running file"_s)->isVisible());
}

TEST_F(Queue, TheLineOfTheFootIsNeverCut)
{
    openWith({"fail.mp4", "bad.mp4", "a.mp4"});
    resizeTo({1024, 700});
    auto* line = the<QLabel>(u"Queue"_s);
    EXPECT_GE(line->height(), line->heightForWidth(line->width()));
}

TEST_F(Queue, OneSkippedFileIsNamedWithTheReason)
{
    open();
    drop({anyFile("radio_mix_60s.wav")});
    EXPECT_THAT(notices(), ElementsAre(u"1 file skipped: radio_mix_60s.wav is not a video file"_s));
}

TEST_F(Queue, SeveralSkippedFilesAreShownWithTheirReasons)
{
    open();
    drop({anyFile("a.wav"), anyFile("b.mp4"), FileUrl::fromPath(m_folder / "gone.mp4")});
    EXPECT_THAT(names(), ElementsAre(u"b.mp4"_s));
    EXPECT_THAT(notices(), ElementsAre(u"2 files skipped"_s));
    pressOnBar(u"Show"_s);
    auto* dialog = window().findChild<QDialog*>();
    ASSERT_NE(dialog, nullptr);
    const auto* table = dialog->findChild<QTreeWidget*>();
    QStringList rows;
    for (int i = 0; i < table->topLevelItemCount(); ++i)
        rows << table->topLevelItem(i)->text(0) + u' ' + table->topLevelItem(i)->text(1);
    EXPECT_THAT(rows, ElementsAre(u"gone.mp4 does not exist"_s, u"a.wav is not a video file"_s));
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

/// A disk of the network that does not answer.
TEST_F(Queue, ADiskThatDoesNotAnswerKeepsNobodyWaiting)
{
    open();
    std::promise<void> answer;
    const auto answered = answer.get_future().share();
    const auto far = m_folder / "far";
    MainWindow window(model(), [&](const FileLooker::Paths& paths) {
        if (paths.front() == far)
            answered.wait();
        return DroppedFiles::look(paths);
    });
    window.show();
    window.take({far});
    window.take({anyFile("near.mp4").path()});
    EXPECT_TRUE(soon([&] { return names() == QStringList{u"near.mp4"_s}; }));
    EXPECT_TRUE(window.isTaking());
    answer.set_value();
    EXPECT_TRUE(soon([&] { return !window.isTaking(); }));
}

} // namespace
} // namespace vantroque

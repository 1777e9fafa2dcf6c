#include "VantroqueApp/Views/Controls/FixBox.h"
#include "VantroqueApp/Views/Notes/NoteField.h"
#include "VantroqueApp/Views/Report/PlatformChips.h"
#include "VantroqueApp/Views/Report/ProblemLine.h"
#include "VantroqueApp/Views/Report/ProblemRow.h"
#include "VantroqueApp/Views/Report/ProblemsPanel.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "VantroqueApp/Views/Report/StickyBar.h"
#include "Views/WindowFixture.h"

#include <QClipboard>
#include <QLabel>
#include <QLayout>
#include <QScrollBar>
#include <QToolButton>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ProblemsPane : public WindowTest {
protected:
    void show(const std::string& file, std::vector<Profile> profiles = WindowScenes::profiles())
    {
        open(std::move(profiles));
        drop({anyFile(file)});
        EXPECT_TRUE(soonIdle());
    }
    std::vector<ProblemRow*> problems()
    {
        std::vector<ProblemRow*> rows;
        for (ProblemRow* row : the<ProblemsPanel>()->findChildren<ProblemRow*>())
            if (row->isVisible())
                rows.push_back(row);
        return rows;
    }
    std::vector<QString> titles()
    {
        std::vector<QString> titles;
        for (ProblemRow* row : problems())
            titles.push_back(row->problem().title);
        return titles;
    }
    std::vector<QString> opened()
    {
        std::vector<QString> titles;
        for (ProblemRow* row : problems())
            if (row->isOpen())
                titles.push_back(row->problem().title);
        return titles;
    }
    static QString current(const ReportSections& sections)
    {
        return sections.currentIndex().data(Qt::AccessibleTextRole).toString();
    }
    /// The current row, whole and under the bar.
    bool isInSight(const ReportSections& sections)
    {
        const QRect row = sections.visualRect(sections.currentIndex());
        const int top = sections.mapTo(the<ReportView>(), row.topLeft()).y();
        return top >= StickyBar::high && top + row.height() <= the<ReportView>()->height();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window().windowHandle(), key, modifiers);
    }
    QAbstractButton* button(const QString& words)
    {
        for (auto* each : window().findChildren<QAbstractButton*>())
            if (each->isVisible() && each->text() == words)
                return each;
        return nullptr;
    }
};

TEST_F(ProblemsPane, StandAboveTheFiguresEachOnce)
{
    show("fail.mp4");
    EXPECT_THAT(titles(), ElementsAre(u"Loudness"_s, u"True peak"_s, u"Resolution"_s));
    EXPECT_THAT(opened(), IsEmpty());
    EXPECT_TRUE(shows(u"3 problems to fix"_s));
    EXPECT_EQ(problems()[0]->line().accessibleName(),
              u"Fail, Loudness, 2 platforms, -19.6 LKFS, expected -24 LKFS ± 2 LU"_s);
}

TEST_F(ProblemsPane, AClickOpensOneWithThePlatformsAndAFixToCopy)
{
    show("fail.mp4");
    QTest::mouseClick(&problems()[0]->line(), Qt::LeftButton);
    EXPECT_THAT(opened(), ElementsAre(u"Loudness"_s));
    EXPECT_NE(button(u"Harbour Video"_s), nullptr);
    EXPECT_NE(button(u"Quay Social Stories and Reels"_s), nullptr);
    EXPECT_TRUE(shows(u"Fails"_s));
    auto* copy = button(u"Copy"_s);
    ASSERT_NE(copy, nullptr);
    QTest::mouseClick(copy, Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"-af loudnorm=I=-24:TP=-2:LRA=7"_s);
    EXPECT_EQ(copy->text(), u"Copied"_s);
    EXPECT_TRUE(soon([&] { return copy->text() == u"Copy"_s; }));
    QTest::mouseClick(&problems()[0]->line(), Qt::LeftButton);
    EXPECT_THAT(opened(), IsEmpty());
}

TEST_F(ProblemsPane, NGoesThroughThemAndStopsAtTheEnds)
{
    show("fail.mp4");
    for (const QString& expected :
         {u"Loudness"_s, u"True peak"_s, u"Resolution"_s, u"Resolution"_s}) {
        press(Qt::Key_N);
        EXPECT_THAT(opened(), ElementsAre(expected));
    }
    for (const QString& expected : {u"True peak"_s, u"Loudness"_s, u"Loudness"_s}) {
        press(Qt::Key_N, Qt::ShiftModifier);
        EXPECT_THAT(opened(), ElementsAre(expected));
    }
    QTest::mouseClick(the<QToolButton>(u"Next problem"_s), Qt::LeftButton);
    EXPECT_THAT(opened(), ElementsAre(u"True peak"_s));
}

TEST_F(ProblemsPane, AnNThatIsTypedIsALetter)
{
    show("fail.mp4");
    auto* field = soonThe<NoteField>();
    ASSERT_NE(field, nullptr);
    ASSERT_TRUE(soon([&] { return field->isEnabled(); }));
    field->setFocus();
    press(Qt::Key_N);
    press(Qt::Key_N, Qt::ShiftModifier);
    EXPECT_EQ(field->toPlainText().toLower(), u"nn"_s);
    EXPECT_THAT(opened(), IsEmpty());
}

TEST_F(ProblemsPane, ArrowsWalkThemAndReturnOpensOne)
{
    show("fail.mp4");
    problems()[0]->line().setFocus();
    press(Qt::Key_Down);
    EXPECT_TRUE(problems()[1]->line().hasFocus());
    press(Qt::Key_Return);
    EXPECT_THAT(opened(), ElementsAre(u"True peak"_s));
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_TRUE(problems()[0]->line().hasFocus());
}

TEST_F(ProblemsPane, OneGoesToItsMoment)
{
    show("warn-events.mp4");
    const auto rows = problems();
    const auto found = std::ranges::find_if(
        rows, [](ProblemRow* row) { return row->problem().moment.has_value(); });
    ASSERT_NE(found, rows.end());
    ASSERT_NE(model().player(), nullptr);
    (*found)->setOpen(true);
    const std::int64_t frame = (*found)->problem().moment->frame;
    ASSERT_NE(frame, 0);
    auto* go = button(u"Go to %1"_s.arg(Timecode(frame, 25.0).text()));
    ASSERT_NE(go, nullptr);
    QTest::mouseClick(go, Qt::LeftButton);
    EXPECT_EQ(model().player()->playhead().frame(), frame);
}

TEST_F(ProblemsPane, TheListIsCopiedAsText)
{
    show("fail.mp4");
    const auto& button = *the<QToolButton>(u"Copy the problems"_s);
    const QImage offers = button.icon().pixmap(button.iconSize()).toImage();
    QTest::mouseClick(the<QToolButton>(u"Copy the problems"_s), Qt::LeftButton);
    EXPECT_EQ(button.accessibleDescription(), u"Copied"_s);
    EXPECT_NE(button.icon().pixmap(button.iconSize()).toImage(), offers) << "a tick";
    const QString text = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(text.startsWith(u"fail.mp4    "_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"XX Loudness               2 platforms\n"_s)) << text.toStdString();
    EXPECT_TRUE(soon([&] { return button.accessibleDescription().isEmpty(); }));
    EXPECT_EQ(button.icon().pixmap(button.iconSize()).toImage(), offers);
}

TEST_F(ProblemsPane, SayWhenThereAreNone)
{
    std::vector<Profile> one{WindowScenes::profiles()[1]};
    show("ok.mp4", one);
    EXPECT_THAT(titles(), IsEmpty());
    EXPECT_TRUE(shows(u"No problems"_s));
}

TEST_F(ProblemsPane, WhatIsOpenStaysOpenAtAnotherChoiceOfPlatforms)
{
    show("fail.mp4");
    problems()[0]->setOpen(true);
    model().profiles().toggle(u"quay-social-stories-and-reels"_s);
    ASSERT_TRUE(soon([&] { return titles().size() == 2; }));
    EXPECT_THAT(opened(), ElementsAre(u"Loudness"_s));
    EXPECT_EQ(problems()[0]->problem().whose(), u"1 platform"_s);
}

TEST_F(ProblemsPane, AChipGoesToTheRowOfItsPlatform)
{
    show("fail.mp4");
    problems()[0]->setOpen(true);
    auto& sections = *the<ReportSections>();
    Q_EMIT sections.clicked(sections.model()->index(0, 0)); // which was open
    const auto closed = sections.model()->rowCount();
    auto* chip = the<QAbstractButton>(u"Go to Harbour Video"_s);
    ASSERT_NE(chip, nullptr);
    QTest::mouseClick(chip, Qt::LeftButton);
    EXPECT_GT(sections.model()->rowCount(), closed);
    EXPECT_TRUE(sections.hasFocus());
    EXPECT_TRUE(current(sections).startsWith(u"Fail, Loudness, "_s))
        << current(sections).toStdString();
    EXPECT_TRUE(isInSight(sections));
}

TEST_F(ProblemsPane, ChipsAreOneStopOfTheKeyboardWithArrowsBetween)
{
    show("fail.mp4");
    problems()[0]->setOpen(true);
    auto* first = the<QAbstractButton>(u"Go to Harbour Video"_s);
    auto* second = the<QAbstractButton>(u"Go to Quay Social Stories and Reels"_s);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(second->focusPolicy(), Qt::ClickFocus);
    first->setFocus();
    press(Qt::Key_Down);
    EXPECT_TRUE(second->hasFocus());
    press(Qt::Key_Return);
    EXPECT_TRUE(the<ReportSections>()->hasFocus());
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_TRUE(current(*the<ReportSections>()).contains(u"Quay Social Stories and Reels"_s))
        << current(*the<ReportSections>()).toStdString();
}

TEST_F(ProblemsPane, OfSeveralLimitsEachHasItsPlatformsAndItsFix)
{
    auto profiles = WindowScenes::profiles();
    profiles[2].loudness->targetLKFS = -16;
    show("fail.mp4", profiles);
    ProblemRow& loudness = *problems()[0];
    EXPECT_TRUE(loudness.line().accessibleName().contains(u"and 1 target"_s))
        << loudness.line().accessibleName().toStdString();
    loudness.setOpen(true);
    EXPECT_TRUE(shows(u"Expected: -24 LKFS ± 2 LU"_s));
    EXPECT_TRUE(shows(u"Expected: -16 LKFS ± 2 LU"_s));
    EXPECT_THAT(loudness.findChildren<PlatformChips*>(), testing::SizeIs(2));
    const auto widgets = loudness.findChildren<QWidget*>();
    EXPECT_EQ(std::ranges::count_if(
                  widgets, [](QWidget* each) { return dynamic_cast<FixBox*>(each) != nullptr; }),
              2);
    EXPECT_TRUE(shows(u"No single file can pass all of these: -24 and -16 LKFS"_s));
}

TEST_F(ProblemsPane, ABarTellsTheVerdictWhileTheSummaryIsOutOfSight)
{
    show("fail.mp4");
    resizeTo(window().minimumSize());
    auto& bar = *the<StickyBar>();
    auto& scroll = *the<ReportView>()->verticalScrollBar();
    EXPECT_FALSE(bar.isVisible());
    ASSERT_TRUE(soon([&] { return scroll.maximum() > 200; }));
    scroll.setValue(200);
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.height(), 40);
    EXPECT_EQ(bar.mapTo(the<ReportView>(), QPoint()), QPoint());
    EXPECT_TRUE(words().contains(u"3 problems"_s));
    for (auto* each : bar.findChildren<QToolButton*>())
        if (each->accessibleName() == u"Next problem"_s)
            QTest::mouseClick(each, Qt::LeftButton);
    EXPECT_THAT(opened(), ElementsAre(u"Loudness"_s));
    const QWidget& line = problems()[0]->line();
    EXPECT_GE(line.mapTo(the<ReportView>(), QPoint()).y(), bar.isVisible() ? 40 : 0);
    scroll.setValue(0);
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(ProblemsPane, ARowIsOneLineWhereThereIsRoom)
{
    show("fail.mp4");
    auto* report = the<ReportView>();
    const auto heightAt = [&](int width) {
        report->setMinimumWidth(width);
        report->setMaximumWidth(width);
        EXPECT_TRUE(soon([&] { return report->width() == width; }));
        return problems()[0]->line().sizeHint().height();
    };
    resizeTo({1600, 900});
    EXPECT_EQ(heightAt(559), 48);
    EXPECT_EQ(heightAt(560), 36);
}

TEST(ProblemRowTest, WhatWasCutShortGivesWayToTheDetailsThatSayIt)
{
    const QString measured = u"audio ends at 8.00s of 10.08s"_s;
    Problem problem{.checkID = u"audioCoverage"_s, .title = u"Audio coverage"_s};
    problem.limits.push_back({.measured = measured, .expected = u"audio all along"_s});
    ProblemRow row(problem, 25);
    row.show();
    const auto opened = [&row](int width) {
        row.resize(width, 400);
        row.layout()->activate();
        row.setOpen(true);
        const auto texts = row.findChildren<QLabel*>();
        const auto whole = std::ranges::count_if(
            texts, [&row](const QLabel* text) { return text->isVisibleTo(&row); });
        const int high = row.line().sizeHint().height();
        row.setOpen(false);
        return std::pair(high, static_cast<int>(whole));
    };
    EXPECT_EQ(opened(260), std::pair(30, 1));
    EXPECT_EQ(opened(600), std::pair(48, 0));
    EXPECT_EQ(row.line().sizeHint().height(), 48);
}

TEST_F(ProblemsPane, ARowIsCopiedAsText)
{
    show("fail.mp4");
    problems()[0]->line().setFocus();
    press(Qt::Key_C, Qt::ControlModifier);
    const QString text = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(text.startsWith(u"    XX Loudness               2 platforms\n"_s))
        << text.toStdString();
    EXPECT_TRUE(text.contains(u"fix: "_s));
    EXPECT_FALSE(text.contains(u"True peak"_s));
}

TEST_F(ProblemsPane, WhatIsOpenIsRememberedOfEachFile)
{
    show("fail.mp4");
    problems()[1]->setOpen(true);
    drop({anyFile("fail2.mp4")});
    ASSERT_TRUE(soonIdle());
    const auto files = model().files().analyses();
    model().files().select(files[1].id);
    EXPECT_THAT(opened(), IsEmpty());
    model().files().select(files[0].id);
    EXPECT_THAT(opened(), ElementsAre(u"True peak"_s));
}

} // namespace
} // namespace vantroque

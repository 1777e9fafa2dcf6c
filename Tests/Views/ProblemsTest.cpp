#include "VantroqueApp/Views/Notes/NoteField.h"
#include "VantroqueApp/Views/Report/ProblemLine.h"
#include "VantroqueApp/Views/Report/ProblemRow.h"
#include "VantroqueApp/Views/Report/ProblemsPanel.h"
#include "Views/WindowFixture.h"

#include <QClipboard>
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
        window().activateWindow();
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
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window().windowHandle(), key, modifiers);
    }
    QPushButton* button(const QString& words)
    {
        for (auto* each : window().findChildren<QPushButton*>())
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
    EXPECT_TRUE(words().contains(u"Fails: Harbour Video, Quay Social Stories and Reels"_s));
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
    auto* field = the<NoteField>();
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
    QTest::mouseClick(the<QToolButton>(u"Copy the problems"_s), Qt::LeftButton);
    const QString text = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(text.startsWith(u"fail.mp4    "_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"XX Loudness               2 platforms\n"_s)) << text.toStdString();
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

} // namespace
} // namespace vantroque

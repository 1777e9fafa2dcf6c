#include "VantroqueApp/Views/Controls/NoticeBar.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Files/Sidebar.h"
#include "VantroqueApp/Views/Notes/CommentsPanel.h"
#include "VantroqueApp/Views/Notes/NoteField.h"
#include "VantroqueApp/Views/Notes/TimedList.h"
#include "VantroqueApp/Views/Player/DeskInstruments.h"
#include "VantroqueApp/Views/Player/FileLine.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/PlayerPane.h"
#include "VantroqueApp/Views/Player/Timeline.h"
#include "VantroqueApp/Views/Player/TransportRow.h"
#include "VantroqueApp/Views/Report/ProblemRow.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "Views/WindowFixture.h"

#include <QMenu>
#include <QSplitter>
#include <QToolButton>

namespace vantroque {
namespace {

using testing::ElementsAre;

class ReviewDesk : public WindowTest {
protected:
    /// A file whose findings lie on the timeline, selected and with the keyboard on its picture.
    void openFilm(const std::string& name = "fail_events.mp4", QSize size = {1440, 900})
    {
        open();
        resizeTo(size);
        drop({anyFile(name)});
        ASSERT_TRUE(soonIdle());
        ASSERT_NE(soonThe<CommentsPanel>(), nullptr);
        ASSERT_TRUE(soon([this] { return player().notebook().isOpen(); }));
        the<PlayerPane>()->picture().setFocus();
    }
    PlayerController& player() { return *model().player(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window().windowHandle(), key, modifiers);
        QApplication::processEvents();
    }

    QPushButton* button(const QString& words)
    {
        for (auto* each : window().findChildren<QPushButton*>())
            if (each->isVisible() && each->text() == words)
                return each;
        return nullptr;
    }
    QAction* entry(const QString& name)
    {
        for (QMenu* menu : window().findChildren<QMenu*>())
            if (menu->title() == u"&View"_s)
                for (QAction* action : menu->actions())
                    if (action->text() == name)
                        return action;
        return nullptr;
    }
    bool isReview()
    {
        const bool review = !the<Sidebar>()->isVisible();
        EXPECT_EQ(the<ReportView>()->isVisible(), !review);
        if (the<FileLine>() != nullptr) {
            EXPECT_EQ(the<FileLine>()->isVisible(), review);
            EXPECT_EQ(the<Timeline>()->height(), review ? 128 : 34);
        }
        EXPECT_EQ(button(u"Review"_s)->isChecked(), review);
        EXPECT_EQ(button(u"Report"_s)->isChecked(), !review);
        EXPECT_EQ(entry(u"Review"_s)->isChecked(), review);
        return review;
    }
    QRect placeOf(const QWidget& widget)
    {
        return {widget.mapTo(&window(), QPoint()), widget.size()};
    }
    std::vector<QString> opened()
    {
        std::vector<QString> titles;
        for (ProblemRow* row : window().findChildren<ProblemRow*>())
            if (row->isVisible() && row->isOpen())
                titles.push_back(row->problem().title);
        return titles;
    }
};

TEST_F(ReviewDesk, IsTakenAndLeftByKeyByButtonAndByMenu)
{
    openFilm();
    EXPECT_FALSE(isReview());
    press(Qt::Key_F3);
    EXPECT_TRUE(isReview());
    press(Qt::Key_F3);
    EXPECT_TRUE(isReview()) << "no toggle";
    press(Qt::Key_F2);
    EXPECT_FALSE(isReview());
    QTest::mouseClick(button(u"Review"_s), Qt::LeftButton);
    EXPECT_TRUE(isReview());
    QTest::mouseClick(button(u"Report"_s), Qt::LeftButton);
    EXPECT_FALSE(isReview());
    entry(u"Review"_s)->trigger();
    EXPECT_TRUE(isReview());
    entry(u"Report"_s)->trigger();
    EXPECT_FALSE(isReview());
}

TEST_F(ReviewDesk, HasTheCommentsAtItsSideAndTheInstrumentsBelow)
{
    openFilm();
    press(Qt::Key_F3);
    const QRect comments = placeOf(*the<CommentsPanel>());
    EXPECT_EQ(comments.width(), 384);
    EXPECT_EQ(comments.right(), window().rect().right());
    EXPECT_EQ(comments.bottom(), window().rect().bottom());
    const QRect file = placeOf(*the<FileLine>());
    EXPECT_EQ(file.bottom() + 1, comments.top());
    EXPECT_TRUE(shows(u"fail_events.mp4"_s));
    const QRect instruments = placeOf(*the<DeskInstruments>());
    EXPECT_EQ(instruments.height(), 184);
    EXPECT_EQ(instruments.bottom(), window().rect().bottom());
    const QRect timeline = placeOf(*the<Timeline>());
    EXPECT_EQ(placeOf(*the<TransportRow>()).top(), timeline.bottom() + 1);
    EXPECT_EQ(placeOf(the<PlayerPane>()->picture()), QRect(0, 48, 1440 - 385, timeline.top() - 48));
    constexpr int oneLine = 40; // that tells how a film is shown
    EXPECT_LT(instruments.top() - placeOf(*the<TransportRow>()).bottom(), oneLine);
    press(Qt::Key_F2);
    EXPECT_FALSE(the<DeskInstruments>()->isVisible());
    EXPECT_LT(placeOf(*the<CommentsPanel>()).top(), 800);
    EXPECT_GT(placeOf(*the<CommentsPanel>()).top(), placeOf(*the<TransportRow>()).bottom());
}

TEST_F(ReviewDesk, ThePlayerAndANoteThatIsHalfWrittenGoOn)
{
    openFilm();
    const PlayerController* const before = &player();
    player().seek(120);
    auto& field = *the<NoteField>();
    QTest::mouseClick(field.viewport(), Qt::LeftButton);
    QTest::keyClicks(&field, u"Half a th"_s);
    for (const auto& [key, review] : {std::pair(Qt::Key_F3, true), std::pair(Qt::Key_F2, false)}) {
        press(key);
        EXPECT_EQ(isReview(), review);
        EXPECT_EQ(&player(), before);
        EXPECT_EQ(player().playhead().frame(), 120);
        EXPECT_TRUE(field.hasFocus());
        QTest::keyClicks(&field, u"ought"_s);
    }
    EXPECT_EQ(player().notebook().draft().text, u"Half a thoughtought"_s);
}

TEST_F(ReviewDesk, StaysForTheNextFileAndWaitsWhereThereIsNoPicture)
{
    openFilm();
    press(Qt::Key_F3);
    drop({anyFile("sound.mov"), anyFile("ok_events.mp4")});
    ASSERT_TRUE(soonIdle());
    const auto& files = model().files().analyses();
    model().files().select(files.at(1).id);
    EXPECT_TRUE(soon([this] { return !isReview(); }));
    EXPECT_FALSE(button(u"Review"_s)->isEnabled());
    EXPECT_FALSE(entry(u"Review"_s)->isEnabled());
    EXPECT_EQ(button(u"Review"_s)->toolTip(),
              u"Select a file that is analysed and has a picture"_s);
    model().files().select(files.at(2).id);
    EXPECT_TRUE(soon([this] { return isReview(); }));
}

TEST_F(ReviewDesk, NGoesByTimeOnThePictureAndBySeverityInTheReport)
{
    openFilm();
    press(Qt::Key_N);
    EXPECT_THAT(opened(), testing::IsEmpty());
    ASSERT_TRUE(player().focus().selectedEventID());
    const auto first = player().playhead().frame();
    press(Qt::Key_N);
    EXPECT_GT(player().playhead().frame(), first);
    press(Qt::Key_N, Qt::ShiftModifier);
    EXPECT_EQ(player().playhead().frame(), first);
    the<FileListView>()->setFocus();
    press(Qt::Key_N);
    EXPECT_THAT(opened(), ElementsAre(u"Loudness"_s));
    press(Qt::Key_F3);
    for (int i = 0; i < 99; ++i)
        press(Qt::Key_N);
    EXPECT_FALSE(the<QToolButton>(u"Next problem by time"_s)->isEnabled()) << "it stops at the end";
    EXPECT_TRUE(the<QToolButton>(u"Previous problem by time"_s)->isEnabled());
}

TEST_F(ReviewDesk, InALowWindowTheInstrumentsFold)
{
    openFilm("fail_events.mp4", {1024, 700});
    press(Qt::Key_F3);
    EXPECT_FALSE(the<DeskInstruments>()->isVisible());
    QTest::mouseClick(the<QToolButton>(u"Instruments"_s), Qt::LeftButton);
    EXPECT_TRUE(the<DeskInstruments>()->isVisible());
    EXPECT_GT(the<DeskInstruments>()->widget()->width(), the<DeskInstruments>()->width())
        << "a row that scrolls";
    resizeTo({1440, 900});
    EXPECT_FALSE(the<QToolButton>(u"Instruments"_s)->isVisible());
    EXPECT_TRUE(the<DeskInstruments>()->isVisible());
}

/// With the keys that an operator would try, and with the pointer.
TEST_F(ReviewDesk, ADeletedNoteComesBack)
{
    openFilm();
    auto& comments = *the<CommentsPanel>();
    auto& field = *comments.findChild<NoteField*>();
    for (const QString& text : {u"one"_s, u"two"_s}) {
        QTest::mouseClick(field.viewport(), Qt::LeftButton);
        QTest::keyClicks(&field, text);
        QTest::keyClick(&field, Qt::Key_Return, Qt::ControlModifier);
    }
    const auto texts = [this] {
        QStringList texts;
        for (const ReviewComment& comment : player().notebook().comments())
            texts << comment.text;
        return texts.join(u' ');
    };
    const auto bar = [this]() -> NoticeBar* {
        for (auto* each : window().findChildren<NoticeBar*>())
            if (each->isVisible())
                return each;
        return nullptr;
    };
    ASSERT_TRUE(soon([&] { return texts() == u"one two"_s; }));
    auto& list = *the<TimedList>(u"Notes"_s);
    list.setFocus();
    const auto takeAway = [&](const QString& left) {
        list.setCurrentIndex(list.model()->index(list.model()->rowCount() - 1, 0));
        press(Qt::Key_Delete);
        return soon([&] { return texts() == left; });
    };
    ASSERT_TRUE(takeAway(u"one"_s));
    ASSERT_NE(bar(), nullptr);
    EXPECT_TRUE(bar()->accessibleName().startsWith(u"Deleted the note at 00:00:0"_s));
    ASSERT_TRUE(takeAway(QString()));
    EXPECT_FALSE(field.hasFocus()) << "the next key is one of transport";
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(soon([&] { return texts() == u"one"_s; }));
    EXPECT_EQ(bar(), nullptr);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(soon([&] { return texts() == u"one two"_s; }));

    list.setFocus();
    ASSERT_TRUE(takeAway(u"one"_s));
    for (auto* undo : bar()->findChildren<ToolButton*>())
        if (undo->text() == u"Undo"_s)
            QTest::mouseClick(undo, Qt::LeftButton);
    EXPECT_TRUE(soon([&] { return texts() == u"one two"_s; }));

    ASSERT_TRUE(takeAway(u"one"_s));
    QTest::mouseClick(field.viewport(), Qt::LeftButton);
    QTest::keyClicks(&field, u"x"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field.toPlainText(), QString()) << "where a note is written the key is its own";
    EXPECT_EQ(texts(), u"one"_s);
}

} // namespace
} // namespace vantroque

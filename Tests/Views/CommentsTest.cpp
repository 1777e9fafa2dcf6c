#include "Views/PanelFixture.h"

#include "VantroqueApp/Views/Notes/TimedRowDelegate.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QHelpEvent>
#include <QToolTip>

namespace vantroque {
namespace {

using testing::Contains;
using testing::ElementsAre;

class Comments : public PanelTest {
protected:
    static AnnotationStroke stroke()
    {
        return {.id = QUuid::createUuid(), .points = {{0.1, 0.1}, {0.2, 0.2}}};
    }
};

TEST_F(Comments, SayHowANoteIsMadeWhileThereIsNone)
{
    open();
    for (const QString& text :
         {u"Comments"_s, u"Notes 0"_s, u"No notes yet"_s, u"Pause on a frame and write below."_s,
          u"Not signed off. 0 notes to answer."_s, u"Leave a note on this frame"_s})
        EXPECT_TRUE(words().contains(text)) << text.toStdString();
}

TEST_F(Comments, ANoteIsKeptAtTheFrameThatIsShown)
{
    open();
    write(182, u"Warm the grade."_s);
    ASSERT_EQ(notebook().comments().size(), 1U);
    const ReviewComment note = notebook().comments().front();
    EXPECT_EQ(note.frame, 182);
    EXPECT_EQ(note.frameRate, 25);
    EXPECT_EQ(note.author, model().noteAuthor().name());
    EXPECT_THAT(rows(notes()), ElementsAre(u"00:00:07:07, Warm the grade."_s));
    EXPECT_TRUE(words().contains(u"Notes 1"_s));
    EXPECT_TRUE(words().contains(u"Not signed off. 1 note to answer."_s));
    EXPECT_EQ(field().toPlainText(), QString());
    EXPECT_EQ(field().palette().color(QPalette::PlaceholderText), Theme::current().text3)
        << "a style sheet that gives a colour makes the hint of it half transparent";
    EXPECT_FALSE(notebook().isComposing());
    EXPECT_FALSE(field().hasFocus()) << "the next key is one of transport";
}

TEST_F(Comments, NotesStandByTimeAndAClickGoesToTheFrame)
{
    open();
    write(300, u"later"_s);
    write(100, u"sooner"_s);
    EXPECT_THAT(rows(notes()), ElementsAre(u"00:00:04:00, sooner"_s, u"00:00:12:00, later"_s));
    click(notes(), 1);
    EXPECT_EQ(player().playhead().frame(), 300);
    EXPECT_EQ(player().focus().selectedCommentID(), notebook().comments()[1].id);
    click(notes(), 0);
    EXPECT_EQ(player().playhead().frame(), 100);
    QTest::keyClick(&notes(), Qt::Key_Down);
    EXPECT_EQ(player().playhead().frame(), 300);
}

TEST_F(Comments, TheTrashAndDeleteTakeANoteAway)
{
    open();
    write(10, u"one"_s);
    write(20, u"two"_s);
    const QRect first = notes().visualRect(notes().rows().index(0));
    const QPoint trash = TimedRowDelegate::trashRect(first).center();
    QHelpEvent help(QEvent::ToolTip, trash, notes().viewport()->mapToGlobal(trash));
    QApplication::sendEvent(notes().viewport(), &help);
    EXPECT_EQ(QToolTip::text(), u"Delete this comment"_s);
    QTest::mouseClick(notes().viewport(), Qt::LeftButton, {}, trash);
    EXPECT_TRUE(soon([&] { return notebook().comments().size() == 1; }));
    EXPECT_THAT(rows(notes()), ElementsAre(u"00:00:00:20, two"_s));
    click(notes(), 0);
    QTest::keyClick(&notes(), Qt::Key_Delete);
    EXPECT_TRUE(soon([&] { return notebook().comments().empty(); }));
    EXPECT_EQ(player().focus().selectedCommentID(), std::nullopt);
    EXPECT_TRUE(words().contains(u"No notes yet"_s));
}

TEST_F(Comments, OnlySpacesAreNoNote)
{
    open();
    QTest::mouseClick(field().viewport(), Qt::LeftButton);
    EXPECT_TRUE(notebook().isComposing());
    QTest::keyClicks(&field(), u"   "_s);
    QTest::mouseClick(&button(u"Save"_s), Qt::LeftButton);
    EXPECT_FALSE(notebook().isComposing());
    EXPECT_TRUE(soon([&] { return model().reviews().isIdle(); }));
    EXPECT_TRUE(notebook().comments().empty());
    EXPECT_EQ(field().toPlainText(), QString());
}

TEST_F(Comments, EscapeAndCancelGiveANoteUp)
{
    open();
    const auto begin = [&] {
        QTest::mouseClick(field().viewport(), Qt::LeftButton);
        QTest::keyClicks(&field(), u"never mind"_s);
        notebook().addDraftStroke(stroke());
        notebook().setTool(AnnotationTool::pen);
    };
    for (const bool byKey : {true, false}) {
        begin();
        EXPECT_EQ(notebook().draftText(), u"never mind"_s);
        if (byKey)
            QTest::keyClick(&field(), Qt::Key_Escape);
        else
            QTest::mouseClick(&button(u"Cancel"_s), Qt::LeftButton);
        EXPECT_FALSE(notebook().hasDraft());
        EXPECT_FALSE(notebook().isComposing());
        EXPECT_EQ(notebook().tool(), AnnotationTool::pointer);
        EXPECT_EQ(field().toPlainText(), QString());
        EXPECT_FALSE(field().hasFocus());
    }
}

TEST_F(Comments, LeavingAnEmptyFieldLetsTheKeysPlayAgain)
{
    open();
    QTest::mouseClick(field().viewport(), Qt::LeftButton);
    EXPECT_TRUE(notebook().isComposing());
    notes().setFocus();
    detected().setFocus();
    field().clearFocus();
    EXPECT_FALSE(notebook().isComposing());
    QTest::mouseClick(field().viewport(), Qt::LeftButton);
    QTest::keyClicks(&field(), u"begun"_s);
    field().clearFocus();
    EXPECT_TRUE(notebook().isComposing()) << "a note that was begun stays open";
}

TEST_F(Comments, ANoteThatWasBegunIsStillThereAfterALookAtAnotherFile)
{
    open();
    player().seek(182);
    QTest::mouseClick(field().viewport(), Qt::LeftButton);
    QTest::keyClicks(&field(), u"Too d"_s);
    notebook().addDraftStroke(stroke());
    m_panel.reset();
    model().files().add({anyFile("events.mp4")});
    ASSERT_TRUE(soonIdle());
    model().files().select(entry(1).id);
    openPanel();
    EXPECT_EQ(field().toPlainText(), QString());
    m_panel.reset();
    model().files().select(entry(0).id);
    openPanel();
    EXPECT_EQ(field().toPlainText(), u"Too d"_s);
    EXPECT_TRUE(button(u"Save"_s).isEnabled());
    EXPECT_TRUE(button(u"Undo the last marking"_s).isEnabled());
    field().setFocus();
    QTest::keyClicks(&field(), u"ark"_s);
    QTest::keyClick(&field(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_TRUE(soon([&] { return notebook().comments().size() == 1; }));
    EXPECT_EQ(notebook().comments()[0].text, u"Too dark"_s) << "typing goes on where it was left";
    EXPECT_EQ(notebook().comments()[0].frame, 182);
    EXPECT_THAT(notebook().comments()[0].strokes, testing::SizeIs(1));
}

TEST_F(Comments, TypingReachesNothingButTheNote)
{
    struct Passed : QObject {
        bool eventFilter(QObject* object, QEvent* event) override
        {
            keys += event->type() == QEvent::KeyPress ? 1 : 0;
            return QObject::eventFilter(object, event);
        }
        int keys = 0;
    } passed;
    open().installEventFilter(&passed); // what a field does not take goes to what it is in
    QTest::mouseClick(field().viewport(), Qt::LeftButton);
    QTest::keyClicks(&field(), u"jkl JKL 10"_s);
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_Up,
                              Qt::Key_F5, Qt::Key_Return})
        QTest::keyClick(&field(), key);
    EXPECT_EQ(passed.keys, 0);
    EXPECT_EQ(player().shuttle().state().rate, 0);
    EXPECT_TRUE(field().toPlainText().contains(u"jkl JKL 10"_s));
}

TEST_F(Comments, ToolsAndInksAreChosenAndUndone)
{
    open();
    const std::map<QString, AnnotationTool> tools{{u"Pointer"_s, AnnotationTool::pointer},
                                                  {u"Draw freehand"_s, AnnotationTool::pen},
                                                  {u"Draw a circle"_s, AnnotationTool::ellipse},
                                                  {u"Draw an arrow"_s, AnnotationTool::arrow}};
    for (const auto& [help, tool] : tools) {
        QTest::mouseClick(&button(help), Qt::LeftButton);
        EXPECT_EQ(notebook().tool(), tool);
        EXPECT_TRUE(button(help).isChecked());
        EXPECT_EQ(button(help).accessibleDescription(), u"Draw on this frame"_s);
    }
    const std::map<QString, AnnotationStroke::Ink> inks{{u"Red"_s, AnnotationStroke::Ink::red},
                                                        {u"Amber"_s, AnnotationStroke::Ink::amber},
                                                        {u"White"_s, AnnotationStroke::Ink::white}};
    for (const auto& [help, ink] : inks) {
        QTest::keyClick(&button(help), Qt::Key_Return);
        EXPECT_EQ(notebook().ink(), ink);
        EXPECT_EQ(button(help).accessibleDescription(), u"Marker color"_s);
    }
    auto& undo = button(u"Undo the last marking"_s);
    EXPECT_FALSE(undo.isEnabled());
    notebook().addDraftStroke(stroke());
    notebook().setDraftText(u"with words"_s);
    QTest::mouseClick(&undo, Qt::LeftButton);
    EXPECT_TRUE(notebook().draftStrokes().empty());
    EXPECT_EQ(field().toPlainText(), u"with words"_s);
}

TEST_F(Comments, ADrawingAloneIsANote)
{
    open();
    notebook().addDraftStroke(stroke());
    QTest::mouseClick(&button(u"Save"_s), Qt::LeftButton);
    ASSERT_TRUE(soon([&] { return notebook().comments().size() == 1; }));
    EXPECT_THAT(rows(notes()), ElementsAre(u"00:00:00:00, with a drawing"_s));
}

TEST_F(Comments, ADecisionIsMadeAndTakenBack)
{
    open("fail.mp4");
    EXPECT_EQ(button(u"Approve"_s).toolTip(), u"Mark the file Approved"_s);
    EXPECT_EQ(button(u"Needs revisions"_s).toolTip(), u"Mark the file Needs revisions"_s);
    EXPECT_TRUE(button(u"Clear"_s).isHidden());
    QTest::mouseClick(&button(u"Approve"_s), Qt::LeftButton);
    ASSERT_TRUE(soon([&] { return notebook().review() && notebook().review()->signOff; }));
    const ReviewSignOff& signOff = *notebook().review()->signOff;
    EXPECT_EQ(signOff.decision, ReviewSignOff::Decision::approved);
    EXPECT_EQ(signOff.qcVerdictWhenSigned, Verdict::fail);
    EXPECT_THAT(words(), Contains(testing::Truly([](const QString& text) {
                    return text.startsWith(u"Approved over 2 failing platforms, "_s);
                })));
    EXPECT_EQ(entry(0).signOff, signOff) << "the list and the player agree";
    EXPECT_TRUE(button(u"Approve"_s).isChecked());
    EXPECT_EQ(button(u"Clear"_s).toolTip(), u"Clear this decision"_s);
    QTest::mouseClick(&button(u"Needs revisions"_s), Qt::LeftButton);
    EXPECT_TRUE(soon([&] {
        return entry(0).signOff
               && entry(0).signOff->decision == ReviewSignOff::Decision::needsRevisions;
    }));
    EXPECT_FALSE(button(u"Approve"_s).isChecked());
    QTest::mouseClick(&button(u"Clear"_s), Qt::LeftButton);
    EXPECT_TRUE(soon([&] { return !entry(0).signOff; }));
    EXPECT_FALSE(notebook().review()->signOff);
    EXPECT_TRUE(words().contains(u"Not signed off. 0 notes to answer."_s));
}

TEST_F(Comments, AFindingIsGoneToFromItsTab)
{
    open("events.mp4");
    QTest::mouseClick(&button(u"Detected 3"_s), Qt::LeftButton);
    EXPECT_TRUE(detected().isVisible());
    EXPECT_THAT(
        rows(detected()),
        ElementsAre(u"Warning, 00:00:02:00, Left and right inverted for 3.0 s: cancels in mono"_s,
                    u"Information, 00:00:10:00, Dip to black for 1.0 s"_s,
                    u"Warning, 00:00:20:00, 1 black frame inside the picture"_s));
    click(detected(), 2);
    EXPECT_EQ(player().playhead().frame(), 500);
    EXPECT_EQ(player().focus().selectedEventID(), player().detectedEvents()[2].id);
    write(600, u"note"_s);
    EXPECT_TRUE(notes().isVisible()) << "who writes a note sees the notes";
}

TEST_F(Comments, ReadInEveryScript)
{
    open();
    notebook().setDraftText(u"שלום, הצבע חם מדי"_s);
    QTest::mouseClick(&button(u"Save"_s), Qt::LeftButton);
    ASSERT_TRUE(soon([&] { return notebook().comments().size() == 1; }));
    notebook().setDraftText(u"👍🏽 family 👨‍👩‍👧 – “fine”\nsecond line"_s);
    QTest::mouseClick(&button(u"Save"_s), Qt::LeftButton);
    ASSERT_TRUE(soon([&] { return notebook().comments().size() == 2; }));
    // Letters of one font are drawn at once.
    const auto texts = paintedTexts(notes());
    const auto first = std::ranges::find(texts, u"שלום"_s, &PaintedText::text);
    ASSERT_NE(first, texts.end());
    EXPECT_GT(first->place.x(), notes().width() / 2) << "it runs from the right";
    const auto last = std::ranges::find(texts, u"מדי"_s, &PaintedText::text);
    ASSERT_NE(last, texts.end());
    EXPECT_LT(last->place.x(), first->place.x());
    EXPECT_TRUE(words().contains(u"👨‍👩‍👧"_s));
    EXPECT_TRUE(words().contains(u"second line"_s));
}

TEST_F(Comments, ALongNoteShowsItsFirstLinesUntilItIsLookedAt)
{
    open();
    notebook().setDraftText(u"wide words "_s.repeated(1'000));
    QTest::mouseClick(&button(u"Save"_s), Qt::LeftButton);
    ASSERT_TRUE(soon([&] { return notes().rows().rowCount() == 1; }));
    const auto height = [&] { return notes().visualRect(notes().rows().index(0)).height(); };
    EXPECT_TRUE(soon([&] { return height() > 1'000; })) << "a new note is looked at";
    write(40, u"another"_s);
    EXPECT_TRUE(soon([&] { return height() == 4 * RowText::lineHeight + 14; })) << height();
    EXPECT_TRUE(words().filter(u"…"_s).size() == 1);
}

TEST_F(Comments, KeepNoHeightOfANarrowerPanel)
{
    open();
    write(10, u"Warmer grade on the hills, please, and a little less of it in the valley."_s);
    notes().resize(220, notes().height());
    const auto height = [&] { return notes().visualRect(notes().rows().index(0)).height(); };
    ASSERT_TRUE(soon([&] { return height() > 40; }));
    notes().resize(600, notes().height());
    EXPECT_TRUE(soon([&] { return height() < 40; })) << height();
}

TEST_F(Comments, FitIntoASmallPanel)
{
    open();
    panel().resize(360, 128);
    EXPECT_TRUE(soon([&] { return panel().height() == 128; }));
    QApplication::processEvents();
    for (const QString& name : {u"Mark the file Approved"_s, u"Mark the file Needs revisions"_s,
                                u"Notes 0"_s, u"Detected 0"_s}) {
        const auto& each = button(name);
        EXPECT_TRUE(panel().rect().contains(QRect(each.mapTo(&panel(), QPoint()), each.size())))
            << name.toStdString();
    }
    EXPECT_TRUE(panel().rect().contains(QRect(field().mapTo(&panel(), QPoint()), field().size())));
}

TEST_F(Comments, AreSignedWithTheNameThatTheOperatorGave)
{
    open();
    model().noteAuthor().setName(u"  Anna  Berg "_s);
    write(5, u"signed"_s);
    EXPECT_EQ(notebook().comments().front().author, u"Anna Berg"_s);
    EXPECT_TRUE(
        notes().rows().index(0).data(Qt::ToolTipRole).toString().startsWith(u"Anna Berg, "_s));
    model().noteAuthor().setName({});
    EXPECT_NE(model().noteAuthor().name(), u"Anna Berg"_s);
}

} // namespace
} // namespace vantroque

#include "Views/PaneFixture.h"

#include <QHelpEvent>
#include <QToolTip>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class TimelineTest : public PaneTest {
protected:
    void note(std::int64_t frame, const QString& text)
    {
        ASSERT_TRUE(soon([&] { return player().notebook().isOpen(); }));
        player().seek(frame);
        player().notebook().setDraftText(text);
        player().saveComment({});
        ASSERT_TRUE(soon([&] { return !timeline().marks().comments.empty(); }));
        player().seek(0);
    }
    QPoint pin(std::size_t index)
    {
        const TimelineMarks& marks = timeline().marks();
        return marks.pinOf(marks.comments.at(index)).center().toPoint();
    }
    QString helpAt(const QPoint& place)
    {
        QHelpEvent event(QEvent::ToolTip, place, timeline().mapToGlobal(place));
        QApplication::sendEvent(&timeline(), &event);
        return QToolTip::text();
    }
};

TEST_F(TimelineTest, FirstAndLastFrameAreItsEnds)
{
    openPane();
    const TimelineMarks& marks = timeline().marks();
    EXPECT_EQ(marks.placeOf(0), marks.line.left());
    EXPECT_EQ(marks.placeOf(99), marks.line.right());
    for (const std::int64_t number : {0, 1, 42, 98, 99})
        EXPECT_EQ(marks.frameAt(marks.placeOf(number)), number);
    EXPECT_EQ(marks.frameAt(-50), 0);
    EXPECT_EQ(marks.frameAt(5000), 99);
}

TEST_F(TimelineTest, AnotherWidthOnlyLaysOut)
{
    openPane({finding(20, 40, u"Too bright"_s)});
    const TimelineMarks& marks = timeline().marks();
    const SignalEvent* const gathered = marks.events.data();
    const double right = marks.line.right();
    pane().resize(900, 852);
    ASSERT_TRUE(soon([&] { return marks.line.right() != right; }));
    EXPECT_EQ(marks.line.right(), timeline().width() - marks.line.left());
    EXPECT_EQ(marks.placeOf(99), marks.line.right());
    EXPECT_EQ(marks.events.data(), gathered);
}

TEST_F(TimelineTest, AFileOfOneFrameHasOnePlace)
{
    TimelineMarks marks{.last = 0, .line = QRectF(10, 0, 100, 2)};
    EXPECT_EQ(marks.placeOf(0), 10);
    EXPECT_EQ(marks.frameAt(80), 0);
}

TEST_F(TimelineTest, AMomentsFindingCanBeSeenAndStaysOnTheLine)
{
    openPane({finding(99, 99, u"Black"_s)});
    const QRectF span = timeline().marks().spanOf(timeline().marks().events.front());
    EXPECT_GE(span.width(), 4);
    EXPECT_LE(span.right(), timeline().marks().line.right());
}

TEST_F(TimelineTest, APressGoesThereAndADragScrubs)
{
    openPane();
    QTest::mousePress(&timeline(), Qt::LeftButton, {}, placeOf(40));
    EXPECT_EQ(frame(), 40);
    for (const std::int64_t number : {50, 70, 65}) {
        QTest::mouseMove(&timeline(), placeOf(number));
        EXPECT_NEAR(static_cast<double>(frame()), static_cast<double>(number), 1);
    }
    QTest::mouseRelease(&timeline(), Qt::LeftButton, {}, placeOf(65));
    QTest::mouseMove(&timeline(), placeOf(10));
    EXPECT_NEAR(static_cast<double>(frame()), 65, 1) << "the button is up";
}

TEST_F(TimelineTest, AClickOnAFindingGoesToItAndRingsIt)
{
    openPane({finding(20, 40, u"Too bright"_s)});
    QTest::mouseClick(&timeline(), Qt::LeftButton, {}, placeOf(30));
    EXPECT_EQ(frame(), 20);
    EXPECT_EQ(player().focus().selectedEventID(), u"e20"_s);
    EXPECT_TRUE(player().overlay().finding);
}

TEST_F(TimelineTest, ADragOverAFindingScrubsAllTheSame)
{
    openPane({finding(20, 40, u"Too bright"_s)});
    QTest::mousePress(&timeline(), Qt::LeftButton, {}, placeOf(30));
    QTest::mouseMove(&timeline(), placeOf(36));
    EXPECT_NEAR(static_cast<double>(frame()), 36, 1);
    QTest::mouseRelease(&timeline(), Qt::LeftButton, {}, placeOf(36));
    EXPECT_NEAR(static_cast<double>(frame()), 36, 1);
    EXPECT_FALSE(player().focus().selectedEventID());
}

TEST_F(TimelineTest, ANoteIsAPinThatIsHitBeforeTheFindingUnderIt)
{
    openPane({finding(20, 40, u"Too bright"_s)});
    note(30, u"Warmer"_s);
    QTest::mouseClick(&timeline(), Qt::LeftButton, {}, pin(0));
    EXPECT_EQ(frame(), 30);
    EXPECT_EQ(player().focus().selectedCommentID(), timeline().marks().comments[0].id);
}

TEST_F(TimelineTest, TellsInWordsWhatLiesUnderThePointer)
{
    openPane({finding(20, 40, u"Too bright"_s), finding(25, 25, u"Flash"_s)});
    EXPECT_EQ(helpAt(placeOf(25)), u"00:00:00:20 to 00:00:01:15  Too bright\n00:00:01:00  Flash"_s);
    EXPECT_EQ(helpAt(placeOf(75)), u"00:00:03:00"_s);
    note(75, u"Warmer"_s);
    EXPECT_EQ(helpAt(pin(0)), u"00:00:03:00  Warmer"_s);
}

TEST_F(TimelineTest, IsWalkedByTheKeyboard)
{
    openPane({finding(20, 40, u"Too bright"_s), finding(60, 61, u"Too dark"_s)});
    timeline().setFocus();
    std::vector<std::int64_t> frames;
    for (const Qt::Key pressed : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown,
                                  Qt::Key_PageUp, Qt::Key_Right, Qt::Key_Home}) {
        key(pressed);
        frames.push_back(frame());
    }
    EXPECT_THAT(frames, ElementsAre(20, 60, 20, 45, 20, 21, 0));
}

} // namespace
} // namespace vantroque

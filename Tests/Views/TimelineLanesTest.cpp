#include "VantroqueApp/Views/Player/TimelineLanes.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "Views/PaintedWords.h"
#include "Views/PaneFixture.h"

#include <QHelpEvent>
#include <QToolTip>

namespace vantroque {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using Kind = SignalEvent::Kind;
using Lane = TimelineMarks::Lane;

SignalEvent event(Kind kind, std::int64_t frame, std::int64_t end, Verdict verdict = Verdict::warn)
{
    SignalEvent made;
    made.id = u"%1-%2"_s.arg(static_cast<int>(kind)).arg(frame);
    made.kind = kind;
    made.frame = frame;
    made.endFrame = end;
    made.verdict = verdict;
    made.text = u"Left and right inverted for 1.0 s: cancels in mono"_s;
    return made;
}

class TimelineLanesTest : public PaneTest {
protected:
    /// A desk for reviewing, 1056 wide.
    void openDesk(std::vector<SignalEvent> events = {})
    {
        openPane(std::move(events), {1056 + 385, 852});
        pane().setReview(true);
        QApplication::processEvents();
    }
    /// Black, frozen and silent in the last seconds of four.
    void measure()
    {
        auto media = std::make_shared<MediaInfo>();
        media->durationSeconds = 4;
        media->video.emplace().nominalFrameRate = 25;
        media->signal.emplace().blackRuns = {{1, 2}};
        media->signal->freezeRuns = {{2, 3}};
        media->signal->audioIslands = {{0, 3}};
        player().setMedia(std::move(media));
        QApplication::processEvents();
    }
    const TimelineMarks& marks() { return timeline().marks(); }
    QRectF span(std::size_t index) { return marks().spanOf(marks().events.at(index)); }
    QString helpAt(const QPointF& point)
    {
        const QPoint place = point.toPoint();
        QHelpEvent event(QEvent::ToolTip, place, timeline().mapToGlobal(place));
        QApplication::sendEvent(&timeline(), &event);
        return QToolTip::text();
    }
    QColor colorAt(const QPointF& point)
    {
        return timeline().grab().toImage().pixelColor(point.toPoint());
    }
    void turn(int notches, Qt::KeyboardModifiers modifiers = {})
    {
        const QPointF middle = timeline().rect().center();
        QWheelEvent wheel(middle, timeline().mapToGlobal(middle), {}, {0, 120 * notches},
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&timeline(), &wheel);
    }
};

TEST_F(TimelineLanesTest, BesideAReportThereIsOneNarrowLine)
{
    openPane({event(Kind::phase, 20, 40)});
    EXPECT_EQ(timeline().height(), 34);
    EXPECT_THAT(paintedWords(timeline()), testing::IsEmpty());
    turn(3, Qt::ControlModifier);
    EXPECT_EQ(marks().range, TimelineRange()) << "that is never looked at closely";
}

TEST_F(TimelineLanesTest, ADeskHasALaneForEachThingThatFindingsAreAbout)
{
    openDesk({event(Kind::safeArea, 5, 10), event(Kind::safeZone, 20, 25),
              event(Kind::captionSpelling, 30, 35), event(Kind::captionDoubled, 40, 45),
              event(Kind::levels, 50, 55), event(Kind::blackFrame, 57, 58),
              event(Kind::flashFrame, 60, 60), event(Kind::duplicateFrame, 65, 65),
              event(Kind::decoding, 70, 75), event(Kind::phase, 80, 85),
              event(Kind::deadChannel, 90, 90)});
    EXPECT_EQ(timeline().height(), 128);
    EXPECT_THAT(paintedWords(timeline()),
                testing::IsSupersetOf({u"text"_s, u"picture"_s, u"sound"_s, u"black"_s, u"freeze"_s,
                                       u"silence"_s, u"0:00:20"_s, u"0:02:00"_s}));
    std::vector<double> tops;
    for (std::size_t i = 0; i < marks().events.size(); ++i)
        tops.push_back(span(i).top());
    EXPECT_THAT(tops, ElementsAre(27, 27, 27, 27, 43, 43, 43, 43, 43, 59, 59));
    EXPECT_EQ(marks().laneRect(Lane::black).top(), 79) << "four apart from the findings";
    EXPECT_EQ(marks().laneRect(Lane::silence).bottom(), 123);
    EXPECT_EQ(marks().line.left(), 84);
}

TEST_F(TimelineLanesTest, WhatIsBlackFrozenOrSilentLiesInItsLane)
{
    openDesk();
    measure();
    const QColor bar = Theme::dark().meterBar;
    const auto at = [&](Lane lane, double seconds) {
        return colorAt({marks().placeAt(seconds * 25), marks().laneRect(lane).center().y()});
    };
    for (const auto& [lane, seconds] : {std::pair(Lane::black, 1.5), std::pair(Lane::freeze, 2.5),
                                        std::pair(Lane::silence, 3.5)}) {
        EXPECT_EQ(at(lane, seconds), bar);
        EXPECT_NE(at(lane, 0.5), bar);
    }
    const QPointF silent(marks().placeAt(87), marks().laneRect(Lane::silence).center().y());
    EXPECT_EQ(helpAt(silent), u"00:00:03:00 to 00:00:03:24  Silence"_s);
}

TEST_F(TimelineLanesTest, ShapesTellVerdictsApart)
{
    const QRectF wide(100, 27, 60, 12);
    const auto leads = [&](Verdict verdict, const QRectF& span) {
        return TimelineLanes::shapeOf(event(Kind::levels, 0, 1, verdict), span)
            .contains(span.topLeft() + QPointF(2, 2));
    };
    EXPECT_TRUE(leads(Verdict::fail, wide));
    EXPECT_FALSE(leads(Verdict::warn, wide)) << "slanted";
    EXPECT_TRUE(leads(Verdict::warn, {100, 27, 19, 12})) << "no room for a slant";
    openDesk({event(Kind::levels, 10, 20, Verdict::info), event(Kind::levels, 40, 40)});
    EXPECT_EQ(span(0).height(), 6);
    EXPECT_EQ(span(1).height(), 12);
    EXPECT_EQ(span(1).width(), 4) << "never too narrow to be seen";
}

TEST_F(TimelineLanesTest, WordsStandOnABarWhereTheyFitClearOfThePlayhead)
{
    const SignalEvent warning = event(Kind::phase, 20, 60);
    const QRectF bar(100, 59, 100, 12);
    EXPECT_EQ(TimelineLanes::labelLeft(warning, bar, 60, 0), 109);
    EXPECT_EQ(TimelineLanes::labelLeft(warning, bar, 90, 0), std::nullopt) << "not whole";
    EXPECT_EQ(TimelineLanes::labelLeft(warning, bar, 60, 120), 124) << "after the playhead";
    EXPECT_EQ(TimelineLanes::labelLeft(warning, bar, 60, 150), std::nullopt);
    openDesk({warning, event(Kind::phase, 80, 81)});
    EXPECT_THAT(paintedWords(timeline()).filter(u"inverted"_s), ElementsAre(u"L/R inverted"_s));
    player().seek(21);
    EXPECT_THAT(paintedWords(timeline()), Contains(u"L/R inverted"_s));
    player().seek(56);
    EXPECT_THAT(paintedWords(timeline()), Contains(u"L/R inverted"_s))
        << "the playhead is behind it";
}

TEST_F(TimelineLanesTest, TheCurrentFindingHasARing)
{
    openDesk({event(Kind::phase, 40, 60)});
    const QPointF above(span(0).center().x() + 20, span(0).top() - 2);
    const QColor before = colorAt(above);
    player().goTo(marks().events.front());
    player().seek(0);
    QApplication::processEvents();
    EXPECT_NE(colorAt(above), before);
    EXPECT_GT(colorAt(above).lightness(), 150);
}

TEST_F(TimelineLanesTest, AClickOnABarGoesToItsFinding)
{
    openDesk({event(Kind::safeArea, 20, 40), event(Kind::phase, 30, 35)});
    QTest::mouseClick(&timeline(), Qt::LeftButton, {}, span(1).center().toPoint());
    EXPECT_EQ(frame(), 30);
    QTest::mouseClick(&timeline(), Qt::LeftButton, {}, span(0).center().toPoint());
    EXPECT_EQ(frame(), 20);
    EXPECT_EQ(helpAt(span(1).center()),
              u"00:00:01:05 to 00:00:01:10  Left and right inverted for 1.0 s: cancels in mono"_s);
}

TEST_F(TimelineLanesTest, TheWheelLooksCloserAtThePlayheadAndScrolls)
{
    openDesk();
    player().seek(50);
    const double place = marks().placeOf(50);
    turn(2, Qt::ControlModifier);
    EXPECT_EQ(marks().range.zoom, 2);
    EXPECT_NEAR(marks().placeOf(50), place, 0.5);
    const double first = marks().range.first;
    turn(-1);
    EXPECT_GT(marks().range.first, first);
    turn(50);
    EXPECT_EQ(marks().range.first, 0) << "not beyond the beginning";
    turn(-50, Qt::ControlModifier);
    EXPECT_EQ(marks().range, TimelineRange()) << "all of it";
    timeline().setFocus();
    key(Qt::Key_Plus);
    EXPECT_EQ(marks().range.zoom, 2);
    key(Qt::Key_Minus);
    EXPECT_EQ(marks().range.zoom, 1);
}

TEST_F(TimelineLanesTest, WhatIsSoughtComesIntoSight)
{
    openDesk({event(Kind::phase, 90, 95)});
    turn(4, Qt::ControlModifier);
    ASSERT_FALSE(marks().range.shows(90, 99));
    player().goToProblem(true);
    EXPECT_TRUE(marks().range.shows(90, 99));
    EXPECT_GE(marks().placeOf(90), marks().line.left());
}

TEST(TimelineRange, OfAFilmOfOneFrameIsAllOfIt)
{
    EXPECT_EQ(TimelineRange().zoomed(4, 0, 0), TimelineRange());
    EXPECT_EQ(TimelineRange().zoomed(4, 0, 5), TimelineRange()) << "ten frames are close enough";
}

TEST(TimelineRange, LooksCloserInTheMiddleAtWhatIsOutOfSight)
{
    const TimelineRange range = TimelineRange().zoomed(4, 0, 1000).zoomed(2, 900, 1000);
    EXPECT_EQ(range.length(1000), 125);
    EXPECT_TRUE(range.shows(900, 1000));
}

} // namespace
} // namespace vantroque

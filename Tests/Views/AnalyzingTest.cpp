#include "VantroqueApp/Views/Analyzing/AnalyzingView.h"
#include "VantroqueApp/Views/Analyzing/LiveInstruments.h"
#include "VantroqueApp/Views/Analyzing/LiveTimeline.h"
#include "VantroqueApp/Views/Analyzing/ProgressRing.h"
#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "Views/Animated.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

using Stage = AnalysisProgress::Stage;

class Analyzing : public WindowTest {
protected:
    void watch(const std::string& file)
    {
        open();
        drop({anyFile(file)});
        ASSERT_TRUE(soon([&] { return model().queue().progress(entry(0).id) != nullptr; }));
    }
    /// Of the analysing view; the report has meters as well.
    template<typename Widget>
    Widget& live()
    {
        return *the<AnalyzingView>()->findChild<Widget*>();
    }
    int top(const QWidget& widget) { return widget.mapTo(&window(), QPoint()).y(); }
};

TEST_F(Analyzing, ShowsStageClockAndFile)
{
    watch("run.mp4");
    EXPECT_TRUE(soonShows(u"Measuring picture and sound"_s));
    EXPECT_TRUE(soonShows(u"0:14 of 0:30"_s));
    EXPECT_TRUE(shows(u"run.mp4"_s));
}

TEST_F(Analyzing, NamesEachStage)
{
    const std::vector<std::pair<std::string, QString>> stages{
        {"run-probing.mp4", u"Reading the file"_s},
        {"run-text.mp4", u"Reading on-screen text"_s},
        {"run-slate.mp4", u"Reading the slate"_s},
        {"run-pop.mp4", u"Measuring the 2-pop"_s},
        {"run-scoring.mp4", u"Checking against the platforms"_s}};
    open();
    for (const auto& [file, stage] : stages) {
        drop({anyFile(file)});
        model().files().select(model().files().analyses().back().id);
        EXPECT_TRUE(soonShows(stage)) << stage.toStdString();
        m_scene.release();
        ASSERT_TRUE(soonIdle());
        model().files().clearAll();
        m_scene.hold();
    }
}

TEST_F(Analyzing, ShowsThePictureWithItsScopes)
{
    watch("run.mp4");
    auto& instruments = live<LiveInstruments>();
    EXPECT_TRUE(instruments.isVisible());
    const auto lit = [&](int x, int y) {
        return instruments.grab().toImage().pixelColor(x, y) != Theme::dark().stage;
    };
    EXPECT_TRUE(soon([&] { return lit(200, 100); }));
}

TEST_F(Analyzing, KeepsThePlaceOfThePictureBeforeThereIsOne)
{
    watch("run-probing.mp4");
    resizeTo({1440, 900});
    const int before = top(live<LiveTimeline>());
    EXPECT_TRUE(live<LiveInstruments>().isVisible());
    m_scene.release();
    ASSERT_TRUE(soonIdle());
    m_scene.hold();
    drop({anyFile("run.mp4")});
    model().files().select(entry(1).id);
    ASSERT_TRUE(soonShows(u"0:14 of 0:30"_s));
    EXPECT_TRUE(soon([&] { return top(live<LiveTimeline>()) == before; }));
}

TEST_F(Analyzing, GivesThePlaceToTheChannelsOfAFileWithoutAPicture)
{
    watch("run-sound.mov");
    ASSERT_TRUE(soonShows(u"0:14 of 0:30"_s));
    EXPECT_FALSE(live<LiveInstruments>().isVisible());
    EXPECT_TRUE(live<ChannelMeters>().isVisible());
}

TEST_F(Analyzing, FitsTheSmallestWindowWithManyChannels)
{
    watch("run-many.mov");
    resizeTo(window().minimumSize());
    ASSERT_TRUE(soonShows(u"0:14 of 0:30"_s));
    ASSERT_TRUE(soon([&] { return live<LiveTimeline>().isVisible(); }));
    QApplication::processEvents();
    EXPECT_LE(top(live<LiveTimeline>()) + live<LiveTimeline>().height(), window().height());
    EXPECT_GE(top(live<LiveTimeline>()),
              top(live<ChannelMeters>()) + live<ChannelMeters>().height());
    EXPECT_EQ(live<LiveInstruments>().height(), LiveInstruments::lowestHeight);
}

TEST_F(Analyzing, GivesWayToTheReportByItself)
{
    watch("run.mp4");
    ASSERT_TRUE(soonShows(u"Measuring picture and sound"_s));
    m_scene.release();
    EXPECT_TRUE(soonShows(u"Passes 2 of 3 platforms"_s));
}

TEST(AnalyzingMotion, TheRingFollowsTheFractionWhereTheDesktopWantsIt)
{
    AnalyzingView view;
    const FileAnalysis file{.id = QUuid::createUuid(), .url = FileUrl::fromPath("/spot.mov")};
    AnalysisProgress::Snapshot now{.stage = Stage::decoding, .fraction = 0.1};
    const auto* ring = view.findChild<ProgressRing*>();
    AnimationStyle::set(view, true);
    view.show(file, &now);
    EXPECT_EQ(ring->drawn(), 0.1) << "a file that was not shown before";
    now.fraction = 0.9;
    view.show(file, &now);
    EXPECT_EQ(ring->drawn(), 0.1);
    EXPECT_EQ(ring->accessibleName(), u"Analysed: 90%"_s) << "in words it is there at once";
    EXPECT_TRUE(QTest::qWaitFor([&] { return ring->drawn() == 0.9; }, 30'000));
    AnimationStyle::set(view, false);
    now.fraction = 0.95;
    view.show(file, &now);
    EXPECT_EQ(ring->drawn(), 0.95);
}

TEST(TimeReadout, CountsFramesWhileTextIsReadAndTimeWhileDecoding)
{
    AnalysisProgress::Snapshot now{.stage = Stage::probing};
    EXPECT_EQ(AnalyzingView::timeReadout(now), u""_s);
    now.duration = 65.9;
    EXPECT_EQ(AnalyzingView::timeReadout(now), u"1:05"_s);
    now.stage = Stage::decoding;
    now.mediaSeconds = 7;
    EXPECT_EQ(AnalyzingView::timeReadout(now), u"0:07 of 1:05"_s);
    now.stage = Stage::readingText;
    now.textFramesRead = 3;
    now.textFramesExtracted = 12;
    EXPECT_EQ(AnalyzingView::timeReadout(now), u"3 of 12 frames"_s);
}

} // namespace
} // namespace vantroque

#include "VantroqueApp/Views/AnalyzingView.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

using Analyzing = WindowTest;
using Stage = AnalysisProgress::Stage;

TEST_F(Analyzing, ShowsStageClockAndFile)
{
    open();
    drop({anyFile("run.mp4")});
    EXPECT_TRUE(soonShows(u"Measuring picture and sound"_s));
    EXPECT_TRUE(soonShows(u"0:14 of 0:30"_s));
    EXPECT_TRUE(shows(u"run.mp4"_s));
}

TEST_F(Analyzing, GivesWayToTheReportByItself)
{
    open();
    drop({anyFile("run.mp4")});
    ASSERT_TRUE(soonShows(u"Measuring picture and sound"_s));
    m_scene.release();
    EXPECT_TRUE(soonShows(u"Passes 2 of 3 platforms"_s));
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

#include "VantroqueApp/Views/Analyzing/LiveTimeline.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QPixmap>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

using Kind = AnalysisProgress::LiveEvent::Kind;

/// Of 20 seconds, half decoded.
AnalysisProgress::Snapshot halfway()
{
    AnalysisProgress::Snapshot now{.stage = AnalysisProgress::Stage::decoding};
    now.duration = 20;
    now.mediaSeconds = 10;
    return now;
}

/// Whether there is a mark in the black lane at that time.
bool isMarked(const AnalysisProgress::Snapshot& now, double seconds)
{
    LiveTimeline timeline;
    timeline.resize(12 + 60 + 400 + 12, timeline.height());
    timeline.show(now);
    const QImage image = timeline.grab().toImage();
    return image.pixelColor(72 + static_cast<int>(seconds * 20), 34 + 9) == Theme::dark().meterBar;
}

TEST(LiveTimeline, MarksARunFromItsStartToItsEnd)
{
    auto now = halfway();
    now.events = {{Kind::blackStart, 2}, {Kind::blackEnd, 4}};
    EXPECT_FALSE(isMarked(now, 1));
    EXPECT_TRUE(isMarked(now, 3));
    EXPECT_FALSE(isMarked(now, 5));
}

TEST(LiveTimeline, MarksAnOpenRunUpToTheDecode)
{
    auto now = halfway();
    now.events = {{Kind::blackStart, 8}};
    EXPECT_TRUE(isMarked(now, 9.5));
    EXPECT_FALSE(isMarked(now, 11));
}

TEST(LiveTimeline, EndsBlackWhereThePicturesAreLightAgain)
{
    auto now = halfway();
    now.events = {{Kind::blackStart, 2, 5}};
    EXPECT_TRUE(isMarked(now, 4));
    EXPECT_FALSE(isMarked(now, 6));
}

TEST(LiveTimeline, EndsNoOtherRunWithBlack)
{
    auto now = halfway();
    now.events = {{Kind::blackStart, 2}, {Kind::freezeStart, 3, 5}};
    EXPECT_TRUE(isMarked(now, 6));
}

} // namespace
} // namespace vantroque

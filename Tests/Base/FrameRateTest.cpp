#include "Base/FrameRate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace vantroque;

TEST(FrameRate, IsNothingThatCannotBeCountedIn)
{
    EXPECT_FALSE(FrameRate::of(0));
    EXPECT_FALSE(FrameRate::of(-25));
    EXPECT_FALSE(FrameRate::of(std::nan("")));
    EXPECT_FALSE(FrameRate::of(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(FrameRate::of(30 / 1.001)->perSecond(), 30 / 1.001);
}

TEST(FrameRate, TellsFramesAndSecondsFromEachOther)
{
    const FrameRate ntsc = *FrameRate::of(30 / 1.001);
    for (const std::int64_t frame : {0, 1, 29, 30, 1798, 107'892})
        EXPECT_EQ(ntsc.frameAt(ntsc.secondsOf(frame)), frame);
    EXPECT_EQ(FrameRate::film().frameAt(0.5 / 24), 1);
    EXPECT_EQ(FrameRate::film().frameAt(0.49 / 24), 0);
    EXPECT_EQ(FrameRate::film().frameAt(std::numeric_limits<double>::infinity()),
              std::numeric_limits<std::int64_t>::max());
}

TEST(FrameRate, CountsTimecodeInWholeFrames)
{
    EXPECT_EQ(FrameRate::of(30 / 1.001)->timecodeBase(), 30);
    EXPECT_EQ(FrameRate::of(12.5)->timecodeBase(), 13);
    EXPECT_EQ(FrameRate::of(0.1)->timecodeBase(), 1);
    EXPECT_EQ(FrameRate::of(1e300)->timecodeBase(), 1'000'000'000'000);
}

TEST(FrameRate, IsOrdered)
{
    EXPECT_LT(FrameRate::film(), FrameRate::television());
    EXPECT_EQ(*FrameRate::of(25), FrameRate::television());
}

#include "Signal/LevelsAnalyzer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque::LevelsAnalyzer {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int width = 192;
constexpr int height = 108;
constexpr qsizetype pixels = qsizetype{width} * height;
constexpr char grey = static_cast<char>(128);

/// A frame of that luma without colour, its first pixels of another luma.
QByteArray frame(int luma, qsizetype others = 0, int otherLuma = 0)
{
    return QByteArray(others, static_cast<char>(otherLuma))
           + QByteArray(pixels - others, static_cast<char>(luma)) + QByteArray(pixels * 2, grey);
}

PictureLevels measured(const QByteArray& dump, bool fullRange = false)
{
    return measure(RawFrames::make(dump, width, height, 4).value(), ColorMatrix::bt709, false,
                   fullRange, {}, {}, 8);
}

/// One frame of one colour in code values.
PictureLevels colored(int y, int cb, int cr, ColorMatrix matrix = ColorMatrix::bt709)
{
    const QByteArray dump{QByteArray(pixels, static_cast<char>(y))
                          + QByteArray(pixels, static_cast<char>(cb))
                          + QByteArray(pixels, static_cast<char>(cr))};
    return measure(RawFrames::make(dump, width, height, 4).value(), matrix, false, false, {}, {},
                   8);
}

PictureLevels codes(int lowest, int highest, bool fullRange, int bitDepth)
{
    return measure(RawFrames::make(frame(100), width, height, 4).value(), ColorMatrix::bt709, false,
                   fullRange, lowest, highest, bitDepth);
}

} // namespace

TEST(RawFrames, AreWholeFramesOrNothing)
{
    EXPECT_FALSE(RawFrames::make({}, 2, 1, 4));
    EXPECT_FALSE(RawFrames::make("12345", 2, 1, 4));
    EXPECT_FALSE(RawFrames::make("1234567", 2, 1, 4));
    EXPECT_FALSE(RawFrames::make("123456", 0, 1, 4));
    EXPECT_FALSE(RawFrames::make("123456", -2, -1, 4));
    const auto frames = RawFrames::make("AABBCCaabbcc", 2, 1, 4);
    ASSERT_TRUE(frames);
    EXPECT_EQ(frames->frameCount(), 2U);
    EXPECT_EQ(frames->planes(0).y, "AA");
    EXPECT_EQ(frames->planes(1).cb, "bb");
    EXPECT_EQ(frames->planes(1).cr, "cc");
}

TEST(LevelsAnalyzer, OnePercentOfThePictureMayBeOut)
{
    EXPECT_THAT(measured(frame(100, 207, 255)).yRejectRuns, IsEmpty());
    EXPECT_THAT(measured(frame(100, 208, 255)).yRejectRuns,
                ElementsAre(LevelRun{0, 0.25, 208.0 / 20736}));
    EXPECT_THAT(runs({0.01}, 4, 0.01), IsEmpty());
}

TEST(LevelsAnalyzer, OneSampleIsARunOfItsShareOfASecond)
{
    const auto found = measured(frame(100) + frame(255) + frame(100)).yRejectRuns;
    EXPECT_THAT(found, ElementsAre(LevelRun{0.25, 0.5, 1}));
}

TEST(LevelsAnalyzer, ARunThatIsOpenAtTheEndReachesTheEnd)
{
    EXPECT_THAT(runs({0, 0.5, 0.7}, 4, 0.01), ElementsAre(LevelRun{0.25, 0.75, 0.7}));
}

TEST(LevelsAnalyzer, RunsKeepTheirWorstMoment)
{
    EXPECT_THAT(runs({0.2, 0.9, 0.4, 0, 0.02}, 2, 0.01),
                ElementsAre(LevelRun{0, 1.5, 0.9}, LevelRun{2, 2.5, 0.02}));
    EXPECT_THAT(runs({0.2}, 0, 0.01), IsEmpty());
    EXPECT_THAT(runs({}, 4, 0.01), IsEmpty());
}

TEST(LevelsAnalyzer, WhatIsBeyondThePreferredRangeIsStrictAndNoReject)
{
    // 244 is 104.1 %, and 13 is -1.4 %.
    for (const int luma : {244, 13}) {
        const PictureLevels levels = measured(frame(luma));
        EXPECT_EQ(levels.strictRuns.size(), 1U) << luma;
        EXPECT_THAT(levels.yRejectRuns, IsEmpty()) << luma;
        EXPECT_THAT(levels.rgbRejectRuns, IsEmpty()) << luma;
    }
    EXPECT_THAT(measured(frame(241)).strictRuns, IsEmpty()) << "102.7 %";
    EXPECT_THAT(measured(frame(14)).strictRuns, IsEmpty()) << "-0.9 %";
}

TEST(LevelsAnalyzer, RejectsBeginBelowMinus5AndAbove105Percent)
{
    for (const int luma : {5, 4, 0, 246, 247, 255})
        EXPECT_EQ(measured(frame(luma)).yRejectRuns.size(), 1U) << luma;
    for (const int luma : {6, 16, 235, 245})
        EXPECT_THAT(measured(frame(luma)).yRejectRuns, IsEmpty()) << luma;
}

TEST(LevelsAnalyzer, IllegalColoursAreOutInRgbAlone)
{
    // Full white with full red: R is 100 + 1.5748 * 50.
    const PictureLevels levels = colored(235, 128, 240);
    EXPECT_EQ(levels.rgbRejectRuns.size(), 1U);
    EXPECT_EQ(levels.strictRuns.size(), 1U);
    EXPECT_THAT(levels.yRejectRuns, IsEmpty());
    EXPECT_EQ(colored(40, 128, 16).rgbRejectRuns.size(), 1U) << "red below black";
    EXPECT_EQ(colored(16, 16, 128).rgbRejectRuns.size(), 1U) << "blue below black";
}

TEST(LevelsAnalyzer, TheMatrixDecidesWhatIsLegal)
{
    // Full red of BT.601 is legal there and out of limits when read with BT.709.
    EXPECT_THAT(colored(81, 90, 240, ColorMatrix::bt601).rgbRejectRuns, IsEmpty());
    EXPECT_EQ(colored(81, 90, 240, ColorMatrix::bt709).rgbRejectRuns.size(), 1U);
    EXPECT_EQ(colored(81, 90, 240, ColorMatrix::bt2020).matrix, ColorMatrix::bt2020);
}

TEST(LevelsAnalyzer, FullRangeHasNoOffsetAndCannotLeaveItsLimitsInLuma)
{
    for (const int luma : {0, 255}) {
        const PictureLevels levels = measured(frame(luma), true);
        EXPECT_THAT(levels.yRejectRuns, IsEmpty());
        EXPECT_THAT(levels.strictRuns, IsEmpty());
        EXPECT_TRUE(levels.fullRange);
    }
    EXPECT_EQ(codes(0, 255, true, 8).yMinPercent, 0);
    EXPECT_EQ(codes(0, 255, true, 8).yMaxPercent, 100);
    EXPECT_EQ(codes(0, 1023, true, 10).yMaxPercent, 100);
}

TEST(LevelsAnalyzer, CodesArePercentOfTheVideoRangeAtAnyDepth)
{
    EXPECT_EQ(codes(16, 235, false, 8).yMinPercent, 0);
    EXPECT_EQ(codes(16, 235, false, 8).yMaxPercent, 100);
    EXPECT_EQ(codes(64, 940, false, 10).yMinPercent, 0);
    EXPECT_EQ(codes(64, 940, false, 10).yMaxPercent, 100);
    EXPECT_EQ(codes(256, 3760, false, 12).yMaxPercent, 100);
    EXPECT_DOUBLE_EQ(codes(5, 255, false, 8).yMinPercent, -11.0 / 219 * 100);
    EXPECT_DOUBLE_EQ(codes(5, 255, false, 8).yMaxPercent, 239.0 / 219 * 100);
}

TEST(LevelsAnalyzer, WithoutCodesTheRangeIsTakenAsKept)
{
    const PictureLevels levels = measured(frame(100));
    EXPECT_EQ(levels.yMinPercent, 0);
    EXPECT_EQ(levels.yMaxPercent, 100);
    EXPECT_EQ(levels.sampleRate, 4);
    EXPECT_EQ(levels.sampleWidth, 192);
    EXPECT_EQ(levels.sampleHeight, 108);
    EXPECT_EQ(levels.areaFraction, 0.01);
}

} // namespace vantroque::LevelsAnalyzer

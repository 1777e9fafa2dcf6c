#include "Signal/CadenceAnalyzer.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque {

namespace {

using CadenceAnalyzer::detectPeriod;
using CadenceAnalyzer::Input;
using CadenceAnalyzer::measure;
using testing::ElementsAre;
using testing::IsEmpty;

/// So many frames at 25 a second that all move.
Input moving(std::size_t frames)
{
    Input input;
    input.ydif.assign(frames, 3.0);
    input.ydif.front() = 0;
    input.duration = static_cast<double>(frames) / 25;
    return input;
}

Input repeating(std::size_t frames, std::size_t first, std::size_t last, std::size_t period)
{
    Input input = moving(frames);
    for (std::size_t i = first; i <= last; i += period)
        input.ydif[i] = 0;
    return input;
}

/// Frames of one pixel with these luma values.
RawFrames pictures(const std::vector<int>& lumas, double rate = 4)
{
    QByteArray dump;
    for (const int luma : lumas)
        dump += QByteArray(1, static_cast<char>(luma)) + QByteArray(2, '\0');
    return RawFrames::make(dump, 1, 1, rate).value();
}

} // namespace

TEST(StillPassages, ReachFromTheFirstToTheLastOfTheSamePictures)
{
    EXPECT_THAT(StillPassages::spans(pictures({1, 5, 5, 5, 9, 9})),
                ElementsAre(TimeSpan{0.25, 1}, TimeSpan{1, 1.5}));
    EXPECT_THAT(StillPassages::spans(pictures({7, 7, 7})), ElementsAre(TimeSpan{0, 0.75}));
    EXPECT_THAT(StillPassages::spans(pictures({1, 5, 9})), IsEmpty());
}

TEST(StillPassages, NeedTwoFramesAndARate)
{
    EXPECT_THAT(StillPassages::spans(pictures({7})), IsEmpty());
    EXPECT_THAT(StillPassages::spans(pictures({7, 7}, 0)), IsEmpty());
}

TEST(StillPassages, AllowAMeanDifferenceBelowHalfACode)
{
    const auto spans = [](const QByteArray& second) {
        const QByteArray chroma(8, '\0');
        return StillPassages::spans(
            RawFrames::make(QByteArray("\1\1\1\1") + chroma + second + chroma, 4, 1, 4).value());
    };
    EXPECT_EQ(spans("\1\1\1\2").size(), 1U) << "a quarter";
    EXPECT_THAT(spans("\1\1\2\2"), IsEmpty()) << "half exactly";
    EXPECT_THAT(spans("\377\1\1\1"), IsEmpty()) << "bytes are not signed";
}

TEST(Period, IsTheSmallestThatFits)
{
    EXPECT_EQ(detectPeriod({2, 4, 6, 8, 10}), 2);
    EXPECT_EQ(detectPeriod({5, 10, 15, 20, 25}), 5);
}

TEST(Period, NeedsThreeFifthsOfItsBeats)
{
    EXPECT_EQ(detectPeriod({6, 12, 18, 24, 30}), 6) << "too few for every 2nd or 3rd";
    EXPECT_EQ(detectPeriod({0, 2, 4, 6, 16}), std::nullopt) << "five of nine";
    EXPECT_EQ(detectPeriod({0, 2, 4, 6, 8, 18}), 2) << "six of ten";
}

TEST(Period, IsFoundWithABeatMissingAndInAnyOrder)
{
    EXPECT_EQ(detectPeriod({40, 5, 10, 15, 25, 30, 35, 45}), 5);
}

TEST(Period, NeedsFourFramesInFourFifthsOfTheGaps)
{
    EXPECT_EQ(detectPeriod({5, 10, 15}), std::nullopt);
    EXPECT_EQ(detectPeriod({7, 7, 7, 7}), std::nullopt);
    EXPECT_EQ(detectPeriod({5, 10, 15, 20, 25, 32}), 5) << "four of five";
    EXPECT_EQ(detectPeriod({5, 10, 15, 20, 27}), std::nullopt) << "three of four";
    EXPECT_EQ(detectPeriod({13, 26, 39, 52}), std::nullopt) << "longer than any";
}

TEST(Cadence, AStillTitleIsNoFault)
{
    Input input = moving(250);
    for (std::size_t i = 51; i < 125; ++i)
        input.ydif[i] = 0;
    EXPECT_EQ(measure(input).duplicateCount, 74);
    input.stillSpans = {{2, 5}};
    const FrameCadence cadence = measure(input);
    EXPECT_EQ(cadence.duplicateCount, 0);
    EXPECT_THAT(cadence.duplicateFrames, IsEmpty());
    EXPECT_EQ(cadence.duplicateCause, std::nullopt);
    EXPECT_EQ(cadence.duplicateSpan, std::nullopt);
}

TEST(Cadence, AFadeThatStandsStillInBlackIsNoFault)
{
    Input input = repeating(250, 100, 110, 1);
    input.blackRuns = {{4, 4.4}};
    EXPECT_EQ(measure(input).duplicateCount, 0);
}

TEST(Cadence, PassagesAreWidenedByHalfAFrameOnBothSides)
{
    Input input = moving(250);
    for (const std::size_t frame : {98, 99, 110, 111})
        input.ydif[frame] = 0;
    input.blackRuns = {{4, 4.4}};
    EXPECT_THAT(measure(input).duplicateFrames, ElementsAre(98, 111))
        << "frame 99 has its middle at 3.98 and 110 at 4.42, both on the edge";
}

TEST(Cadence, OverlappingPassagesInAnyOrderHoldTheirFrames)
{
    Input input = repeating(250, 50, 150, 25);
    input.stillSpans = {{5.9, 6.1}, {1.9, 4.2}, {2.5, 3.0}};
    EXPECT_THAT(measure(input).duplicateFrames, ElementsAre(125));
}

TEST(Cadence, TheFirstFrameHasNothingToRepeat)
{
    EXPECT_EQ(measure(moving(100)).duplicateCount, 0);
    EXPECT_EQ(measure(Input{}).frameCountSeen, 0);
}

TEST(Cadence, ARepeatAllThroughComesFromAConversion)
{
    Input input = repeating(900, 4, 899, 5);
    input.duration = 900 * 1001.0 / 30000;
    const FrameCadence cadence = measure(input);
    EXPECT_EQ(cadence.duplicatePeriod, 5);
    EXPECT_EQ(cadence.duplicateCause, DuplicateCause::conversion);
    EXPECT_EQ(cadence.duplicateSpan, std::pair(std::int64_t{4}, std::int64_t{899}));
    EXPECT_EQ(cadence.duplicateCount, 180);
}

TEST(Cadence, ARepeatInAPartComesFromARetimedShot)
{
    const FrameCadence cadence = measure(repeating(750, 200, 249, 2));
    EXPECT_EQ(cadence.duplicatePeriod, 2);
    EXPECT_EQ(cadence.duplicateCause, DuplicateCause::retimedShot);
}

TEST(Cadence, SixTenthsOfTheFramesMakeAConversion)
{
    EXPECT_EQ(measure(repeating(750, 100, 549, 1)).duplicateCause, DuplicateCause::scattered)
        << "frames that stand still have no period of 2 or more";
    Input input = repeating(755, 100, 552, 4);
    input.frameCount = 755;
    EXPECT_EQ(measure(input).duplicateCause, DuplicateCause::conversion) << "453 of 755";
    input.frameCount = 756;
    EXPECT_EQ(measure(input).duplicateCause, DuplicateCause::retimedShot);
}

TEST(Cadence, ThreeDuplicatesAreScattered)
{
    const FrameCadence cadence = measure(repeating(100, 10, 20, 5));
    EXPECT_EQ(cadence.duplicateCount, 3);
    EXPECT_EQ(cadence.duplicatePeriod, std::nullopt);
    EXPECT_EQ(cadence.duplicateCause, DuplicateCause::scattered);
}

TEST(Cadence, ListsEndAt200ButCountsDoNot)
{
    Input input = repeating(1000, 1, 602, 2);
    FrameCadence cadence = measure(input);
    EXPECT_EQ(cadence.duplicateCount, 301);
    EXPECT_EQ(cadence.duplicateFrames.size(), 200U);
    EXPECT_EQ(cadence.duplicateFrames.back(), 399);

    input = moving(2000);
    for (std::size_t i = 4; i + 1 < 2000; i += 4)
        input.ydif[i] = input.ydif[i + 1] = 40;
    EXPECT_EQ(measure(input).flashFrames.size(), 200U);
}

TEST(Cadence, AFlashStandsOutFromTheMotionAroundIt)
{
    Input input = moving(100);
    input.ydif[40] = 30;
    input.ydif[41] = 26;
    EXPECT_THAT(measure(input).flashFrames, ElementsAre(FlashFrame{40, 8.7}));
    input.ydif[42] = 6.6;
    EXPECT_THAT(measure(input).flashFrames, IsEmpty()) << "26 / 6.6 is below 4";
    input.ydif[42] = 6.5;
    EXPECT_THAT(measure(input).flashFrames, ElementsAre(FlashFrame{40, 4}));
    input.ydif[41] = 19.9;
    input.ydif[42] = 3;
    EXPECT_THAT(measure(input).flashFrames, IsEmpty()) << "below 20";
    input.ydif[41] = 20;
    EXPECT_EQ(measure(input).flashFrames.size(), 1U);
}

TEST(Cadence, AFlashBetweenStillsIsMeasuredAgainstHalfACode)
{
    for (const double around : {0.0, 0.5}) {
        Input input = moving(8);
        input.ydif = {0, around, around, 25, 25, around, around, 0};
        input.stillSpans = {{0, 1}};
        EXPECT_THAT(measure(input).flashFrames, ElementsAre(FlashFrame{3, 50}));
    }
}

TEST(Cadence, AFlashNeedsFramesOnBothSides)
{
    Input input = moving(3);
    input.ydif = {0, 30, 30};
    EXPECT_THAT(measure(input).flashFrames, IsEmpty());
    input.ydif = {0, 30, 30, 0};
    EXPECT_THAT(measure(input).flashFrames, ElementsAre(FlashFrame{1, 60}));
}

TEST(Cadence, AFlashInBlackIsNone)
{
    Input input = moving(100);
    input.ydif[50] = input.ydif[51] = 30;
    EXPECT_EQ(measure(input).flashFrames.size(), 1U);
    input.blackRuns = {{2, 2.04}};
    EXPECT_THAT(measure(input).flashFrames, IsEmpty());
}

TEST(Cadence, BlackAtHeadAndTailIsNotInside)
{
    Input input = moving(250);
    input.blackRuns = {{0, 2}, {0.05, 1}, {0.051, 1}, {4, 4.5}, {9, 9.9}, {9, 9.89}, {9.5, 10}};
    EXPECT_THAT(measure(input).interiorBlackRuns,
                ElementsAre(TimeSpan{0.051, 1}, TimeSpan{4, 4.5}, TimeSpan{9, 9.89}));
    input.duration = 0;
    EXPECT_EQ(measure(input).interiorBlackRuns.size(), 5U) << "no end is known";
}

TEST(Cadence, DifferencesAreReadAtTheirBitDepth)
{
    Input input = moving(100);
    input.ydif[50] = 0.039;
    EXPECT_EQ(measure(input).duplicateCount, 0);
    input.ydifBitDepth = 10;
    EXPECT_EQ(measure(input).duplicateCount, 1) << "a quarter of it is below 0.01";
    input.ydif[50] = 0.04;
    EXPECT_EQ(measure(input).duplicateCount, 0) << "a quarter of it is 0.01";
    input.ydifBitDepth = 0;
    input.ydif[50] = 0.00007;
    EXPECT_EQ(measure(input).duplicateCount, 1) << "times 128";
}

TEST(Cadence, CountsPassThrough)
{
    Input input = moving(100);
    input.frameCount = 120;
    input.repeatedTop = 1;
    input.repeatedBottom = 2;
    input.repeatedNeither = 3;
    const FrameCadence cadence = measure(input);
    EXPECT_EQ(cadence.frameCountSeen, 120);
    EXPECT_EQ(cadence.repeatedFieldsTop, 1);
    EXPECT_EQ(cadence.repeatedFieldsBottom, 2);
    EXPECT_EQ(cadence.repeatedFieldsNeither, 3);
}

TEST(Cadence, AFilmThatFlickersToBlackIsMeasuredSoon)
{
    Input input = repeating(180'000, 1, 179'999, 2);
    for (std::size_t i = 0; i < input.ydif.size(); i += 2)
        input.blackRuns.push_back({static_cast<double>(i) / 25, static_cast<double>(i) / 25});
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(measure(input).frameCountSeen, 180'000);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

namespace {

/// Frames in which the pictures last as many frames as the pattern says, over and over.
Input lasting(std::size_t frames, const std::vector<std::size_t>& pattern)
{
    Input input = moving(frames);
    std::size_t next = 0;
    for (std::size_t i = 0; next < frames; ++i) {
        for (std::size_t k = 1; k < pattern[i % pattern.size()] && next + k < frames; ++k)
            input.ydif[next + k] = 0;
        next += pattern[i % pattern.size()];
    }
    return input;
}

} // namespace

TEST(Cadence, TwentyFourInSixtyIsOneConversion)
{
    const FrameCadence cadence = measure(lasting(240, {2, 3}));
    EXPECT_EQ(cadence.duplicateCount, 144);
    EXPECT_EQ(cadence.duplicateCause, DuplicateCause::conversion);
    EXPECT_EQ(cadence.duplicatePeriod, std::nullopt);
    EXPECT_NEAR(cadence.framesPerPicture.value(), 2.5, 0.01);
    EXPECT_EQ(cadence.periodDescription(), QStringLiteral("every picture 2 or 3 times: 24 or "
                                                          "23.976 fps content delivered at 60 or "
                                                          "59.94"));
    EXPECT_EQ(measure(lasting(240, {2, 3, 2, 3, 2})).periodDescription(),
              QStringLiteral("every picture 2 or 3 times: 25 fps content delivered at 60 or "
                             "59.94"));
}

TEST(Cadence, OtherRepeatsDoNotAlternate)
{
    for (const std::vector<std::size_t>& pattern :
         {std::vector<std::size_t>{2}, {3}, {2, 4}, {1, 2, 3, 1}, {5}, {1, 1, 4}})
        EXPECT_EQ(CadenceAnalyzer::framesPerPicture(measure(lasting(190, pattern)).duplicateFrames),
                  std::nullopt)
            << testing::PrintToString(pattern);
    EXPECT_EQ(measure(lasting(12, {2, 3})).framesPerPicture, std::nullopt) << "too few to tell";
}

} // namespace vantroque

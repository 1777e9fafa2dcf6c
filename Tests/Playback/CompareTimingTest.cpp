#include "Playback/CompareTiming.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vantroque {
namespace {

using namespace CompareTiming;
using namespace Qt::StringLiterals;
using enum SyncAlignment;
using testing::DoubleNear;
using testing::Field;
using testing::Optional;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double hair = 1e-9;

Clip clipOf(double duration, double rate = 25, double offset = 0)
{
    return {.duration = duration, .rate = FrameRate::of(rate).value(), .offset = offset};
}

auto entryIs(double delay, double clipTime)
{
    return Optional(testing::AllOf(Field(&Entry::delay, DoubleNear(delay, hair)),
                                   Field(&Entry::clipTime, DoubleNear(clipTime, hair))));
}

const Clip thirty = clipOf(30);
const Clip fifteen = clipOf(15);
const Line starts{.longest = 30, .alignment = fromStart};
const Line ends{.longest = 30, .alignment = fromEnd};

} // namespace

TEST(CompareTiming, AShorterClipThatIsAlignedAtItsEndStartsLaterAndBothEndTogether)
{
    EXPECT_EQ(alignedTime(5, ends, fifteen), -10);
    EXPECT_THAT(entry(5, 1, ends, fifteen), entryIs(10, 0));
    EXPECT_EQ(timeUntilStart(5, ends, fifteen), 10);
    EXPECT_EQ(time(15, ends, fifteen), 0);
    EXPECT_EQ(time(20, ends, fifteen), 5);
    for (const Clip& clip : {thirty, fifteen})
        EXPECT_EQ(time(30, ends, clip), clip.last());
    EXPECT_THAT(entry(5, 1, ends, thirty), entryIs(0, 5));
}

TEST(CompareTiming, BackwardsFromTheEndAShorterClipJoinsAtItsLastFrame)
{
    EXPECT_THAT(entry(30, -1, starts, fifteen), entryIs(30 - 14.96, 14.96));
    EXPECT_THAT(entry(30, -1, starts, thirty), entryIs(30 - 29.96, 29.96));
    EXPECT_THAT(entry(10, -1, starts, fifteen), entryIs(0, 10));
}

TEST(CompareTiming, AClipThatIsOverOrARunAtRestHasNoEntry)
{
    EXPECT_EQ(entry(15, 1, starts, fifteen), std::nullopt);
    EXPECT_EQ(entry(14.96, 1, starts, fifteen), std::nullopt);
    EXPECT_THAT(entry(14.95, 1, starts, fifteen), entryIs(0, 14.95));
    EXPECT_EQ(entry(0, -1, starts, fifteen), std::nullopt);
    EXPECT_EQ(entry(5, -1, ends, fifteen), std::nullopt);
    EXPECT_EQ(entry(5, 0, starts, fifteen), std::nullopt);
}

TEST(CompareTiming, TheRateDoesNotChangeHowMuchOfTheLineLiesBeforeAnEntry)
{
    EXPECT_EQ(entry(5, 16, ends, fifteen), entry(5, 1, ends, fifteen));
    EXPECT_EQ(entry(30, -0.25, starts, fifteen), entry(30, -8, starts, fifteen));
}

TEST(CompareTiming, BeforeItsStartAndAfterItsEndAClipStandsOnItsFirstAndLastFrame)
{
    EXPECT_EQ(time(5, ends, fifteen), 0);
    EXPECT_EQ(frameDue(5, ends, fifteen), 0);
    EXPECT_EQ(time(22, starts, fifteen), 14.96);
    EXPECT_EQ(frameDue(22, starts, fifteen), 374);
    EXPECT_EQ(frameDue(30, starts, thirty), 749);
}

TEST(CompareTiming, ASlippedClipIsAheadOfTheOthersByItsOffset)
{
    Clip slipped = fifteen;
    EXPECT_FALSE(isSlipped(slipped));
    slipped.offset = 2;
    EXPECT_TRUE(isSlipped(slipped));
    EXPECT_EQ(alignedTime(3, starts, slipped), 3);
    EXPECT_EQ(time(3, starts, slipped), 5);
    EXPECT_THAT(entry(3, 1, starts, slipped), entryIs(0, 5));
    slipped.offset = -4;
    EXPECT_TRUE(isSlipped(slipped));
    EXPECT_EQ(timeUntilStart(3, starts, slipped), 1);
    EXPECT_THAT(entry(3, 1, starts, slipped), entryIs(1, 0));
    slipped.offset = 0.0005;
    EXPECT_FALSE(isSlipped(slipped));
}

TEST(CompareTiming, TheOffsetThatReachesAMomentPutsTheClipThere)
{
    for (const Line& line : {starts, ends})
        for (const double target : {0.0, 0.04, 7.5, 14.96}) {
            Clip clip = fifteen;
            clip.offset = offset(target, 20, line, clip);
            EXPECT_NEAR(time(20, line, clip), target, hair);
        }
    EXPECT_EQ(offset(7, 20, ends, fifteen), 2);
}

TEST(CompareTiming, TheTimeUntilTheStartIsNothingFromTheStartOn)
{
    EXPECT_EQ(timeUntilStart(14, ends, fifteen), 1);
    EXPECT_EQ(timeUntilStart(15, ends, fifteen), 0);
    EXPECT_FALSE(std::signbit(timeUntilStart(15, ends, fifteen)));
    EXPECT_EQ(timeUntilStart(15.001, ends, fifteen), 0);
    EXPECT_EQ(timeUntilStart(30, ends, fifteen), 0);
    EXPECT_EQ(timeUntilStart(0, starts, fifteen), 0);
}

TEST(CompareTiming, SaysInHowMuchTimeAClipStartsWhileMoreThanHalfAFrameRemains)
{
    EXPECT_EQ(startsIn(12, ends, fifteen), u"Starts in 0:03"_s);
    EXPECT_EQ(startsIn(0, ends, fifteen), u"Starts in 0:15"_s);
    EXPECT_EQ(startsIn(14.97, ends, fifteen), u"Starts in 0:00"_s);
    EXPECT_EQ(startsIn(14.99, ends, fifteen), std::nullopt);
    EXPECT_EQ(startsIn(15, ends, fifteen), std::nullopt);
    EXPECT_EQ(startsIn(0, ends, thirty), std::nullopt);
    const Line film{.longest = 7200, .alignment = fromEnd};
    EXPECT_EQ(startsIn(7110, film, fifteen), u"Starts in 1:15"_s);
    EXPECT_EQ(startsIn(0, film, fifteen), u"Starts in 119:45"_s);
    // A whole number of seconds is one however it was computed.
    EXPECT_EQ(startsIn(11.9999999999, ends, fifteen), u"Starts in 0:03"_s);
    EXPECT_EQ(startsIn(12.0000000001, ends, fifteen), u"Starts in 0:03"_s);
}

TEST(CompareTiming, AMomentOfAClipGivesThePositionThatItStandsAt)
{
    EXPECT_EQ(position(4, starts, fifteen), 4);
    EXPECT_EQ(position(4, ends, fifteen), 19);
    EXPECT_EQ(position(-40, ends, fifteen), 0);
    EXPECT_EQ(position(40, ends, fifteen), 30);
    EXPECT_EQ(position(40, starts, fifteen), 30);
    for (const Line& line : {starts, ends})
        EXPECT_EQ(time(position(4, line, fifteen), line, fifteen), 4);
}

TEST(CompareTiming, ARunIsOverAtTheEndThatItRunsTo)
{
    EXPECT_TRUE(runFinished(30, 1, starts));
    EXPECT_FALSE(runFinished(29.999, 1, starts));
    EXPECT_TRUE(runFinished(0, -1, starts));
    EXPECT_FALSE(runFinished(0, 1, starts));
    EXPECT_FALSE(runFinished(30, -16, starts));
    EXPECT_TRUE(runFinished(15, 0, starts));
    EXPECT_TRUE(runFinished(0, 1, Line()));
}

TEST(CompareTiming, TheLineIsAsLongAsTheLongestAndWalkedInFramesOfTheFastest)
{
    const std::vector<Clip> clips{fifteen, clipOf(30, 60), clipOf(6, 23.976)};
    EXPECT_EQ(Line::of(clips, fromEnd), (Line{.longest = 30, .alignment = fromEnd}));
    EXPECT_EQ(sharedRate(clips).perSecond(), 60);
    EXPECT_EQ(Line::of({}, fromStart).longest, 0);
    EXPECT_EQ(sharedRate({}).perSecond(), 25);
    EXPECT_EQ(starts.clamped(-1), 0);
    EXPECT_EQ(starts.clamped(31), 30);
}

TEST(CompareTiming, ClipsOfNoDurationStandStillOnTheirFirstFrame)
{
    const Clip empty = clipOf(0);
    const Line line = Line::of({empty, empty}, fromEnd);
    EXPECT_EQ(line.longest, 0);
    EXPECT_EQ(time(0, line, empty), 0);
    EXPECT_EQ(frameDue(0, line, empty), 0);
    EXPECT_EQ(entry(0, 1, line, empty), std::nullopt);
    EXPECT_EQ(entry(0, -1, line, empty), std::nullopt);
    EXPECT_EQ(startsIn(0, line, empty), std::nullopt);
    EXPECT_EQ(position(1, line, empty), 0);
    // Beside a real one it waits for the end.
    EXPECT_EQ(startsIn(10, ends, empty), u"Starts in 0:20"_s);
    EXPECT_EQ(frameDue(30, ends, empty), 0);
}

TEST(CompareTiming, AClipOfOneFrameIsAlwaysOnIt)
{
    const Clip flash = clipOf(0.04);
    for (const Line& line : {starts, ends})
        for (const double at : {0.0, 0.02, 15.0, 29.96, 29.99, 30.0}) {
            EXPECT_EQ(time(at, line, flash), 0);
            EXPECT_EQ(frameDue(at, line, flash), 0);
        }
    EXPECT_THAT(entry(0, 1, ends, flash), entryIs(29.96, 0));
    EXPECT_EQ(entry(0, 1, starts, flash), std::nullopt);
}

TEST(CompareTiming, TheFramesOfAFileAreItsDurationWhenTheyAgreeWithIt)
{
    // Sound outlasts the picture, or a container rounds.
    EXPECT_EQ(Clip::of({.frameRate = 25, .durationSeconds = 30.02, .frameCount = 750}), thirty);
    EXPECT_EQ(Clip::of({.frameRate = 30'000.0 / 1001, .durationSeconds = 3.337, .frameCount = 100})
                  .duration,
              FrameRate::of(30'000.0 / 1001)->secondsOf(100));
    // A rate that varies, and counts that are none.
    for (const std::optional<std::int64_t> count :
         {std::optional<std::int64_t>(600), std::optional<std::int64_t>(0),
          std::optional<std::int64_t>(-5), std::optional<std::int64_t>()}) {
        EXPECT_EQ(Clip::of({.frameRate = 25, .durationSeconds = 30, .frameCount = count}), thirty);
    }
}

TEST(CompareTiming, AShortFileThatCountsNoFramesKeepsItsDuration)
{
    for (const std::int64_t count : {0, -5})
        EXPECT_EQ(Clip::of({.frameRate = 25, .durationSeconds = 0.2, .frameCount = count}),
                  clipOf(0.2));
}

TEST(CompareTiming, WhatAFileStatesOfItselfMayBeNoNumber)
{
    for (const double none : {0.0, -3.0, std::nan(""), infinite, -infinite})
        EXPECT_EQ(Clip::of({.frameRate = none, .durationSeconds = none}), clipOf(0)) << none;
    EXPECT_EQ(Clip::of({.frameRate = 0, .durationSeconds = 30}), thirty);
}

TEST(CompareTiming, AClipThatIsFoundToEndSoonerEndsThere)
{
    const Clip found = thirty.endingWith(499);
    EXPECT_EQ(found.duration, 20);
    EXPECT_EQ(frameDue(30, ends, found), 499);
    EXPECT_EQ(timeUntilStart(5, ends, found), 5);
    EXPECT_EQ(thirty.endingWith(-1).duration, 0);
}

} // namespace vantroque

#include "Playback/CompareTiming.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

// Which frames are due on clips of any rates while all of them are walked or run.

namespace vantroque {
namespace {

using namespace CompareTiming;
using enum SyncAlignment;

constexpr std::array rates{24'000.0 / 1001, 24.0, 25.0, 30'000.0 / 1001, 50.0,
                           60'000.0 / 1001, 60.0};

Clip ofFrames(std::int64_t frames, double perSecond)
{
    const FrameRate rate = FrameRate::of(perSecond).value();
    return {.duration = rate.secondsOf(frames), .rate = rate};
}

/// The frames that are due one after the other on a walk over the whole line, as a controller
/// walks: each position is the one before and a step.
std::vector<std::int64_t> walked(const Clip& clip, const Line& line, FrameRate steps)
{
    std::vector<std::int64_t> frames{frameDue(0, line, clip)};
    double position = 0;
    while (position < line.longest) {
        position = line.clamped(position + steps.secondsOf(1));
        frames.push_back(frameDue(position, line, clip));
    }
    return frames;
}

void expectEachFrameOnce(std::vector<std::int64_t> frames, std::int64_t count)
{
    EXPECT_TRUE(std::ranges::is_sorted(frames));
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    ASSERT_EQ(frames.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(frames.front(), 0);
    EXPECT_EQ(frames.back(), count - 1);
}

} // namespace

TEST(CompareSteps, FilmBesideSixtyFramesIsWalkedFrameByFrameOfEach)
{
    const Clip film = ofFrames(720, 24'000.0 / 1001);
    const Clip fast = ofFrames(1800, 60);
    for (const SyncAlignment alignment : {fromStart, fromEnd}) {
        const Line line = Line::of({film, fast}, alignment);
        const FrameRate steps = sharedRate({film, fast});
        EXPECT_EQ(steps.perSecond(), 60);
        const auto frames = walked(film, line, steps);
        expectEachFrameOnce(frames, 720);
        expectEachFrameOnce(walked(fast, line, steps), 1800);
        // Each frame of film is on screen for two or three of the others.
        for (std::int64_t frame = 1; frame < 719; ++frame) {
            const auto shown = std::ranges::count(frames, frame);
            EXPECT_TRUE(shown == 2 || shown == 3) << frame << " for " << shown;
        }
    }
}

TEST(CompareSteps, NoFrameIsLeftOutWhateverTheRatesAndLengths)
{
    std::mt19937 chance(15);
    std::uniform_int_distribution<std::size_t> rate(0, rates.size() - 1);
    std::uniform_int_distribution<std::int64_t> frames(1, 400);
    for (int i = 0; i < 500; ++i) {
        SCOPED_TRACE(i);
        std::vector<Clip> clips;
        std::vector<std::int64_t> counts;
        for (int k = 0; k < 3; ++k) {
            counts.push_back(frames(chance));
            clips.push_back(ofFrames(counts.back(), rates.at(rate(chance))));
        }
        const Line line = Line::of(clips, i % 2 == 0 ? fromStart : fromEnd);
        for (std::size_t k = 0; k < clips.size(); ++k)
            expectEachFrameOnce(walked(clips[k], line, sharedRate(clips)), counts[k]);
        if (HasFailure())
            return;
    }
}

TEST(CompareSteps, FromTheEndClipsOfOneRateAreAsFarFromTheirLastFrames)
{
    std::mt19937 chance(15);
    std::uniform_int_distribution<std::size_t> rate(0, rates.size() - 1);
    std::uniform_int_distribution<std::int64_t> frames(1, 2000);
    for (int i = 0; i < 2000; ++i) {
        const double perSecond = rates.at(rate(chance));
        const std::int64_t first = frames(chance);
        const std::int64_t second = frames(chance);
        const Clip a = ofFrames(first, perSecond);
        Clip b = ofFrames(second, perSecond);
        b.duration = std::round(b.duration * 1000) / 1000; // as a container may state it
        const Line line = Line::of({a, b}, fromEnd);
        for (const std::int64_t fromLast : {0, 1, 7, 150}) {
            if (fromLast >= std::min(first, second))
                continue;
            const double position = line.longest - a.rate.secondsOf(fromLast + 1);
            ASSERT_EQ(frameDue(position, line, a), first - 1 - fromLast) << perSecond;
            ASSERT_EQ(frameDue(position, line, b), second - 1 - fromLast) << perSecond;
        }
    }
}

/// A clip that enters a run where its entry says stands at every moment where its position says.
TEST(CompareSteps, EntriesMeetWhatIsDue)
{
    std::mt19937 chance(15);
    const auto between = [&](double least, double most) {
        return std::uniform_real_distribution<double>(least, most)(chance);
    };
    constexpr std::array speeds{-16.0, -1.0, -0.25, 0.25, 1.0, 2.0, 16.0};
    int entered = 0;
    for (int i = 0; i < 5000; ++i) {
        const Clip clip{
            .duration = between(0, 40),
            .rate = FrameRate::of(rates.at(static_cast<std::size_t>(i) % rates.size())).value(),
            .offset = i % 3 == 0 ? between(-10, 10) : 0};
        const Line line{.longest = clip.duration + between(0, 40),
                        .alignment = i % 2 == 0 ? fromStart : fromEnd};
        const double from = between(0, line.longest);
        const double rate = speeds.at(static_cast<std::size_t>(i) % speeds.size());
        const auto joins = entry(from, rate, line, clip);
        const double way = between(0, rate > 0 ? line.longest - from : from);
        const double at = from + std::copysign(way, rate);
        const double due = time(at, line, clip);
        if (!joins) {
            ASSERT_EQ(due, time(from, line, clip)); // It is parked.
            continue;
        }
        ++entered;
        ASSERT_GE(joins->delay, 0);
        const double run = std::copysign(std::max(way - joins->delay, 0.0), rate);
        ASSERT_NEAR(std::clamp(joins->clipTime + run, 0.0, clip.last()), due, 1e-9);
    }
    EXPECT_GT(entered, 1000);
}

} // namespace vantroque

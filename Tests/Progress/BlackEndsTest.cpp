#include "Progress/AnalysisProgress.h"

#include <gmock/gmock.h>

#include <random>

// Where black ended, as seen on the sampled pictures.

namespace vantroque {
namespace {

using Kind = AnalysisProgress::LiveEvent::Kind;
using testing::ElementsAre;
using testing::Optional;

AnalysisProgress::FrameSample sampleAt(double time, bool isLight)
{
    AnalysisProgress::FrameSample sample;
    sample.time = time;
    sample.yHighPercent = isLight ? 60 : 1;
    return sample;
}

std::vector<std::optional<double>> endsIn(AnalysisProgress& progress)
{
    std::vector<std::optional<double>> ends;
    for (const auto& event : progress.snapshot().events)
        ends.push_back(event.end);
    return ends;
}

TEST(BlackEnds, AreWhereASampleIsLightAgain)
{
    AnalysisProgress progress;
    for (int second = 0; second <= 10; ++second)
        progress.append(sampleAt(second, second < 2 || second >= 5));
    progress.append({.kind = Kind::blackStart, .time = 2});
    EXPECT_THAT(endsIn(progress), ElementsAre(Optional(5.0)));
}

TEST(BlackEnds, AreFoundAlsoWhenTheSampleComesLast)
{
    AnalysisProgress progress;
    progress.append(sampleAt(0, true));
    progress.append({.kind = Kind::blackStart, .time = 2});
    progress.append(sampleAt(3, false));
    EXPECT_THAT(endsIn(progress), ElementsAre(std::nullopt));
    progress.append(sampleAt(4, true));
    progress.append(sampleAt(5, true));
    EXPECT_THAT(endsIn(progress), ElementsAre(Optional(4.0)));
}

TEST(BlackEnds, BelongToBlackAlone)
{
    AnalysisProgress progress;
    progress.append({.kind = Kind::freezeStart, .time = 2});
    progress.append({.kind = Kind::blackEnd, .time = 3});
    progress.append(sampleAt(5, true));
    EXPECT_THAT(endsIn(progress), ElementsAre(std::nullopt, std::nullopt));
}

TEST(BlackEnds, AreWhatALookAtAllSamplesWouldFind)
{
    std::mt19937 chance(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same run each time
    const auto below = [&](unsigned count) { return chance() % count; };
    for (int film = 0; film < 200; ++film) {
        AnalysisProgress progress;
        double time = 0;
        for (int i = 0; i < 60; ++i) {
            time = below(20) == 0 ? 0 : time + 0.5; // a decode may begin anew
            if (below(4) == 0)
                progress.append({.kind = Kind::blackStart,
                                 .time = time - 0.25 * static_cast<double>(below(9))});
            progress.append(sampleAt(time, below(3) == 0));
        }
        const auto now = progress.snapshot();
        for (const auto& black : now.events) {
            const auto light = std::ranges::find_if(now.frames, [&](const auto& sample) {
                return sample.time > black.time && sample.yHighPercent > 10;
            });
            EXPECT_EQ(black.end,
                      light != now.frames.end() ? std::optional(light->time) : std::nullopt);
        }
    }
}

TEST(BlackEnds, AreFoundWithoutALookAtTheSamplesForEachSnapshot)
{
    const auto picture = std::make_shared<const ScopeFrame>();
    AnalysisProgress progress;
    for (int second = 0; second < 1000; ++second) {
        auto sample = sampleAt(second, second % 10 != 0);
        sample.frame = picture;
        progress.append(std::move(sample));
        if (second % 10 == 1)
            progress.append({.kind = Kind::blackStart, .time = second - 1.0});
    }
    const long held = picture.use_count();
    const auto* events = progress.snapshot().events.begin();
    const std::vector snapshots(100, progress.snapshot());
    EXPECT_EQ(picture.use_count(), held) << "no sample was copied";
    EXPECT_EQ(snapshots.back().events.begin(), events) << "nor an event";
}

} // namespace
} // namespace vantroque

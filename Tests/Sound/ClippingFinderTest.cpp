#include "Sound/MadeSound.h"
#include "Sound/SoundScanner.h"

#include <gmock/gmock.h>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A second of one channel at 48 kHz.
SoundScan scanned(const MadeSound& sound)
{
    SoundScanner scanner(1, madeRate);
    scanner.add(sound);
    return scanner.finish(0);
}

/// So many samples of one value in quiet.
MadeSound peak(int samples, float value)
{
    MadeSound sound = silence(1);
    std::fill_n(sound.begin() + 24'000, samples, value);
    return sound;
}

} // namespace

TEST(ClippingFinder, ThreeSamplesInARowAtFullScaleAreCutOff)
{
    for (const float value : {1.0F, -1.0F, 32'767.0F / 32'768.0F, 1.3F}) {
        EXPECT_THAT(scanned(peak(2, value)).clippedRuns, IsEmpty()) << value;
        const SoundScan scan = scanned(peak(3, value));
        EXPECT_THAT(scan.clippedRuns, ElementsAre(ClippedRun{0, 0.5, 3})) << value;
        EXPECT_EQ(scan.clippedRunCount, 1);
    }
}

TEST(ClippingFinder, ACodeBelowFullScaleIsAPeak)
{
    EXPECT_THAT(scanned(peak(100, 32'766.0F / 32'768.0F)).clippedRuns, IsEmpty());
}

TEST(ClippingFinder, AWaveThatGoesToTheOtherSideIsARunOfItsOwn)
{
    MadeSound sound = peak(3, 1);
    std::fill_n(sound.begin() + 24'003, 4, -1.0F);
    EXPECT_THAT(scanned(sound).clippedRuns,
                ElementsAre(ClippedRun{0, 0.5, 3}, ClippedRun{0, 24'003.0 / madeRate, 4}));
    std::fill_n(sound.begin() + 24'002, 2, -1.0F);
    sound[24'004] = 1;
    EXPECT_THAT(scanned(sound).clippedRuns, IsEmpty());
}

TEST(ClippingFinder, ARunThatLastsToTheEndCounts)
{
    MadeSound sound = silence(1);
    std::fill(sound.end() - 5, sound.end(), 1.0F);
    EXPECT_THAT(scanned(sound).clippedRuns,
                ElementsAre(ClippedRun{0, (madeRate - 5.0) / madeRate, 5}));
}

TEST(ClippingFinder, KeepsTheFirstAndCountsAll)
{
    MadeSound sound = silence(1);
    for (std::size_t i = 0; i < 1'000; ++i)
        std::fill_n(sound.begin() + static_cast<std::ptrdiff_t>(i * 40), 3, 1.0F);
    const SoundScan scan = scanned(sound);
    EXPECT_EQ(scan.clippedRunCount, 1'000);
    EXPECT_EQ(scan.clippedRuns.size(), ClippingFinder::mostKept);
}

TEST(ClippingFinder, AToneBelowFullScaleIsClean)
{
    MadeSound sound = silence(1);
    addTones(sound, {997}, -0.1, 0, 1);
    EXPECT_EQ(scanned(sound).clippedRunCount, 0);
    for (float& sample : sound)
        sample = std::clamp(sample * 1.2F, -1.0F, 1.0F);
    EXPECT_GT(scanned(sound).clippedRunCount, 1'900);
}

} // namespace vantroque

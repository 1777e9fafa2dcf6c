#include "Flashes/FlashAnalyzer.h"

#include "Flashes/CleanSpots.h"
#include "Flashes/FlashTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

using Kind = FlashFinding::Kind;
using testing::IsEmpty;

constexpr int black = 64;
constexpr int white = 940;

const FlashFinding* first(const FlashInfo& info, Kind kind)
{
    const auto found = std::ranges::find(info.findings, kind, &FlashFinding::kind);
    return found == info.findings.end() ? nullptr : &*found;
}

std::optional<double> start(const FlashInfo& info, Kind kind)
{
    const FlashFinding* found = first(info, kind);
    return found != nullptr ? std::optional(found->start) : std::nullopt;
}

} // namespace

TEST(FlashAnalyzer, AgreesWithTheArithmeticOfTheWholeTable)
{
    const auto table = flashTable();
    EXPECT_GE(table.size(), 400U);
    std::size_t luminance = 0;
    std::size_t red = 0;
    std::size_t extended = 0;
    for (const FlashClip& clip : table) {
        SCOPED_TRACE(clip.name);
        const FlashInfo info = analyzed(clip);
        const auto truth = clip.truth();
        EXPECT_EQ(start(info, Kind::luminance), truth.luminance);
        EXPECT_EQ(start(info, Kind::red), truth.red);
        EXPECT_EQ(first(info, Kind::extended) != nullptr, truth.extended);
        EXPECT_EQ(first(info, Kind::pattern), nullptr);
        luminance += truth.luminance ? 1 : 0;
        red += truth.red ? 1 : 0;
        extended += truth.extended ? 1 : 0;
    }
    // Neither side of the table is empty.
    for (const std::size_t count : {luminance, red, extended})
        EXPECT_GT(count, 5U);
    EXPECT_LT(luminance, table.size() / 2);
}

TEST(FlashAnalyzer, SaysNothingOfCleanSpots)
{
    const auto spots = cleanSpots();
    EXPECT_EQ(spots.size(), 60U);
    for (const CleanSpot& spot : spots) {
        SCOPED_TRACE(spot.name);
        EXPECT_THAT(analyzedGreys(spot.source, spot.frames, spot.code).findings, IsEmpty());
    }
}

TEST(FlashAnalyzer, TellsWhereHowMuchAndHowOften)
{
    FlashAnalyzer::Source source;
    source.picture = {80, 44};
    // The right half, every third frame from the tenth on, for a second and a half.
    const FlashInfo info = analyzedGreys(source, 75, [](int x, int, int frame) {
        const int step = std::clamp((frame - 7) / 3, 0, 12);
        return x >= 20 && step % 2 == 1 ? 600 : black;
    });
    ASSERT_EQ(info.findings.size(), 1U);
    const FlashFinding& found = info.findings.front();
    EXPECT_EQ(found.kind, Kind::luminance);
    // Frames 10, 13 and so on; the seventh of them is 28, the last is 43.
    EXPECT_DOUBLE_EQ(found.start, 28 * 0.04);
    EXPECT_DOUBLE_EQ(found.end, 43 * 0.04);
    EXPECT_EQ(found.box, (NormalizedRect{0.5, 0, 0.5, 1}));
    EXPECT_DOUBLE_EQ(found.area, 0.5);
    EXPECT_NEAR(found.step.value(), 200 * std::pow(536.0 / 876, 2.4), 0.01);
    // Nine changes lie inside a second, from the frame at which that is so first.
    EXPECT_EQ(found.changes, 9);
    EXPECT_EQ(found.flashes, 4);
    EXPECT_DOUBLE_EQ(found.worst, 34 * 0.04);
    EXPECT_FALSE(found.moves);

    EXPECT_EQ(info.peak, 200);
    EXPECT_EQ(info.apartSeconds, 0.36);
    ASSERT_EQ(info.curve.risk.size(), 30U);
    EXPECT_EQ(info.curve.sampleHz, 10);
    EXPECT_EQ(info.curve.risk[0], 0);
    EXPECT_EQ(info.curve.risk[11], 1); // frame 28
    EXPECT_EQ(info.curve.risk[20], 0);
}

TEST(FlashAnalyzer, TellsMotionFromFlashes)
{
    FlashAnalyzer::Source source;
    source.picture = {160, 88};
    // A fence that the camera sweeps over, and the same one whose slats change places.
    const auto fence = [](int x, double offset) {
        const double phase = (x + offset) / 10 - std::floor((x + offset) / 10);
        return phase < 0.5 ? 200 : white;
    };
    const auto swept = analyzedGreys(
        source, 75, [&](int x, int y, int frame) { return y < 3 ? black : fence(x, frame * 2.2); });
    const auto flashed = analyzedGreys(source, 75, [&](int x, int y, int frame) {
        return y < 3 ? black : fence(x, frame / 3 * 5);
    });
    const FlashFinding* motion = first(swept, Kind::luminance);
    ASSERT_NE(motion, nullptr);
    EXPECT_TRUE(motion->moves.value_or(false));
    const FlashFinding* flash = first(flashed, Kind::luminance);
    ASSERT_NE(flash, nullptr);
    EXPECT_FALSE(flash->moves);
}

TEST(FlashAnalyzer, FindsStripesAndNoTexture)
{
    FlashAnalyzer::Source source; // 160 by 90 cells
    const auto patterns = [&](int frames, const std::function<int(int, int, int)>& code) {
        return std::ranges::count(analyzedGreys(source, frames, code).findings, Kind::pattern,
                                  &FlashFinding::kind);
    };
    const auto stripes = [](double across, double down, int width) {
        return [=](int x, int y, int) {
            const double place = x * across + y * down;
            return x < width && place / 8 - std::floor(place / 8) < 0.5 ? white : black;
        };
    };
    EXPECT_EQ(patterns(16, stripes(1, 0, 160)), 1);
    EXPECT_EQ(patterns(16, stripes(0, 1, 160)), 1);
    EXPECT_EQ(patterns(16, stripes(0.7, 0.7, 160)), 1);
    EXPECT_EQ(patterns(16,
                       [](int x, int y, int) {
                           const double far = std::hypot(x - 80, y - 45) / 8;
                           return far - std::floor(far) < 0.5 ? white : black;
                       }),
              1);
    // For too short a time, on too little of the screen, too few of them, too faint, no stripes.
    EXPECT_EQ(patterns(10, stripes(1, 0, 160)), 0);
    EXPECT_EQ(patterns(16, stripes(1, 0, 60)), 0);
    EXPECT_EQ(patterns(16, [](int x, int, int) { return x / 16 % 2 == 0 ? white : black; }), 0);
    EXPECT_EQ(patterns(16, [](int x, int, int) { return x / 4 % 2 == 0 ? 390 : black; }), 0);
    EXPECT_EQ(
        patterns(16, [](int x, int y, int) { return (x / 4 + y / 4) % 2 == 0 ? white : black; }),
        0);
    // What moves is striped on less of the screen already.
    EXPECT_EQ(
        patterns(30, [](int x, int,
                        int frame) { return x < 60 && (x + frame) / 4 % 2 == 0 ? white : black; }),
        1);
}

TEST(FlashAnalyzer, BearsPicturesThatAreNone)
{
    FlashAnalyzer::Source source;
    source.picture = {40, 20};
    FlashAnalyzer analyzer(source);
    EXPECT_THAT(analyzer.finished().findings, IsEmpty());
    const std::vector<std::uint16_t> wild(source.picture.samples(), 65'535);
    const std::vector<std::uint16_t> dark(source.picture.samples(), 0);
    for (const Microseconds time : {Microseconds{-5}, Microseconds{-5}, Microseconds{-900},
                                    Microseconds{1} << 47U, Microseconds{0}}) {
        analyzer.add(time, wild);
        analyzer.add(time, dark);
    }
    analyzer.add(0, FlashSamples(wild).first(3));
    const FlashInfo info = analyzer.finished();
    EXPECT_LE(info.curve.risk.size(), FlashAnalyzer::mostOfCurve);
}

TEST(FlashPicture, KeepsTheShapeOfTheScreen)
{
    EXPECT_EQ(FlashPicture::ofAspect(16.0 / 9), (FlashPicture{320, 180}));
    EXPECT_EQ(FlashPicture::ofAspect(9.0 / 16), (FlashPicture{180, 320}));
    EXPECT_EQ(FlashPicture::ofAspect(1), (FlashPicture{240, 240}));
    EXPECT_EQ(FlashPicture::ofAspect(0), (FlashPicture{320, 180}));
    EXPECT_EQ(FlashPicture::ofAspect(1e9), FlashPicture::ofAspect(8));
}

} // namespace vantroque

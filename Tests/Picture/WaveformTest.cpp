#include "ScopeFrames.h"

#include <cmath>
#include <limits>
#include <map>

namespace vantroque::ScopeRenderer {

namespace {

using testing::ElementsAre;

/// The rows that a frame one pixel wide draws on.
std::vector<int> litRows(const ScopeFrame& frame, int height)
{
    // It leaves the second column to the graticule.
    const auto image = waveform(frame, 2, height);
    std::vector<int> rows;
    for (int y = 0; y < height; ++y)
        if (at(image, 0, y) != at(image, 1, y))
            rows.push_back(y);
    return rows;
}

std::vector<int> rowsOfLuma(int code, int height, bool fullRange = false)
{
    return litRows(frameOf({code}, 1, 1, fullRange), height);
}

/// The pixel in mid-height where the first `lines` lines of a black frame are grey.
Rgba afterSamples(std::size_t lines, int frameHeight)
{
    constexpr int rowOfGrey = 63;
    return at(waveform(blackBut(lines, {126}, 1, frameHeight), 1, 128), 0, rowOfGrey);
}

} // namespace

TEST(ScopeRows, RunFrom110AtTheTopToMinus10AtTheBottom)
{
    EXPECT_EQ(row(110, 128), 0);
    EXPECT_EQ(row(100, 128), 11);
    EXPECT_EQ(row(50, 128), 64);
    EXPECT_EQ(row(0, 128), 116);
    EXPECT_EQ(row(-10, 128), 127);
}

TEST(ScopeRows, AreTruncatedTowardsZero)
{
    EXPECT_EQ(row(111, 128), 0);
    EXPECT_EQ(row(112, 128), -1);
    EXPECT_EQ(row(-10.9F, 128), 128);
}

TEST(ScopeRows, OfWhatIsNoLevelLieOutside)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_LT(row(std::nanf(""), 128), 0);
    EXPECT_LT(row(infinity, 128), 0);
    EXPECT_GE(row(-infinity, 128), 128);
    EXPECT_LT(row(infinity, 1), 0);
    EXPECT_GE(row(-1e30F, std::numeric_limits<int>::max()), 1 << 24);
}

TEST(Waveform, BlackAndWhiteLandOnTheirLinesInBothRanges)
{
    for (int height = 1; height <= 600; ++height) {
        ASSERT_THAT(rowsOfLuma(16, height), ElementsAre(row(0, height))) << height;
        ASSERT_THAT(rowsOfLuma(235, height), ElementsAre(row(100, height))) << height;
        ASSERT_THAT(rowsOfLuma(0, height, true), ElementsAre(row(0, height))) << height;
        ASSERT_THAT(rowsOfLuma(255, height, true), ElementsAre(row(100, height))) << height;
    }
}

TEST(Waveform, SuperwhiteStandsAboveTheLineOfWhite)
{
    EXPECT_THAT(rowsOfLuma(235, 128), ElementsAre(11));
    EXPECT_THAT(rowsOfLuma(236, 128), ElementsAre(10));
    EXPECT_THAT(rowsOfLuma(246, 128), ElementsAre(5));
    EXPECT_THAT(rowsOfLuma(255, 128), ElementsAre(1));
    EXPECT_THAT(rowsOfLuma(255, 64), ElementsAre(0));
}

TEST(Waveform, BelowBlackStandsUnderTheLineOfBlack)
{
    EXPECT_THAT(rowsOfLuma(16, 128), ElementsAre(116));
    EXPECT_THAT(rowsOfLuma(15, 128), ElementsAre(117));
    EXPECT_THAT(rowsOfLuma(0, 128), ElementsAre(124));
}

TEST(Waveform, HasItsGraticuleOnTheBackground)
{
    const auto image = waveform(frameOf({}, 1, 1), 256, 128);
    ASSERT_EQ(image.width(), 256);
    ASSERT_EQ(image.height(), 128);
    ASSERT_EQ(pixels(image).size(), 256U * 128);
    const std::map<int, Rgba> solid{{116, green}, {11, green}};
    const std::map<int, Rgba> dashed{{122, amber}, {5, amber}, {95, grey},
                                     {74, grey},   {53, grey}, {32, grey}};
    for (int y = 0; y < 128; ++y)
        for (int x = 1; x < 256; ++x) { // the frame is in the first column
            Rgba expected = background;
            if (solid.contains(y))
                expected = solid.at(y);
            else if (dashed.contains(y) && x % 6 < 3)
                expected = dashed.at(y);
            ASSERT_EQ(at(image, x, y), expected) << x << ", " << y;
        }
}

TEST(Waveform, LinesThatMeetInALowImageShowTheLastOne)
{
    // On three rows white and the tolerance above it share the top one.
    const auto image = waveform(frameOf({235}, 1, 1), 256, 3);
    EXPECT_EQ(at(image, 6, 0), amber);
    EXPECT_EQ(at(image, 9, 0), green);
}

TEST(Waveform, EachSampleAddsToTheBrightness)
{
    EXPECT_EQ(afterSamples(0, 128), background);
    EXPECT_EQ(afterSamples(1, 128), (Rgba{47, 50, 55, 255}));
    EXPECT_EQ(afterSamples(2, 128), (Rgba{66, 70, 75, 255}));
    EXPECT_EQ(afterSamples(11, 128), (Rgba{237, 250, 255, 255}));
    EXPECT_EQ(afterSamples(12, 128), full);
    EXPECT_EQ(afterSamples(128, 128), full);
}

TEST(Waveform, SamplesOfALowFrameCountForMore)
{
    EXPECT_EQ(afterSamples(1, 32), (Rgba{109, 114, 121, 255}));
    EXPECT_EQ(afterSamples(1, 340), (Rgba{35, 37, 43, 255}));
    EXPECT_EQ(afterSamples(1, 382), (Rgba{34, 37, 42, 255}));
    EXPECT_EQ(afterSamples(1, 383), (Rgba{34, 37, 42, 255}));
    EXPECT_EQ(afterSamples(1, 1080), (Rgba{34, 37, 42, 255}));
    EXPECT_EQ(afterSamples(1, 1), full);
}

TEST(Waveform, AddsToTheLinesOfTheGraticuleToo)
{
    EXPECT_EQ(at(waveform(blackBut(1, {235}, 1, 128), 1, 128), 0, 11), (Rgba{93, 242, 148, 255}));
}

TEST(Waveform, SpreadsANarrowFrameOverTheWidth)
{
    const auto image = waveform(frameOf({126}, 3, 1), 256, 128);
    std::vector<int> lit;
    for (int x = 0; x < 256; ++x)
        if (at(image, x, 63) != background)
            lit.push_back(x);
    EXPECT_THAT(lit, ElementsAre(0, 85, 170));
}

TEST(Waveform, GathersTheColumnsOfAWideFrame)
{
    // Five columns on two: the first three on the left, two on the right.
    const auto image = waveform(blackBut(5, {126}, 5, 128), 2, 128);
    EXPECT_EQ(at(image, 0, 63), (Rgba{28 + 3 * 19, 30 + 3 * 20, 35 + 3 * 20, 255}));
    EXPECT_EQ(at(image, 1, 63), (Rgba{28 + 2 * 19, 30 + 2 * 20, 35 + 2 * 20, 255}));
}

TEST(Waveform, BeforeThereIsAFrameItsScaleStands)
{
    const auto image = emptyWaveform(256, 128);
    EXPECT_EQ(image.size(), QSize(256, 128));
    EXPECT_EQ(at(image, 7, row(100, 128)), green);
    EXPECT_EQ(at(image, 7, row(0, 128)), green);
    EXPECT_EQ(at(image, 7, row(50, 128)), background);
    auto parade = emptyParade(384, 128);
    EXPECT_EQ(at(parade, 128, row(50, 128)), grey) << "the edge between red and green";
    EXPECT_EQ(at(parade, 127, row(50, 128)), background);
    EXPECT_TRUE(emptyWaveform(0, 128).isNull());
}

TEST(Waveform, ShowsLumaWhateverTheColour)
{
    EXPECT_EQ(waveform(frameOf({126, 240, 16}, 8, 8), 256, 128),
              waveform(frameOf({126, 128, 128}, 8, 8), 256, 128));
}

} // namespace vantroque::ScopeRenderer

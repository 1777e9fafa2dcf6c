#include "ScopeFrames.h"

namespace vantroque::ScopeRenderer {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int height = 128;
constexpr int third = 128;

/// The rows that a uniform frame lights in a panel, in the middle of it.
std::vector<int> litRows(int panel, Codes codes, ColorMatrix matrix = ColorMatrix::bt709,
                         bool fullRange = false)
{
    const auto image = parade(frameOf(codes, 2, 1, fullRange, matrix), 3 * third, height);
    std::vector<int> rows;
    for (int y = 0; y < height; ++y)
        // The second pixel of the frame is in column 64; 58 is at the same place of the dashes.
        if (at(image, panel * third + 64, y) != at(image, panel * third + 58, y))
            rows.push_back(y);
    return rows;
}

} // namespace

TEST(Parade, ShowsRedGreenAndBlueSideBySide)
{
    const Codes red{63, 102, 240};
    EXPECT_THAT(litRows(0, red), ElementsAre(10));
    EXPECT_THAT(litRows(1, red), ElementsAre(116));
    EXPECT_THAT(litRows(2, red), ElementsAre(116));
    const Codes blue{32, 240, 118};
    EXPECT_THAT(litRows(0, blue), ElementsAre(116));
    EXPECT_THAT(litRows(1, blue), ElementsAre(116));
    EXPECT_THAT(litRows(2, blue), ElementsAre(10));
}

TEST(Parade, GreyStandsAtTheLevelOfItsLumaInEveryPanel)
{
    for (int panel = 0; panel < 3; ++panel) {
        EXPECT_THAT(litRows(panel, {126}), ElementsAre(63));
        EXPECT_THAT(litRows(panel, {16}), ElementsAre(116));
        EXPECT_THAT(litRows(panel, {255}, ColorMatrix::bt709, true), ElementsAre(11));
    }
}

TEST(Parade, FollowsTheMatrix)
{
    const Codes red{81, 90, 240};
    EXPECT_THAT(litRows(0, red, ColorMatrix::bt601), ElementsAre(11));
    EXPECT_THAT(litRows(0, red, ColorMatrix::bt709), ElementsAre(2));
    EXPECT_THAT(litRows(0, red, ColorMatrix::bt2020), ElementsAre(7));
}

TEST(Parade, FollowsTheRange)
{
    // 50.2 + 1.5748 * 23.5 = 87.2 % of full range; 50.2 + 1.5748 * 26.8 = 92.4 % of video range.
    EXPECT_THAT(litRows(0, {128, 128, 188}, ColorMatrix::bt709, true), ElementsAre(24));
    EXPECT_THAT(litRows(0, {126, 128, 188}), ElementsAre(19));
}

TEST(Parade, LeavesOutWhatIsBeyondTheScale)
{
    EXPECT_THAT(litRows(0, {235, 128, 240}), IsEmpty());
    EXPECT_THAT(litRows(0, {16, 128, 16}), IsEmpty());
    EXPECT_THAT(litRows(1, {235, 128, 240}), ElementsAre(35));
}

TEST(Parade, BrightensEachPanelInItsColour)
{
    const auto image = parade(blackBut(2, {126}, 2, 128), 384, height);
    EXPECT_EQ(at(image, 64, 63), (Rgba{50, 40, 45, 255}));
    EXPECT_EQ(at(image, third + 64, 63), (Rgba{34, 50, 46, 255}));
    EXPECT_EQ(at(image, 2 * third + 64, 63), (Rgba{36, 44, 57, 255}));
}

TEST(Parade, SeparatesThePanelsOverTheGraticule)
{
    const auto image = parade(blackBut(0, {}, 2, 1), 384, height);
    for (int y = 0; y < height; ++y) {
        if (y == 116) // the trace
            continue;
        ASSERT_EQ(at(image, third, y), grey) << y;
        ASSERT_EQ(at(image, 2 * third, y), grey) << y;
    }
    EXPECT_EQ(at(image, third - 1, 11), green);
    EXPECT_EQ(at(image, third + 1, 11), green);
    EXPECT_EQ(at(image, third + 1, 40), background);
    EXPECT_EQ(at(image, 6, 5), amber);
    EXPECT_EQ(at(image, 9, 5), background);
}

TEST(Parade, LeavesTheRestOfAWidthThatThreeDoesNotDivide)
{
    const auto image = parade(frameOf({126}, 3, 1), 11, height);
    EXPECT_EQ(image.width(), 11);
    for (int x = 0; x < 9; ++x)
        EXPECT_NE(at(image, x, 63), background) << x;
    EXPECT_EQ(at(image, 9, 63), background);
    EXPECT_EQ(at(image, 10, 63), background);
}

TEST(Parade, NeedsAColumnForEachPanel)
{
    EXPECT_FALSE(parade(frameOf({}, 4, 4), 3, height).isNull());
    EXPECT_TRUE(parade(frameOf({}, 4, 4), 2, height).isNull());
}

} // namespace vantroque::ScopeRenderer

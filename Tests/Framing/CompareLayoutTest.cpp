#include "Framing/CompareLayout.h"
#include "Framing/FrameShape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vantroque {
namespace {

using namespace CompareLayout;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double wide = 16.0 / 9;
constexpr double tall = 9.0 / 16;

Page page(double width, double height = 900)
{
    return {.width = width, .height = height, .spacing = 16, .label = 74};
}

Item wideItem()
{
    return {.group = 0, .aspect = wide};
}
Item tallItem()
{
    return {.group = 3, .aspect = tall};
}

} // namespace

TEST(CompareLayout, WideFamiliesComeFirstAndTiesKeepTheirOrder)
{
    using enum AspectFamily;
    EXPECT_THAT(order({other, vertical9x16, wide16x9, tall4x5, square1x1, wide16x9, other}),
                ElementsAre(2, 5, 4, 3, 1, 0, 6));
    EXPECT_THAT(order({}), IsEmpty());
    EXPECT_EQ(rank(static_cast<AspectFamily>(99)), 5);
}

TEST(CompareLayout, ManyTilesOfAFamilyKeepTheirOrder)
{
    std::vector<AspectFamily> families;
    for (int i = 0; i < 100; ++i)
        families.push_back(i % 2 == 0 ? AspectFamily::other : AspectFamily::wide16x9);
    const auto ordered = order(families);
    for (std::size_t i = 0; i < 100; ++i)
        EXPECT_EQ(ordered[i], i < 50 ? 2 * i + 1 : 2 * (i - 50));
}

TEST(CompareLayout, AnUprightPictureAndTwoWideOnesLieInTwoRowsTheWideOnesFirst)
{
    const std::vector<FrameShape> shapes{{1080, 1920}, {1920, 1080}, {1280, 720}};
    std::vector<AspectFamily> families;
    for (const FrameShape& shape : shapes)
        families.push_back(shape.family());
    std::vector<Item> items;
    for (const std::size_t index : order(families))
        items.push_back({.group = rank(families[index]),
                         .aspect = double(shapes[index].width) / shapes[index].height});
    EXPECT_THAT(order(families), ElementsAre(1, 2, 0));
    // As high as they are, all three would find room side by side.
    const Placements placed = place(items, 90, page(1408));
    EXPECT_THAT(placed.placements,
                ElementsAre(Placement{536, 0, 160, 90}, Placement{712, 0, 160, 90},
                            Placement{704 - 50.625 / 2, 180, 50.625, 90}));
    EXPECT_EQ(placed.height, 180 + 90 + 74);
}

TEST(CompareLayout, RowsAreCentredAndTilesStandOnTheirBottomEdge)
{
    // The first is as wide as the page, and lower than the second for that reason.
    const std::vector<Item> items{{.group = 1, .aspect = 10}, {.group = 1, .aspect = 0.5}};
    const Page narrow{.width = 400, .height = 900, .spacing = 0, .label = 10};
    EXPECT_THAT(place(items, 100, narrow).placements,
                ElementsAre(Placement{0, 0, 400, 40}, Placement{175, 50, 50, 100}));
    // A page that is half a point too narrow still takes both.
    const Page slack{.width = 249.5, .height = 900, .spacing = 0, .label = 10};
    EXPECT_THAT(
        place({{.group = 1, .aspect = 2}, {.group = 1, .aspect = 0.5}}, 100, slack).placements,
        ElementsAre(Placement{0, 0, 200, 100}, Placement{200, 0, 50, 100}));
    // The half point is also where a tile that is as wide as the page has a neighbour.
    EXPECT_THAT(
        place({{.group = 1, .aspect = 10}, {.group = 1, .aspect = 0.01}}, 45, narrow).placements,
        ElementsAre(Placement{0, 5, 400, 40}, Placement{400, 0, 0.45, 45}));
    const Page mixed{.width = 300, .height = 900, .spacing = 0, .label = 10};
    EXPECT_THAT(
        place({{.group = 1, .aspect = 3}, {.group = 1, .aspect = 0.001}}, 100, mixed).placements,
        ElementsAre(Placement{0, 0, 300, 100}, Placement{149.5, 110, 1, 100}));
}

TEST(CompareLayout, WithoutItemsOrWidthThereIsNothing)
{
    for (const Placements& placed :
         {place({}, 100, page(1000)), place({wideItem()}, 100, page(0)),
          place({wideItem()}, 100, page(-5)), place({wideItem()}, 100, page(std::nan("")))}) {
        EXPECT_THAT(placed.placements, IsEmpty());
        EXPECT_EQ(placed.height, 0);
    }
}

TEST(CompareLayout, AShapeThatIsNoneIsANarrowTile)
{
    for (const double aspect : {0.0, -3.0, std::nan(""), infinite, -infinite}) {
        EXPECT_THAT(place({{.group = 0, .aspect = aspect}}, 100, page(101)).placements,
                    ElementsAre(Placement{50, 0, 1, 100}))
            << aspect;
    }
}

TEST(CompareLayout, OneTileFitsAsHighAsThePageHasRoom)
{
    EXPECT_EQ(fitHeight({tallItem()}, page(1408, 768)), 694);
    EXPECT_EQ(maxHeight(page(1408, 768)), 694);
    EXPECT_FALSE(tileHeights({tallItem()}, page(1408, 768)).canEnlarge());
}

TEST(CompareLayout, TilesThatFitInTwoRowsFillBoth)
{
    const std::vector<Item> items{wideItem(), wideItem(), tallItem(), tallItem()};
    const Page window = page(1408, 768);
    // Two captions and one space leave 604 points for two rows.
    EXPECT_EQ(fitHeight(items, window), 302);
    EXPECT_EQ(place(items, 302, window).height, 768);
    EXPECT_GT(place(items, 303, window).height, 768.5);
}

TEST(CompareLayout, APageTooSmallForTheLowestTileScrolls)
{
    EXPECT_EQ(fitHeight({wideItem(), tallItem()}, page(1408, 200)), 90);
    EXPECT_EQ(fitHeight({wideItem()}, page(1408, 10)), 90);
    EXPECT_EQ(fitHeight({wideItem()}, page(1408, -10)), 90);
    EXPECT_EQ(fitHeight({wideItem()}, page(1408, std::nan(""))), 90);
    EXPECT_EQ(maxHeight(page(1408, 10)), 90);
    EXPECT_GT(place({wideItem(), tallItem()}, 90, page(1408, 200)).height, 200.5);
    EXPECT_FALSE(tileHeights({wideItem(), tallItem()}, page(1408, 163)).canEnlarge());
}

TEST(CompareLayout, TheOperatorEnlargesFromWhatFitsToTheWholePage)
{
    const std::vector<Item> items(4, wideItem());
    const TileHeights heights = tileHeights(items, page(1408, 768));
    EXPECT_EQ(heights, (TileHeights{.fit = 302, .largest = 694}));
    EXPECT_TRUE(heights.canEnlarge());
    EXPECT_EQ(heights.at(0), 302);
    EXPECT_EQ(heights.at(0.5), 498);
    EXPECT_EQ(heights.at(1), 694);
    EXPECT_EQ((TileHeights{.fit = 90, .largest = 80}).at(1), 90);
}

TEST(CompareLayout, ThirtyFilesAreLaidOutInRowsOfTheirFamilies)
{
    std::vector<Item> items(20, wideItem());
    items.insert(items.end(), 10, tallItem());
    // Four rows of the lowest tiles, with their captions, are 704 high.
    EXPECT_EQ(fitHeight(items, page(1408, 703)), 90);
    const Page window = page(1408, 768);
    const double height = fitHeight(items, window);
    EXPECT_GT(height, 90);
    const Placements placed = place(items, height, window);
    ASSERT_EQ(placed.placements.size(), 30U);
    EXPECT_LE(placed.height, 768.5);
    EXPECT_EQ(place(items, 90, window).height, 704);
}

} // namespace vantroque

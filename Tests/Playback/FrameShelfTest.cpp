#include "Playback/FrameShelf.h"

#include "Playback/ShelvedFrames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

std::int64_t numberOf(const FrameShelf::Frame& frame)
{
    return frame ? frame->frame : -1;
}

TEST(FrameShelf, HasTheFramesThatWerePut)
{
    FrameShelf shelf;
    EXPECT_FALSE(shelf.has(0));
    EXPECT_EQ(shelf.frame(0), nullptr);
    shelve(shelf, 3, 5);
    EXPECT_FALSE(shelf.has(2));
    EXPECT_EQ(numberOf(shelf.frame(3)), 3);
    EXPECT_EQ(numberOf(shelf.frame(5)), 5);
    EXPECT_FALSE(shelf.has(6));
}

TEST(FrameShelf, GivesAFrameThatStaysOnScreenUnderEachOfItsNumbers)
{
    FrameShelf shelf;
    const auto pixels = std::make_shared<int>(1);
    shelf.put(std::make_shared<PlayedFrame>(PlayedFrame{10, {}, pixels}));
    shelf.extend(10, 14);
    EXPECT_EQ(numberOf(shelf.frame(13)), 13);
    EXPECT_EQ(shelf.frame(13)->pixels, pixels);
    EXPECT_FALSE(shelf.has(15));
    // Put again, it is on screen for no shorter a time.
    shelve(shelf, 10, 10);
    EXPECT_TRUE(shelf.has(14));
}

TEST(FrameShelf, ExtendsNothingThatIsNotThere)
{
    FrameShelf shelf;
    shelf.extend(3, 9);
    EXPECT_FALSE(shelf.has(3));
    EXPECT_FALSE(shelf.has(5));
}

TEST(FrameShelf, FindsTheNearestWithinReach)
{
    FrameShelf shelf;
    EXPECT_EQ(shelf.nearest(0, 100), nullptr);
    shelve(shelf, 10, 10);
    shelve(shelf, 20, 20);
    shelf.extend(10, 12);
    EXPECT_EQ(numberOf(shelf.nearest(11, 0)), 11);
    EXPECT_EQ(numberOf(shelf.nearest(14, 5)), 12);
    EXPECT_EQ(numberOf(shelf.nearest(18, 5)), 20);
    EXPECT_EQ(numberOf(shelf.nearest(5, 5)), 10);
    EXPECT_EQ(shelf.nearest(5, 4), nullptr);
    EXPECT_EQ(numberOf(shelf.nearest(30, 10)), 20);
    EXPECT_EQ(shelf.nearest(31, 10), nullptr);
}

TEST(FrameShelf, DropsWhatCostsMostAndKeepsWhatCostsNothing)
{
    FrameShelf shelf;
    shelve(shelf, 0, 3);
    const auto cost = [](std::int64_t number) { return number == 2 ? 5.0 : number == 0 ? 1.0 : 0; };
    EXPECT_TRUE(shelf.dropCostliest(cost));
    EXPECT_FALSE(shelf.has(2));
    EXPECT_TRUE(shelf.dropCostliest(cost));
    EXPECT_FALSE(shelf.has(0));
    EXPECT_FALSE(shelf.dropCostliest(cost));
    EXPECT_EQ(shelf.size(), 2U);
}

} // namespace
} // namespace vantroque

#include "Playback/FillPlan.h"

#include "Playback/ShelvedFrames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What a decoder is asked for, with a decoder that always delivers.

namespace vantroque {
namespace {

using Request = FillPlan::Request;
using testing::Optional;

class Fill : public testing::Test {
protected:
    explicit Fill(int slots = 86) : m_plan(FrameRate::television(), slots) {}

    std::optional<Request> aim(std::int64_t frame, double rate = 0)
    {
        m_plan.aim(frame, rate);
        return m_plan.next(m_shelf);
    }
    /// Delivers all that was asked for, and returns what is asked for next.
    std::optional<Request> deliver(const Request& request)
    {
        return deliver(request.first, request.last);
    }
    std::optional<Request> deliver(std::int64_t first, std::int64_t last)
    {
        shelve(m_shelf, first, last);
        for (std::int64_t number = first; number <= last; ++number)
            m_plan.received(number, number);
        m_plan.finished();
        return m_plan.next(m_shelf);
    }

    FrameShelf m_shelf;
    FillPlan m_plan;
};

TEST_F(Fill, AsksForTheFrameOfAJumpAloneAndThenForThoseAroundIt)
{
    auto asked = aim(1000);
    EXPECT_THAT(asked, Optional(Request{.first = 1000, .last = 1000}));
    asked = deliver(*asked);
    EXPECT_THAT(asked, Optional(Request{.first = 1001, .last = 1006}));
    asked = deliver(*asked);
    EXPECT_THAT(asked, Optional(Request{.first = 994, .last = 999, .isBackward = true}));
    EXPECT_EQ(deliver(*asked), std::nullopt);
    EXPECT_FALSE(m_plan.isWaiting());
}

TEST_F(Fill, NeverAsksForFramesBeforeTheFirstNorAfterTheLast)
{
    m_plan.setLastFrame(3);
    auto asked = aim(900);
    EXPECT_THAT(asked, Optional(Request{.first = 3, .last = 3}));
    asked = deliver(*asked);
    EXPECT_THAT(asked, Optional(Request{.first = 0, .last = 2, .isBackward = true}));
    EXPECT_EQ(deliver(*asked), std::nullopt);
    EXPECT_EQ(aim(0), std::nullopt);
    EXPECT_EQ(aim(-5), std::nullopt);
}

TEST_F(Fill, TellsWhenThePlayheadIsDragged)
{
    EXPECT_FALSE(aim(1000)->isPassing);
    EXPECT_THAT(aim(2000), Optional(Request{.first = 2000, .last = 2000, .isPassing = true}));
    EXPECT_TRUE(aim(500)->isPassing);
    deliver(500, 500);
    m_plan.finished();
    EXPECT_FALSE(aim(3000)->isPassing);
}

TEST_F(Fill, RunsAFewFramesAheadInPlay)
{
    auto asked = aim(0, 1);
    EXPECT_THAT(asked, Optional(Request{.first = 0, .last = 12}));
    EXPECT_EQ(deliver(*asked), std::nullopt);
    EXPECT_EQ(aim(5, 1), std::nullopt);
    EXPECT_THAT(aim(7, 1), Optional(Request{.first = 13, .last = 19}));
    // While these come, nothing else is asked for.
    EXPECT_EQ(aim(8, 1), std::nullopt);
    EXPECT_EQ(aim(14, 1), std::nullopt);
    // A decoder that is too slow is told to go on where the playhead is.
    EXPECT_THAT(aim(40, 1), Optional(Request{.first = 40, .last = 52}));
}

TEST_F(Fill, FillsStretchesBackwards)
{
    m_plan.setLastFrame(1000);
    auto asked = aim(500, -1);
    EXPECT_THAT(asked, Optional(Request{.first = 461, .last = 500, .isBackward = true}));
    // It begins at a key frame.
    asked = deliver(470, 500);
    EXPECT_THAT(asked, Optional(Request{.first = 430, .last = 469, .isBackward = true}));
    EXPECT_EQ(deliver(*asked), std::nullopt);
    EXPECT_THAT(aim(469, -1), Optional(Request{.first = 390, .last = 429, .isBackward = true}));
    // One stretch is enough for now.
    EXPECT_EQ(aim(440, -1), std::nullopt);
}

TEST_F(Fill, GoesOnInTheDirectionOfSteps)
{
    deliver(*aim(100));
    shelve(m_shelf, 80, 120);
    m_plan.finished();
    EXPECT_THAT(aim(99), Optional(Request{.first = 40, .last = 79, .isBackward = true}));
    deliver(40, 79);
    EXPECT_EQ(aim(98), std::nullopt);
    EXPECT_EQ(aim(99), std::nullopt);
    EXPECT_THAT(aim(109), Optional(Request{.first = 121, .last = 121}));
}

TEST_F(Fill, DoesNotAskAgainForFramesThatDoNotCome)
{
    EXPECT_THAT(aim(50, 1), Optional(Request{.first = 50, .last = 62}));
    EXPECT_EQ(deliver(50, 55), std::nullopt);
    EXPECT_THAT(aim(57, 1), Optional(Request{.first = 63, .last = 69}));
    // A new decoder may do better.
    m_plan.forget();
    EXPECT_THAT(aim(57, 1), Optional(Request{.first = 57, .last = 69}));
}

TEST_F(Fill, LeavesFramesOutAtHighSpeed)
{
    EXPECT_EQ(aim(0, 4)->stride, 4);
    EXPECT_EQ(aim(0, 8)->stride, 8);
    m_plan.forget();
    EXPECT_THAT(aim(1000, -16), Optional(Request{.first = 808, .last = 1000, .stride = 16}));
    m_plan.finished();
    EXPECT_EQ(aim(950, -16), std::nullopt);
    EXPECT_THAT(aim(900, -16), Optional(Request{.first = 615, .last = 807, .stride = 16}));
    // Where it stops, the very frame is wanted.
    EXPECT_EQ(aim(890)->stride, 1);
}

TEST_F(Fill, CountsTheStrideInTheFramesOfTheRate)
{
    FillPlan fast(*FrameRate::of(50), 86);
    fast.aim(0, 8);
    EXPECT_EQ(fast.next(m_shelf)->stride, 16);
}

TEST_F(Fill, KeepsWhatThePlayheadTravelsTo)
{
    aim(100, 1);
    EXPECT_EQ(m_plan.costOf(100), 0);
    EXPECT_EQ(m_plan.costOf(112), 0);
    EXPECT_GT(m_plan.costOf(90), m_plan.costOf(115));
    EXPECT_GT(m_plan.costOf(80), m_plan.costOf(90));
    aim(100, -1);
    EXPECT_EQ(m_plan.costOf(60), 0);
    EXPECT_GT(m_plan.costOf(101), 0);
}

TEST_F(Fill, PlaysBackwardsWhatFitsIntoTheRoom)
{
    EXPECT_TRUE(m_plan.canPlay(1));
    EXPECT_TRUE(m_plan.canPlay(16));
    EXPECT_FALSE(m_plan.canPlay(-1)); // Not known yet.
    m_plan.setLongestGroup(48);
    EXPECT_TRUE(m_plan.canPlay(-1));
    m_plan.setLongestGroup(250);
    EXPECT_FALSE(m_plan.canPlay(-1));
}

class FillOfThree : public Fill {
protected:
    FillOfThree() : Fill(3) {}
};

TEST_F(FillOfThree, AsksForNoMoreThanThereIsRoomFor)
{
    auto asked = aim(100);
    asked = deliver(*asked);
    EXPECT_THAT(asked, Optional(Request{.first = 101, .last = 101}));
    EXPECT_EQ(deliver(*asked), std::nullopt);
    EXPECT_THAT(aim(99), Optional(Request{.first = 99, .last = 99, .isBackward = true}));
    EXPECT_THAT(deliver(99, 99), Optional(Request{.first = 98, .last = 98, .isBackward = true}));
    EXPECT_EQ(deliver(98, 98), std::nullopt);
}

/// However little room there is, what is asked for is kept, or it would be asked for without end.
TEST(FillOfAnySize, KeepsWhatItAsksFor)
{
    for (int slots = 3; slots <= 400; slots = slots * 3 / 2 + 1)
        for (const double rate : {0.0, 1.0, 2.0, -1.0})
            for (const std::int64_t step : {-1, 1, 100}) {
                FillPlan plan(FrameRate::television(), slots);
                FrameShelf shelf;
                plan.aim(1000, 0);
                plan.aim(1000 + step, rate);
                int asked = 0;
                while (const auto request = plan.next(shelf)) {
                    ASSERT_LT(++asked, 10) << slots << " slots, rate " << rate;
                    shelve(shelf, request->first, request->last);
                    plan.received(request->first, request->last);
                    plan.finished();
                    const auto cost = [&](std::int64_t number) { return plan.costOf(number); };
                    while (shelf.dropCostliest(cost)) {
                    }
                    ASSERT_LE(shelf.size() + static_cast<std::size_t>(plan.beingFilled()), slots);
                }
                EXPECT_TRUE(shelf.has(1000 + step));
            }
}

} // namespace
} // namespace vantroque

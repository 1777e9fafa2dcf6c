#include "Progress/GrowingList.h"

#include <gmock/gmock.h>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(GrowingList, HoldsWhatItWasGivenInOrder)
{
    GrowingList<int> list;
    EXPECT_THAT(list, IsEmpty());
    for (int i = 0; i < 1000; ++i)
        list.push_back(i);
    ASSERT_EQ(list.size(), 1000U);
    EXPECT_EQ(list[0], 0);
    EXPECT_EQ(list[500], 500);
    EXPECT_EQ(list.back(), 999);
}

TEST(GrowingList, ACopyKeepsWhatWasThere)
{
    GrowingList<int> list{1, 2};
    const GrowingList<int> before = list;
    list.push_back(3);
    list.replace(0, 7);
    EXPECT_THAT(before, ElementsAre(1, 2));
    EXPECT_THAT(list, ElementsAre(7, 2, 3));
}

TEST(GrowingList, ACopyThatGrowsLeavesTheOriginalAlone)
{
    GrowingList<int> list{1, 2};
    GrowingList<int> copy = list;
    copy.push_back(3);
    list.push_back(4);
    EXPECT_THAT(copy, ElementsAre(1, 2, 3));
    EXPECT_THAT(list, ElementsAre(1, 2, 4));
    copy = list;
    list.push_back(5);
    EXPECT_THAT(copy, ElementsAre(1, 2, 4));
}

TEST(GrowingList, ACopyTouchesNoItem)
{
    const auto item = std::make_shared<int>(1);
    GrowingList<std::shared_ptr<int>> list;
    for (int i = 0; i < 100; ++i)
        list.push_back(item);
    const long held = item.use_count();
    const std::vector copies(1000, list);
    EXPECT_EQ(item.use_count(), held);
    EXPECT_EQ(copies.back().size(), 100U);
}

} // namespace
} // namespace vantroque

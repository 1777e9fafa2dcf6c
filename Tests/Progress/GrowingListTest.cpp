#include "Progress/GrowingList.h"

#include <gmock/gmock.h>

#include <mutex>
#include <numeric>
#include <thread>

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

TEST(GrowingList, ACopyIsReadWhileTheOriginalGrowsAndChanges)
{
    constexpr int count = 2000;
    GrowingList<int> list{0};
    std::mutex mutex;
    std::jthread writer([&] {
        for (int i = 1; i < count; ++i) {
            const std::scoped_lock lock(mutex);
            list.push_back(i);
            list.replace(0, 0);
        }
    });
    GrowingList<int> copy;
    while (copy.size() < count) {
        {
            const std::scoped_lock lock(mutex);
            copy = list;
        }
        const int last = static_cast<int>(copy.size()) - 1;
        ASSERT_EQ(std::accumulate(copy.begin(), copy.end(), 0), last * (last + 1) / 2);
    }
}

} // namespace
} // namespace vantroque

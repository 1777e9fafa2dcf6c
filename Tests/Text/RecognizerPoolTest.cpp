#include "Support/FakeRecognizer.h"
#include "Support/TestFolder.h"

#include <barrier>
#include <set>
#include <thread>

namespace vantroque {
namespace {

/// A pool of recognizers that find nothing and note what is done with them.
class CountingPool {
public:
    RecognizerPool pool{[this]() -> Result<std::unique_ptr<TextRecognizer>> {
        ++starts;
        return std::make_unique<Counted>(*this);
    }};
    std::atomic<int> starts = 0;
    std::atomic<int> forgotten = 0;

private:
    struct Counted : TextRecognizer {
        explicit Counted(CountingPool& counts) : owner(counts) {}
        Result<std::vector<RecognizedLine>> recognize(const QImage&, Subject, Deadline) override
        {
            return std::vector<RecognizedLine>();
        }
        void forget() override { ++owner.forgotten; }
        CountingPool& owner;
    };
};

TEST(RecognizerPool, StartsNothingUntilOneIsNeeded)
{
    const CountingPool counted;
    EXPECT_EQ(counted.starts, 0);
}

TEST(RecognizerPool, UsesAFreeRecognizerAgain)
{
    CountingPool counted;
    const TextRecognizer* first = counted.pool.take()->get();
    EXPECT_EQ(counted.pool.take()->get(), first);
    EXPECT_EQ(counted.starts, 1);
}

TEST(RecognizerPool, StartsAnotherWhenNoneIsFree)
{
    CountingPool counted;
    const auto first = counted.pool.take();
    const auto second = counted.pool.take();
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->get(), second->get());
    EXPECT_EQ(counted.starts, 2);
}

TEST(RecognizerPool, HandsOutWhatRemembersNoPicture)
{
    CountingPool counted;
    for (int time = 1; time <= 3; ++time) {
        EXPECT_TRUE(counted.pool.take());
        EXPECT_EQ(counted.forgotten, time);
    }
}

TEST(RecognizerPool, FailsWithTheEnginesWords)
{
    RecognizerPool pool(FakeRecognizer::notStarting());
    const auto lease = pool.take();
    ASSERT_FALSE(lease);
    EXPECT_EQ(lease.error().description, QStringLiteral("no language data"));
}

TEST(RecognizerPool, TriesAgainAfterAFailedStart)
{
    bool isBroken = true;
    RecognizerPool pool([&]() -> Result<std::unique_ptr<TextRecognizer>> {
        if (isBroken)
            return failure(QStringLiteral("busy"));
        return FakeRecognizer::finding({})();
    });
    EXPECT_FALSE(pool.take());
    isBroken = false;
    EXPECT_TRUE(pool.take());
}

TEST(RecognizerPool, GivesARecognizerToOneThreadAtATime)
{
    constexpr int threads = 4;
    constexpr int rounds = 200;
    CountingPool counted;
    std::mutex mutex;
    std::set<const TextRecognizer*> inUse;
    std::atomic<int> clashes = 0;
    std::barrier begin(threads);
    {
        std::vector<std::jthread> users;
        for (int i = 0; i < threads; ++i)
            users.emplace_back([&] {
                begin.arrive_and_wait();
                for (int round = 0; round < rounds; ++round) {
                    const auto lease = counted.pool.take();
                    {
                        const std::scoped_lock lock(mutex);
                        clashes += inUse.insert(lease->get()).second ? 0 : 1;
                    }
                    std::this_thread::yield();
                    const std::scoped_lock lock(mutex);
                    inUse.erase(lease->get());
                }
            });
    }
    EXPECT_EQ(clashes, 0);
    EXPECT_LE(counted.starts, threads);
    EXPECT_EQ(counted.forgotten, threads * rounds);
}

} // namespace
} // namespace vantroque

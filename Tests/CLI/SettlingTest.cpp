#include "VantroqueCLI/Settling.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

FileStamp stamp(std::int64_t size, std::uint64_t number = 1)
{
    return {.device = 1, .number = number, .size = size, .time = 7};
}

class Standing : public testing::Test {
protected:
    std::vector<std::string> ready(Settling::Time now) const
    {
        std::vector<std::string> names;
        for (const auto& film : settling.ready(now))
            names.push_back(film.name);
        return names;
    }

    const Settling::Time start = Settling::Time() + 1000h;
    Settling settling = Settling(10s);
};

TEST_F(Standing, StillForSoLongMakesReadyAndGrowingOrReplacingBeginsAnew)
{
    EXPECT_EQ(settling.next(), std::nullopt);
    for (int second = 0; second < 60; second += 5) {
        settling.look({{"grows", stamp(second)},
                       {"replaced", stamp(5, static_cast<std::uint64_t>(second))},
                       {"still", stamp(5)}},
                      start + second * 1s);
        EXPECT_EQ(settling.ready(start + second * 1s).size(), second < 10 ? 0 : 1);
    }
    EXPECT_THAT(ready(start + 59s), ElementsAre("still"));
    EXPECT_EQ(settling.next(), start + 10s);
    EXPECT_THAT(ready(start + 65s), ElementsAre("still", "grows", "replaced"));
    EXPECT_EQ(settling.ready(start + 65s).at(1).stamp, stamp(55));
    settling.startOver("still", start + 65s);
    EXPECT_THAT(ready(start + 74s), ElementsAre("grows", "replaced"));
    EXPECT_THAT(ready(start + 75s), ElementsAre("grows", "replaced", "still"));
    settling.look({{"replaced", stamp(5, 55)}}, start + 80s);
    EXPECT_THAT(ready(start + 80s), ElementsAre("replaced"));
}

TEST_F(Standing, StillIsNotEnoughForWhatWaits)
{
    settling = Settling(0s);
    settling.look({{"film", stamp(1)}}, start);
    settling.wait("film", start + 10s);
    EXPECT_THAT(ready(start + 9s), IsEmpty());
    EXPECT_EQ(settling.next(), start + 10s);
    EXPECT_THAT(ready(start + 10s), ElementsAre("film"));
    for (const auto pause : {1min, 2min, 4min, 8min, 16min, 32min, 60min, 60min}) {
        settling.retry("film", start);
        EXPECT_EQ(settling.next(), start + pause);
    }
    settling.touched("film");
    EXPECT_THAT(ready(start), ElementsAre("film"));
    settling.startOver("film", start);
    EXPECT_EQ(settling.next(), start + 1s) << "so that nobody looks at it all the time";
    settling.look({{"film", stamp(2)}}, start);
    EXPECT_THAT(ready(start), ElementsAre("film")) << "as another one, which waits for nothing";
}

} // namespace
} // namespace vantroque

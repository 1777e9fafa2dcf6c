#include "Base/ThreadPriority.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

using namespace vantroque;

namespace {

int niceness()
{
    return ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()));
}

} // namespace

TEST(ThreadPriority, GivesWayToTheOtherThreadsOfTheProgram)
{
    const int usual = niceness();
    int lowered = usual;
    std::thread([&lowered] {
        ThreadPriority::giveWay();
        lowered = niceness();
    }).join();

    EXPECT_EQ(lowered, std::min(usual + 7, 19));
    EXPECT_EQ(niceness(), usual);
}

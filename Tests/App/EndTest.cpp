#include "App/AppFixture.h"

#include <csignal>

namespace vantroque {
namespace {

class End : public AppTest, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Signals, End, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST_P(End, InTheMiddleOfAnAnalysisSavesAndLeavesNothing)
{
    const Path file = longFile();
    Program window = open({this->file("a.mp4"), file});
    ASSERT_TRUE(soonAnalysed(1));
    ASSERT_TRUE(soonDecodes(file));
    window.signal(GetParam());
    const auto sent = std::chrono::steady_clock::now();
    const ProgramRun run = window.wait();
    // The analysis would take many times as long.
    EXPECT_LT(std::chrono::steady_clock::now() - sent, std::chrono::seconds(2));
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(leftNothing(file));
    EXPECT_EQ(storedNames(), (std::vector<std::string>{"a.mp4", "long.mp4"}));
}

using Ended = AppTest;

TEST_F(Ended, BeforeTheListWasSavedStillSavesIt)
{
    Program window = open();
    EXPECT_EQ(start({file("late.mp4")}).wait().status, 0);
    window.signal(SIGTERM);
    EXPECT_EQ(window.wait().status, 0);
    EXPECT_EQ(storedNames(), std::vector<std::string>{"late.mp4"});
}

TEST_F(Ended, GoesOnWithTheInterruptedFileAtTheNextStart)
{
    const Path file = longFile();
    {
        Program window = open({file});
        ASSERT_TRUE(soonDecodes(file));
        window.signal(SIGTERM);
        window.wait();
        ASSERT_TRUE(leftNothing(file));
    }
    const Program window = open();
    EXPECT_TRUE(soonDecodes(file));
}

TEST_F(Ended, ByAKillLeavesNoToolAndTheNextStartSweepsItsScratch)
{
    const Path file = longFile();
    Program killed = open({file});
    ASSERT_TRUE(soonDecodes(file));
    killed.signal(SIGKILL);
    killed.wait();
    EXPECT_TRUE(comesTrue([&] { return processesNaming(file.native()).empty(); }));
    std::filesystem::remove(file);
    const Program window = open();
    EXPECT_TRUE(comesTrue([&] { return bool(leftNothing(file)); }));
}

TEST_F(Ended, LeavesASignalAloneThatItWasStartedToIgnore)
{
    const ProgramOptions nohup; // as by a shell's background job
    ::signal(SIGHUP, SIG_IGN);
    Program window = open({}, nohup);
    ::signal(SIGHUP, SIG_DFL);
    window.signal(SIGHUP);
    EXPECT_EQ(start({file("a.mp4")}).wait().status, 0);
    EXPECT_TRUE(soonStored({"a.mp4"}));
    window.signal(SIGTERM);
    EXPECT_EQ(window.wait().status, 0);
}

} // namespace
} // namespace vantroque

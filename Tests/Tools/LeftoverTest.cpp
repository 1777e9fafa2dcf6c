#include "Base/Cancellation.h"
#include "Base/ScopedVariable.h"
#include "Support/TestFolder.h"
#include "Tools/FFTool.h"
#include "Tools/ProcessTable.h"

#include <csignal>
#include <future>
#include <thread>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// Tools that list the processes they started in a file, and go on once it is whole.
class Leftover : public testing::Test {
protected:
    const ScopedVariable m_cage{"VANTROQUE_CAGE", "off"}; // the tools tell of themselves in a file
    const TestFolder m_folder;
    const fs::path m_list = m_folder / "list";

    fs::path tool(const QByteArray& script) const
    {
        const QByteArray list = QByteArray::fromStdString(m_list.native());
        return m_folder.writeScript(
            "tool", "#!/bin/sh\nlist=" + list
                        + "\ntold() { mv \"$list.new\" \"$list\"; }\n"
                          "awaitList() { until [ -e \"$list\" ]; do sleep 0.02; done; }\n"
                        + script + '\n');
    }
    /// Expects that the tool listed so many processes and that none of them lives.
    void expectAllGone(std::size_t count) const
    {
        const auto processes = processesListedIn(m_list);
        EXPECT_THAT(processes, SizeIs(count));
        for (const pid_t process : processes)
            EXPECT_FALSE(isRunning(process)) << process;
        EXPECT_FALSE(hasChildren());
        EXPECT_THAT(processesNaming(m_folder.path().native()), IsEmpty());
    }
    /// Runs the tool to its end, which must come long before that of what it leaves behind.
    void runToEnd(const QByteArray& script) const
    {
        const auto outcome = FFTool::run(tool(script), {}, {.timeout = 60});
        EXPECT_TRUE(outcome) << outcome.error().description().toStdString();
    }
};

TEST_F(Leftover, AChildThatHoldsTheOutputsIsKilledWithItsTool)
{
    runToEnd("sleep 1000 & echo $! >\"$list.new\"; told");
    expectAllGone(1);
}

TEST_F(Leftover, AChildInASessionOfItsOwnIsKilledToo)
{
    runToEnd("setsid sleep 1000 & echo $! >\"$list.new\"; told");
    expectAllGone(1);
}

TEST_F(Leftover, AChildThatIgnoresSignalsIsKilledToo)
{
    runToEnd("(trap '' TERM HUP INT USR1; exec sleep 1000) & echo $! >\"$list.new\"; told");
    expectAllGone(1);
}

TEST_F(Leftover, AWholeFamilyOfSessionsIsKilled)
{
    runToEnd("setsid sh -c 'echo $$ >\"$1.new\";"
             " setsid sh -c \"setsid sleep 1000 & echo \\$\\$ \\$! >>\\\"$1.new\\\";"
             " mv \\\"$1.new\\\" \\\"$1\\\"; wait\" & wait' sh \"$list\" & awaitList");
    expectAllGone(3);
}

TEST_F(Leftover, ChildrenThatDiedBeforeAreReaped)
{
    runToEnd("for i in 1 2 3; do (sleep 0 & echo $! >>\"$list.new\"); done; sleep 0.1; told");
    expectAllGone(3);
}

TEST_F(Leftover, AToolThatTimesOutTakesItsChildrenAlong)
{
    const auto outcome =
        FFTool::run(tool("setsid sleep 1000 & sleep 1000 & echo $$ $! >\"$list.new\"; told; wait"),
                    {}, {.timeout = 1});
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::timedOut);
    expectAllGone(2);
}

TEST_F(Leftover, AStoppedToolIsKilledToo)
{
    const auto outcome =
        FFTool::run(tool("echo $$ >\"$list.new\"; told; kill -STOP $$"), {}, {.timeout = 0.5});
    ASSERT_FALSE(outcome);
    expectAllGone(1);
}

TEST_F(Leftover, AToolWhoseWorkIsCalledOffIsKilledWithItsChildren)
{
    const fs::path script = tool("trap '' TERM; setsid sleep 1000 & echo $$ $! >\"$list.new\";"
                                 " told; sleep 1000; wait");
    std::stop_source stop;
    auto outcome = std::async(std::launch::async, [&] {
        const Cancellation::Scope scope(stop.get_token());
        return FFTool::run(script, {});
    });
    ASSERT_TRUE(comesTrue([this] { return fs::exists(m_list); }));
    stop.request_stop();
    const auto ended = outcome.get();
    ASSERT_FALSE(ended);
    EXPECT_EQ(ended.error().kind, FFToolError::Kind::cancelled);
    EXPECT_EQ(ended.error().description(), u"tool was stopped."_s);
    expectAllGone(2);
}

TEST_F(Leftover, WorkThatIsCalledOffStartsNoTool)
{
    const fs::path script = tool("echo $$ >\"$list.new\"; told");
    std::stop_source stop;
    {
        const Cancellation::Scope scope(stop.get_token());
        stop.request_stop();
        EXPECT_EQ(FFTool::run(script, {}).error().kind, FFToolError::Kind::cancelled);
        EXPECT_FALSE(fs::exists(m_list));
        const Cancellation::Scope another(std::stop_source().get_token());
        EXPECT_TRUE(FFTool::run(script, {})) << "work of its own";
    }
    EXPECT_TRUE(FFTool::run(script, {})) << "what comes after it";
}

class DeathOfTheProgram : public Leftover, public testing::WithParamInterface<int> {};

TEST_P(DeathOfTheProgram, EndsTheToolAndItsChildren)
{
    const fs::path script =
        tool("setsid sleep 1000 & own=$!; sleep 1000 & echo $$ $own $! >\"$list.new\"; told; wait");
    ForkedChild program([&] { static_cast<void>(FFTool::run(script, {})); });
    const auto processes = processesListedIn(m_list);
    ASSERT_THAT(processes, SizeIs(3));
    for (const pid_t process : processes)
        ASSERT_TRUE(isRunning(process));
    program.kill(GetParam());
    for (const pid_t process : processes)
        EXPECT_TRUE(comesTrue([&] { return !isRunning(process); })) << process;
    EXPECT_TRUE(comesTrue([&] { return processesNaming(m_folder.path().native()).empty(); }));
}

INSTANTIATE_TEST_SUITE_P(Leftover, DeathOfTheProgram,
                         testing::Values(SIGKILL, SIGINT, SIGTERM, SIGHUP, SIGSEGV));

TEST_F(Leftover, NoMomentOfTheStartIsTooEarlyForTheProgramToDie)
{
    const fs::path script = tool("sleep 1000 & wait");
    for (int i = 0; i < 25; ++i) {
        ForkedChild program([&] { static_cast<void>(FFTool::run(script, {})); });
        std::this_thread::sleep_for(i * 700us);
        program.kill(SIGKILL);
    }
    EXPECT_TRUE(comesTrue([&] { return processesNaming(m_folder.path().native()).empty(); }));
}

TEST_F(Leftover, ManyToolsThatLeaveChildrenBehindLeaveNone)
{
    const fs::path script = tool("setsid sleep 1000 \"$0\" & sleep 1000 & exit 0");
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 30; ++i)
            threads.emplace_back([&] { EXPECT_TRUE(FFTool::run(script, {}, {.timeout = 60})); });
    }
    EXPECT_FALSE(hasChildren());
    EXPECT_THAT(processesNaming(m_folder.path().native()), IsEmpty());
}

} // namespace
} // namespace vantroque

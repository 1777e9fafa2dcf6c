#include "Tools/SupervisedProcess.h"

#include "Support/TestFolder.h"
#include "Tools/FFTool.h"
#include "Tools/ProcessTable.h"

#include <cerrno>
#include <csignal>

namespace vantroque {
namespace {

using namespace std::chrono_literals;
using SuperviseProtocol::Outcome;
using SuperviseProtocol::Report;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

class Supervised : public testing::Test {
protected:
    SupervisedProcess start(const std::string& executable,
                            const std::vector<std::string>& arguments = {})
    {
        auto process =
            SupervisedProcess::start(executable, arguments, m_out.writeEnd, m_err.writeEnd);
        EXPECT_TRUE(process.has_value());
        return *std::move(process);
    }
    static std::optional<Report> reportOf(SupervisedProcess& process)
    {
        return process.waitUntil(Clock::now() + patience);
    }
    static void expectReport(SupervisedProcess& process, Outcome outcome, int value)
    {
        const auto report = reportOf(process);
        ASSERT_TRUE(report);
        EXPECT_EQ(report->outcome, outcome);
        EXPECT_EQ(report->value, value);
    }

    Pipe m_out = Pipe::make().value();
    Pipe m_err = Pipe::make().value();
};

TEST_F(Supervised, TheExitStatusIsReported)
{
    for (const char* status : {"0", "1", "255"}) {
        SupervisedProcess process = start("/bin/sh", {"-c", "exit $0", status});
        expectReport(process, Outcome::exited, QByteArray(status).toInt());
    }
}

TEST_F(Supervised, TheSignalIsReported)
{
    SupervisedProcess process = start("/bin/sh", {"-c", "kill -ABRT $$"});
    expectReport(process, Outcome::signalled, SIGABRT);
}

TEST_F(Supervised, AToolThatCannotBeStartedIsReported)
{
    SupervisedProcess process = start("/none");
    expectReport(process, Outcome::launchFailed, ENOENT);
}

TEST_F(Supervised, NothingIsReportedBeforeTheEnd)
{
    SupervisedProcess process = start("/bin/sleep", {"1000"});
    const auto begin = Clock::now();
    EXPECT_FALSE(process.waitUntil(begin + 120ms));
    EXPECT_GE(Clock::now() - begin, 120ms);
    EXPECT_FALSE(process.waitUntil(begin));
    process.terminate();
    expectReport(process, Outcome::signalled, SIGTERM);
}

TEST_F(Supervised, ATerminateRequestReachesTheWholeGroup)
{
    SupervisedProcess process =
        start("/bin/sh", {"-c", "trap 'wait; exit 9' TERM; sleep 1000 & wait; exit 8"});
    // The trap may not stand yet.
    std::optional<Report> report;
    EXPECT_TRUE(comesTrue([&] {
        process.terminate();
        report = process.waitUntil(Clock::now() + 200ms);
        return report.has_value();
    }));
}

TEST_F(Supervised, KillingNeedsNoConsent)
{
    SupervisedProcess process =
        start("/bin/sh", {"-c", "trap '' TERM; echo set; while :; do sleep 1; done"});
    char ready = 0;
    ASSERT_EQ(::read(m_out.readEnd.get(), &ready, 1), 1);
    process.terminate();
    EXPECT_FALSE(process.waitUntil(Clock::now() + 50ms));
    process.kill();
    expectReport(process, Outcome::signalled, SIGKILL);
}

TEST_F(Supervised, RequestsAfterTheEndAreHarmless)
{
    SupervisedProcess process = start("/bin/true");
    expectReport(process, Outcome::exited, 0);
    process.terminate();
    process.kill();
}

TEST_F(Supervised, TheToolEndsWithTheValue)
{
    const TestFolder folder;
    const std::string name = (folder / "unique").native();
    {
        const SupervisedProcess process = start("/bin/sh", {"-c", "sleep 1000; :", name});
        EXPECT_TRUE(comesTrue([&] { return !processesNaming(name).empty(); }));
    }
    EXPECT_TRUE(processesNaming(name).empty());
    EXPECT_FALSE(hasChildren());
}

TEST_F(Supervised, AMovedValueKeepsTheTool)
{
    auto first = std::make_unique<SupervisedProcess>(start("/bin/sh", {"-c", "read x; exit 5"}));
    SupervisedProcess second = std::move(*first);
    first.reset();
    expectReport(second, Outcome::exited, 5);
}

TEST_F(Supervised, AKilledSupervisorCountsAsAKilledTool)
{
    const TestFolder folder;
    const std::string name = (folder / "unique").native();
    SupervisedProcess process = start("/bin/sh", {"-c", "while :; do sleep 0.1; done", name});
    // Until it runs the tool, the supervisor's child looks like the supervisor.
    const auto supervisors = [&] {
        auto found = processesNaming(name);
        std::erase_if(found, [](pid_t candidate) {
            return !processFile(candidate, "cmdline").contains("vantroque-supervise");
        });
        return found;
    };
    ASSERT_TRUE(
        comesTrue([&] { return processesNaming(name).size() == 2 && supervisors().size() == 1; }));
    ::kill(supervisors().at(0), SIGKILL);
    expectReport(process, Outcome::signalled, SIGKILL);
    EXPECT_TRUE(comesTrue([&] { return processesNaming(name).empty(); }));
}

class SupervisedLimits : public Supervised {
protected:
    /// What a shell prints.
    QByteArray printed(const char* script,
                       std::uint64_t memory = SupervisedProcess::unlimitedMemory)
    {
        auto process = SupervisedProcess::start("/bin/sh", {"-c", script}, m_out.writeEnd,
                                                m_err.writeEnd, memory);
        expectReport(*process, Outcome::exited, 0);
        m_out.writeEnd.close();
        return FFTool::drain(m_out.readEnd.get(), {});
    }
};

TEST_F(SupervisedLimits, AToolHasTheAddressSpaceThatItIsGiven)
{
    EXPECT_EQ(printed("ulimit -v", 3ULL << 30), "3145728\n");
}

TEST_F(SupervisedLimits, WithoutALimitItHasWhatThisProgramHas)
{
    EXPECT_EQ(printed("ulimit -v"), "unlimited\n");
}

TEST_F(Supervised, ACrashIsTheMemorysWhereMostOfItWasTaken)
{
    const std::string takes40Megabytes = "dd bs=40M count=1 if=/dev/zero of=/dev/null 2>&1; ";
    for (const auto& [limit, outcome] : {std::pair(64ULL << 20, Outcome::crashedNearMemoryLimit),
                                         std::pair(1ULL << 30, Outcome::signalled)}) {
        auto process =
            SupervisedProcess::start("/bin/sh", {"-c", takes40Megabytes + "kill -SEGV $$"},
                                     m_out.writeEnd, m_err.writeEnd, limit);
        ASSERT_TRUE(process);
        expectReport(*process, outcome, SIGSEGV);
    }
}

TEST_F(SupervisedLimits, AToolLeavesNoCoreFile)
{
    EXPECT_EQ(printed("ulimit -c; ulimit -Hc"), "0\n0\n");
}

TEST_F(SupervisedLimits, TooLargeAFileIsAnErrorThatTheToolCanTell)
{
    const TestFolder folder;
    const std::string script = "ulimit -f 1; cd '" + folder.path().native()
                               + "'; head -c 100000 /dev/zero >file 2>/dev/null || echo told";
    EXPECT_EQ(printed(script.c_str()), "told\n");
}

TEST_F(Supervised, APipeLiesAboveTheDescriptorsOfTheSupervisor)
{
    for (const Pipe* pipe : {&m_out, &m_err})
        for (const int descriptor : {pipe->readEnd.get(), pipe->writeEnd.get()})
            EXPECT_GT(descriptor, SuperviseProtocol::reportDescriptor);
}

} // namespace
} // namespace vantroque

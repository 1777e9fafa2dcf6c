#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Tools/ProcessTable.h"

#include <csignal>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class Interrupt : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Signals, Interrupt, testing::Values(SIGINT, SIGTERM, SIGHUP, SIGKILL));

TEST_P(Interrupt, LeavesNeitherChildrenNorAHalfReport)
{
    const TestFolder folder;
    const FakeTools tools;
    const auto started = folder / "started";
    // A tool that never ends, with a child of its own.
    tools.put("ffprobe", "sleep 600 &\nprintf '%s %s' $$ $! > '"
                             + QByteArray::fromStdString((folder / "note").native()) + "'\nmv '"
                             + QByteArray::fromStdString((folder / "note").native()) + "' '"
                             + QByteArray::fromStdString(started.native()) + "'\nwait");
    Program check(Cli::command({"check", "-o", folder / "report.txt", Clips::wav().native()}));
    const auto children = processesListedIn(started);
    ASSERT_THAT(children, SizeIs(2));

    check.signal(GetParam());
    EXPECT_EQ(check.wait().status, 128 + GetParam());
    for (const pid_t child : children)
        EXPECT_TRUE(comesTrue([&] { return !isRunning(child); }));
    EXPECT_TRUE(comesTrue([&] { return processesNaming(tools.folder().native()).empty(); }));
    EXPECT_THAT(folder.names(), ElementsAre("started"));
}

} // namespace
} // namespace vantroque

#include "Cage/Escapes.h"

#include "Cage/Cage.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace vantroque {
namespace {

namespace fs = std::filesystem;

using ProcessEscapes = Escapes;

TEST_F(ProcessEscapes, NoProgramOfItsOwnIsRun)
{
    fs::copy_file("/usr/bin/true", m_folder / "own-program");
    expectStopped({"run", m_folder / "own-program"});
    for (const char* version : versions) {
        fs::copy_file("/usr/bin/true", m_scratch / "own-program",
                      fs::copy_options::overwrite_existing);
        EXPECT_EQ(status({"run", m_scratch / "own-program"}, version), EACCES) << version;
    }
    EXPECT_EQ(status({"run", m_scratch / "own-program"}, open), 0);
}

TEST_F(ProcessEscapes, OtherProcessesAreLeftAlone)
{
    expectStopped({"trace"});
    const std::string self = std::to_string(::getpid());
    EXPECT_EQ(status({"signal", self}, open), 0);
    if ((m_held & Cage::signals) == 0)
        GTEST_SKIP() << "this kernel's Landlock does not judge signals";
    EXPECT_EQ(status({"signal", self}, versions.back()), EPERM);
}

TEST_F(ProcessEscapes, NoNamespaceIsMade)
{
    if (status({"namespace"}, open) != 0)
        GTEST_SKIP() << "this system lets nobody make one";
    expectStopped({"namespace"});
}

#if defined(__x86_64__)
TEST_F(ProcessEscapes, TheTableOfCallsForOtherProgramsIsDeadly)
{
    if (status({"table"}, open) != 0)
        GTEST_SKIP() << "this kernel has no calls for 32 bits";
    for (const char* version : versions)
        EXPECT_EQ(status({"table"}, version), 128 + SIGSYS) << version;
}
#endif

} // namespace
} // namespace vantroque

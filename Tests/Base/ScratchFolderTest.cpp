#include "Base/ScratchFolder.h"

#include "Base/ScopedVariable.h"
#include "Support/TestFolder.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

/// Larger than any process id that the kernel gives.
const std::string deadName = "vantroque-2147483647-abcDEF";

ScratchFolder madeIn(const fs::path& parent)
{
    return ScratchFolder::makeIn(parent).value();
}

[[noreturn]] void makeOneAndDie(const fs::path& parent)
{
    const auto folder = ScratchFolder::makeIn(parent);
    ::raise(SIGKILL);
    std::_Exit(1);
}

bool isWithin(const fs::path& path, const fs::path& parent)
{
    return path.parent_path() == parent;
}

TEST(ScratchFolder, ItIsNewEmptyPrivateAndNamedForItsOwner)
{
    const TestFolder parent;
    const ScratchFolder first = madeIn(parent.path());
    const ScratchFolder second = madeIn(parent.path());
    EXPECT_NE(first.path(), second.path());
    EXPECT_TRUE(fs::is_empty(first.path()));
    EXPECT_EQ(fs::status(first.path()).permissions(), fs::perms::owner_all);
    EXPECT_TRUE(isWithin(first.path(), parent.path()));
    EXPECT_EQ(first.path().filename().native().rfind(
                  "vantroque-" + QByteArray::number(::getpid()).toStdString() + '-', 0),
              0);
}

TEST(ScratchFolder, ItGoesWithAllItHoldsWhenTheValueEnds)
{
    const TestFolder parent;
    const fs::path outside = parent.write("outside", "precious");
    {
        const ScratchFolder folder = madeIn(parent.path());
        fs::create_directories(folder.path() / "a/b");
        fs::create_symlink(parent.path(), folder.path() / "link");
        ASSERT_EQ(::mkfifo((folder.path() / "a/fifo").c_str(), 0600), 0);
    }
    EXPECT_THAT(parent.names(), ElementsAre("outside"));
    EXPECT_EQ(contents(outside), "precious");
}

TEST(ScratchFolder, OnlyTheLastHolderRemovesIt)
{
    const TestFolder parent;
    auto first = std::make_unique<ScratchFolder>(madeIn(parent.path()));
    auto second = std::make_unique<ScratchFolder>(std::move(*first));
    first.reset();
    EXPECT_TRUE(fs::exists(second->path()));
    second.reset();
    EXPECT_THAT(parent.names(), IsEmpty());
}

TEST(ScratchFolder, AFolderThatCannotBeMadeIsAnError)
{
    const TestFolder parent;
    const auto folder = ScratchFolder::makeIn(parent / "none");
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().description, QString::fromStdString((parent / "none").native())
                                              + u": No such file or directory"_s);
}

TEST(ScratchFolder, AKilledOwnersFolderIsSwept)
{
    const TestFolder parent;
    EXPECT_EXIT(makeOneAndDie(parent.path()), testing::KilledBySignal(SIGKILL), "");
    ASSERT_THAT(parent.names(), SizeIs(1));
    ScratchFolder::sweepIn(parent.path());
    EXPECT_THAT(parent.names(), IsEmpty());
}

TEST(ScratchFolder, ALiveOwnersFolderIsNotSwept)
{
    const TestFolder parent;
    const ScratchFolder own = madeIn(parent.path());
    // Every system has a process 1, which is not this one's to ask about.
    fs::create_directory(parent / "vantroque-1-abcDEF");
    ScratchFolder::sweepIn(parent.path());
    EXPECT_TRUE(fs::exists(own.path()));
    EXPECT_TRUE(fs::exists(parent / "vantroque-1-abcDEF"));
}

TEST(ScratchFolder, ALockedFolderIsNotSwept)
{
    const TestFolder parent;
    fs::create_directory(parent / deadName);
    {
        const FileDescriptor lock(::open((parent / deadName).c_str(), O_RDONLY | O_DIRECTORY));
        ASSERT_EQ(::flock(lock.get(), LOCK_EX | LOCK_NB), 0);
        ScratchFolder::sweepIn(parent.path());
        EXPECT_TRUE(fs::exists(parent / deadName));
    }
    ScratchFolder::sweepIn(parent.path());
    EXPECT_FALSE(fs::exists(parent / deadName));
}

TEST(ScratchFolder, ALinkOrFileOfThatNameIsNotSwept)
{
    const TestFolder parent;
    const fs::path target = parent.write("target/file", "precious");
    fs::create_directory_symlink(parent / "target", parent / deadName);
    parent.write("vantroque-2147483647-file00", "precious");
    ScratchFolder::sweepIn(parent.path());
    EXPECT_THAT(parent.names(), ElementsAre("target", deadName, "vantroque-2147483647-file00"));
    EXPECT_EQ(contents(target), "precious");
}

TEST(ScratchFolder, AnotherUsersFolderIsNotSwept)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give folders away";
    const TestFolder parent;
    fs::create_directory(parent / deadName);
    ASSERT_EQ(::chown((parent / deadName).c_str(), 65534, 65534), 0);
    ScratchFolder::sweepIn(parent.path());
    EXPECT_THAT(parent.names(), SizeIs(1));
}

class ForeignName : public testing::TestWithParam<std::string> {};

TEST_P(ForeignName, IsNotSwept)
{
    const TestFolder parent;
    fs::create_directory(parent / GetParam());
    ScratchFolder::sweepIn(parent.path());
    EXPECT_THAT(parent.names(), ElementsAre(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(ScratchFolder, ForeignName,
                         testing::Values("vantroque", "vantroque-", "vantroque-notes-abcDEF",
                                         "vantroque-2147483647", "vantroque-2147483647-",
                                         "vantroque-2147483647-abc", "vantroque-2147483647-backup1",
                                         "vantroque--2147483647-abcDEF", "vantroque-0-abcDEF",
                                         "vantroque-+2147483647-abcDEF",
                                         "vantroque-9999999999-abcDEF", "other-2147483647-abcDEF",
                                         "xvantroque-2147483647-abcDEF",
                                         "vantroque-2147483647-abcDEF\n"));

TEST(ScratchFolder, SweepingAMissingFolderDoesNothing)
{
    const TestFolder parent;
    ScratchFolder::sweepIn(parent / "none");
    EXPECT_THAT(parent.names(), IsEmpty());
}

TEST(ScratchFolder, TheSystemsTemporaryFolderIsUsedAndSwept)
{
    const TestFolder parent;
    const ScopedVariable temporary("TMPDIR", parent.path());
    fs::create_directory(parent / deadName);
    const auto folder = ScratchFolder::make();
    ASSERT_TRUE(folder);
    EXPECT_TRUE(isWithin(folder->path(), parent.path()));
    ScratchFolder::sweep();
    EXPECT_FALSE(fs::exists(parent / deadName));
    EXPECT_TRUE(fs::exists(folder->path()));
}

TEST(ScratchFolder, AnAwkwardTemporaryFolderIsAvoided)
{
    for (const char* name : {"50%", "a:b", "it's", "a,b", "[a]", "a;b", "a\\b"}) {
        const TestFolder parent;
        fs::create_directory(parent / name);
        const ScopedVariable temporary("TMPDIR", parent / name);
        const auto folder = ScratchFolder::make();
        ASSERT_TRUE(folder) << name;
        EXPECT_TRUE(isWithin(folder->path(), "/tmp") || isWithin(folder->path(), "/var/tmp"))
            << folder->path();
    }
}

TEST(ScratchFolder, AnUnusableTemporaryFolderIsAvoided)
{
    const TestFolder parent;
    for (const fs::path& path : {parent / "none", parent.write("file", "")}) {
        const ScopedVariable temporary("TMPDIR", path);
        const auto folder = ScratchFolder::make();
        ASSERT_TRUE(folder) << path;
        EXPECT_TRUE(isWithin(folder->path(), "/tmp") || isWithin(folder->path(), "/var/tmp"))
            << folder->path();
    }
}

} // namespace
} // namespace vantroque

#include "Base/Files.h"

#include "Support/TestFolder.h"

#include <atomic>
#include <climits>
#include <iostream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
namespace fs = std::filesystem;

constexpr qint64 plenty = 1'000'000;

QString readProblem(const fs::path& path, qint64 maxBytes = plenty)
{
    const auto bytes = Files::read(path, maxBytes);
    return bytes ? u"none"_s : bytes.error().description;
}

QString writeProblem(const fs::path& path, const QByteArray& bytes = "new")
{
    const auto written = Files::writeAtomically(path, bytes);
    return written ? u"none"_s : written.error().description;
}

QString about(const fs::path& path, const QString& words)
{
    return QString::fromStdString(path.native()) + u": "_s + words;
}

/// Ends a child process with these words for the parent.
[[noreturn]] void leave(const QString& words)
{
    std::cerr << words.toStdString() << std::flush;
    std::_Exit(0);
}

void becomeNobody()
{
    if (::geteuid() == 0 && ::setuid(65534) != 0)
        leave(u"cannot become nobody"_s);
}

/// Lets a user whom permissions bind reach the folder.
void openToAll(const TestFolder& folder)
{
    fs::permissions(folder.path(), fs::perms::all);
}

[[noreturn]] void readAsNobody(const fs::path& path)
{
    becomeNobody();
    leave(readProblem(path));
}

[[noreturn]] void writeAsNobody(const fs::path& path)
{
    becomeNobody();
    leave(writeProblem(path));
}

/// Puts a disk of 64 kB in place of the folder, in a mount namespace of this process.
bool mountSmallDisk(const TestFolder& folder)
{
    return ::unshare(CLONE_NEWNS) == 0
           && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
           && ::mount("none", folder.path().c_str(), "tmpfs", 0, "size=64k") == 0;
}

/// Whether this user may do that on this system; not in every container, nor in a chroot.
bool canMountSmallDisk(const TestFolder& folder)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(mountSmallDisk(folder) ? 0 : 1);
    int status = 1;
    return ::waitpid(child, &status, 0) == child && status == 0;
}

/// Writes more than the small disk holds.
[[noreturn]] void writeToFullDisk(const TestFolder& folder)
{
    if (!mountSmallDisk(folder))
        leave(u"no disk"_s);
    folder.write("a", "old");
    const QString problem = writeProblem(folder / "a", QByteArray(200'000, 'x'));
    const bool isWhole = contents(folder / "a") == "old" && folder.names().size() == 1;
    leave(problem + (isWhole ? u", old file whole"_s : u", damaged"_s));
}

TEST(Files, AFileIsReadWhole)
{
    const TestFolder folder;
    const QByteArray bytes("a\0b\r\n\xFF", 6);
    EXPECT_EQ(Files::read(folder.write("a", bytes), plenty).value(), bytes);
    EXPECT_EQ(Files::read(folder.write("empty", ""), 0).value(), QByteArray());
}

TEST(Files, AFileMayBeAsLargeAsTheLimit)
{
    const TestFolder folder;
    const fs::path file = folder.write("a", "12345");
    EXPECT_EQ(readProblem(file, 5), u"none"_s);
    EXPECT_EQ(readProblem(file, 4), about(file, u"File too large"_s));
}

TEST(Files, WhatIsNoFileIsNotRead)
{
    const TestFolder folder;
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(readProblem(folder / "none"), about(folder / "none", u"No such file or directory"_s));
    EXPECT_EQ(readProblem(folder / "fifo"), about(folder / "fifo", u"not a file"_s));
    EXPECT_EQ(readProblem(folder.path()), about(folder.path(), u"not a file"_s));
    EXPECT_EQ(readProblem("/dev/zero"), u"/dev/zero: not a file"_s);
    EXPECT_EQ(readProblem(folder / "loop"),
              about(folder / "loop", u"Too many levels of symbolic links"_s));
}

TEST(Files, AnUnreadableFileIsNamed)
{
    const TestFolder folder;
    openToAll(folder);
    const fs::path file = folder.write("closed", "secret");
    fs::permissions(file, fs::perms::none);
    EXPECT_EXIT(readAsNobody(file), testing::ExitedWithCode(0), "/closed: Permission denied$");
}

TEST(Files, WritingReplacesTheFile)
{
    const TestFolder folder;
    const fs::path file = folder / "a.json";
    EXPECT_EQ(writeProblem(file, "first, and longer"), u"none"_s);
    EXPECT_EQ(contents(file), "first, and longer");
    EXPECT_EQ(writeProblem(file, QByteArray("b\0c", 3)), u"none"_s);
    EXPECT_EQ(contents(file), QByteArray("b\0c", 3));
    EXPECT_EQ(writeProblem(file, ""), u"none"_s);
    EXPECT_EQ(contents(file), "");
    EXPECT_THAT(folder.names(), ElementsAre("a.json"));
}

TEST(Files, WritingTouchesNoOtherFile)
{
    const TestFolder folder;
    folder.write("a.tmp", "somebody's");
    folder.write("a.json.tmp", "somebody's");
    EXPECT_EQ(writeProblem(folder / "a"), u"none"_s);
    EXPECT_EQ(writeProblem(folder / "a.json"), u"none"_s);
    EXPECT_THAT(folder.names(), ElementsAre("a", "a.json", "a.json.tmp", "a.tmp"));
    EXPECT_EQ(contents(folder / "a.tmp"), "somebody's");
    EXPECT_EQ(contents(folder / "a.json.tmp"), "somebody's");
}

TEST(Files, ANameMayBeAsLongAsTheFileSystemAllows)
{
    const TestFolder folder;
    const std::string name(NAME_MAX, 'a');
    EXPECT_EQ(writeProblem(folder / name), u"none"_s);
    EXPECT_THAT(folder.names(), ElementsAre(name));
}

TEST(Files, ANewFileHasTheUsualPermissions)
{
    const TestFolder folder;
    const mode_t mask = ::umask(027);
    EXPECT_EQ(writeProblem(folder / "a"), u"none"_s);
    ::umask(mask);
    EXPECT_EQ(fs::status(folder / "a").permissions(), fs::perms(0640));
}

TEST(Files, AFullDiskLeavesTheOldFileWhole)
{
    const TestFolder folder;
    if (!canMountSmallDisk(folder))
        GTEST_SKIP() << "no small disk can be made here";
    EXPECT_EXIT(writeToFullDisk(folder), testing::ExitedWithCode(0),
                "/a: No space left on device, old file whole$");
    EXPECT_TRUE(folder.names().empty());
}

TEST(Files, AReadOnlyFolderLeavesTheOldFileWhole)
{
    const TestFolder folder;
    openToAll(folder);
    const fs::path file = folder.write("closed/a", "old");
    fs::permissions(folder / "closed", fs::perms(0555));
    EXPECT_EXIT(writeAsNobody(file), testing::ExitedWithCode(0), "/closed/a: Permission denied$");
    EXPECT_EQ(contents(file), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "closed"), {}), 1);
}

TEST(Files, AFailedSwapRemovesTheSibling)
{
    const TestFolder folder;
    folder.write("a/inside", "old");
    EXPECT_EQ(writeProblem(folder / "a"), about(folder / "a", u"Is a directory"_s));
    EXPECT_THAT(folder.names(), ElementsAre("a"));
    EXPECT_EQ(contents(folder / "a/inside"), "old");
}

TEST(Files, WhatIsNewReplacesNothing)
{
    const TestFolder folder;
    EXPECT_TRUE(Files::writeNew(folder / "a", "first").value());
    EXPECT_FALSE(Files::writeNew(folder / "a", "second").value());
    EXPECT_TRUE(Files::writeNew(folder / "b", "third").value());
    EXPECT_FALSE(Files::moveToNew(folder / "b", folder / "a").value());
    EXPECT_TRUE(Files::moveToNew(folder / "b", folder / "c").value());
    EXPECT_EQ(contents(folder / "a"), "first");
    EXPECT_EQ(contents(folder / "c"), "third");
    EXPECT_THAT(folder.names(), ElementsAre("a", "c"));
    EXPECT_EQ(Files::moveToNew(folder / "b", folder / "d").error().description,
              about(folder / "b", u"No such file or directory"_s));
}

TEST(Files, AMissingFolderIsNamed)
{
    const TestFolder folder;
    EXPECT_EQ(writeProblem(folder / "none/a"),
              about(folder / "none/a", u"No such file or directory"_s));
}

TEST(Files, AFolderIsMadeWithThoseThatItLiesIn)
{
    const TestFolder folder;
    for (int twice = 0; twice < 2; ++twice)
        EXPECT_TRUE(Files::makeFolder(folder / "a" / "b"));
    EXPECT_TRUE(fs::is_directory(folder / "a" / "b"));
}

TEST(Files, AFolderThatCannotBeMadeIsNamedWithTheReason)
{
    const TestFolder folder;
    const auto made = Files::makeFolder(folder.write("a", "") / "b");
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().description.toStdString(),
              (folder / "a" / "b").native() + ": Not a directory");
}

TEST(Files, AReaderNeverSeesHalfAFile)
{
    const TestFolder folder;
    const fs::path file = folder / "a";
    const QByteArray versions[] = {QByteArray(300'000, 'a'), QByteArray(200'000, 'b')};
    ASSERT_EQ(writeProblem(file, versions[0]), u"none"_s);
    std::atomic<bool> done = false;
    std::jthread writer([&] {
        for (int i = 0; i < 100; ++i)
            EXPECT_EQ(writeProblem(file, versions[i % 2]), u"none"_s);
        done = true;
    });
    while (!done) {
        const auto seen = Files::read(file, plenty);
        ASSERT_TRUE(seen) << seen.error().description.toStdString();
        ASSERT_TRUE(*seen == versions[0] || *seen == versions[1]);
    }
}

} // namespace
} // namespace vantroque

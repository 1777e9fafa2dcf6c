#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

// Where the report goes, and what happens when it cannot go there.

namespace vantroque {
namespace {

using Media::operator+;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// A call whose file passes.
Words passingCall()
{
    static const Cli::ProfilesFolder profiles;
    return Words{"check", Clips::plain().native()} + profiles.words();
}

ProgramRun checkInto(const fs::path& target, const Words& more = {},
                     const ProgramOptions& options = {})
{
    return Cli::run(passingCall() + Words{"-o", target.native()} + more, options);
}

/// What the same call says on standard output.
QByteArray expected()
{
    return Cli::run(passingCall()).out;
}

TEST(Output, AFileTakesTheReport)
{
    const TestFolder folder;
    const auto run = checkInto(folder / "report.txt");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out.isEmpty());
    EXPECT_TRUE(run.err.isEmpty());
    EXPECT_EQ(contents(folder / "report.txt"), expected());
    EXPECT_THAT(folder.names(), ElementsAre("report.txt"));
}

TEST(Output, AnEarlierReportIsReplacedWhole)
{
    const TestFolder folder;
    folder.write("report.txt", QByteArray(100'000, 'x'));
    EXPECT_EQ(checkInto(folder / "report.txt").status, 0);
    EXPECT_EQ(contents(folder / "report.txt"), expected());
}

TEST(Output, ALinkKeepsPointingWhereItDoes)
{
    const TestFolder folder;
    folder.write("real/report.txt", "old");
    fs::create_symlink("real/report.txt", folder / "link.txt");
    EXPECT_EQ(checkInto(folder / "link.txt").status, 0);
    EXPECT_TRUE(fs::is_symlink(folder / "link.txt"));
    EXPECT_EQ(contents(folder / "real/report.txt"), expected());
}

TEST(Output, AFailedFileIsToldBesideTheReport)
{
    const TestFolder folder;
    const auto run = checkInto(folder / "report.txt", {"/nowhere.mp4"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err.toStdString(),
                HasSubstr("\nvantroque-cli: /nowhere.mp4: ffprobe exited with status 1: "));
    EXPECT_THAT(contents(folder / "report.txt").toStdString(), HasSubstr("could not be analysed"));
}

TEST(Output, AMissingFolderIsTold)
{
    const TestFolder folder;
    const auto run = checkInto(folder / "none/report.txt");
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err.toStdString(), EndsWith(": No such file or directory\n"));
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Output, AFolderInPlaceOfTheFileIsTold)
{
    const TestFolder folder;
    const auto run = checkInto(folder.path());
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err.toStdString(), EndsWith(": Is a directory\n"));
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Output, AFolderThatMayNotBeWrittenIsTold)
{
    const TestFolder folder;
    fs::permissions(folder.path(),
                    fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
    const auto run = checkInto(folder / "report.txt", {}, {.unprivileged = true});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err.toStdString(), EndsWith("report.txt: Permission denied\n"));
}

TEST(Output, OnAFullDiskTheEarlierReportStays)
{
    const TestFolder folder;
    const auto target = folder.write("report.txt", "the earlier one");
    // A limit on file sizes stands in for the full disk.
    const auto run = checkInto(target, {}, {.maxFileBytes = 16});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(contents(target), "the earlier one");
    EXPECT_THAT(folder.names(), ElementsAre("report.txt"));
}

TEST(Output, AFullDeviceIsTold)
{
    const auto run = checkInto("/dev/full");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "vantroque-cli: /dev/full: No space left on device\n");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(Output, ADeviceIsWrittenThrough)
{
    EXPECT_EQ(checkInto("/dev/null").status, 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(Output, StandardOutputMayBeNamedByItsFile)
{
    const auto run = checkInto("/dev/stdout");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.err.isEmpty());
}

class FullOutput : public testing::TestWithParam<Words> {};

INSTANTIATE_TEST_SUITE_P(Commands, FullOutput,
                         testing::Values(Words{"check", "FILE"},
                                         Words{"check", "--format", "json", "FILE"},
                                         Words{"check", "--format", "junit", "FILE"},
                                         Words{"probe", "FILE"}, Words{"profiles"},
                                         Words{"profiles", "--freshness"}, Words{"--help"},
                                         Words{"--version"}));

TEST_P(FullOutput, OnStandardOutputEndsWithTrouble)
{
    Words words = GetParam();
    std::ranges::replace(words, "FILE", Clips::wav().native());
    const auto run = Cli::run(words, {.standardOutput = "/dev/full"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err.toStdString(), HasSubstr("standard output: No space left on device"));
}

} // namespace
} // namespace vantroque

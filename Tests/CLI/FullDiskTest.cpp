#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

// The disk of the temporary folder is full before the tools have written what they need.

namespace vantroque {
namespace {

using Media::operator+;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// A disk of so many bytes in place of a folder, which the program alone sees.
class SmallDisk : public testing::Test {
protected:
    /// Runs the words with it as temporary folder; what is left there stands after the output.
    ProgramRun run(const std::string& size, const Words& words) const
    {
        return runProgram(Words{"unshare", "-m", "sh", "-c",
                                "mount -t tmpfs -o size=" + size + R"sh( none "$0" || exit 77
export TMPDIR="$0"
"$@"
status=$?
echo "left:$(ls -A "$0")"
exit $status)sh",
                                m_disk.path().native()}
                          + words);
    }
    void SetUp() override
    {
        if (run("64k", {"true"}).status != 0)
            GTEST_SKIP() << "no small disk can be made here";
    }

    const TestFolder m_disk;
    const TestFolder m_folder;
};

/// A profile that has the file decoded.
void addLoudness(const Cli::ProfilesFolder& profiles)
{
    Profile loud = Cli::containerProfile("loud", ProfileGroup::broadcast, "mp4");
    loud.loudness = LoudnessRule{};
    profiles.add(loud);
}

/// The luma of its frames, 4,608 bytes each, is looked at for the bits in use.
fs::path deepFilm()
{
    return Media::make({"deep-for-disk.mp4", Clips::picture("320x180", "25", "3") + Clips::tone("3")
                                                 + Clips::x264("yuv420p10le")
                                                 + Words{"-c:a", "aac"}});
}

TEST_F(SmallDisk, ThatIsFullEndsTheAnalysisInAPlainSentenceAndIsLeftEmpty)
{
    const Cli::ProfilesFolder profiles;
    addLoudness(profiles);
    const auto check = [&](const std::string& size) {
        return run(size, Cli::command(Words{"check", "--format", "text", "--profile", "loud",
                                            deepFilm().native()}
                                      + profiles.words()));
    };
    const ProgramRun full = check("64k");
    EXPECT_EQ(full.status, 2);
    EXPECT_THAT(full.out.toStdString(), HasSubstr("The disk is full.\n"));
    EXPECT_THAT(full.out.toStdString(), HasSubstr("No space left on device"));
    EXPECT_THAT(full.out.toStdString(), EndsWith("left:\n"));
    const ProgramRun enough = check("4m");
    EXPECT_THAT(enough.out.toStdString(), Not(HasSubstr("The disk is full.")));
    EXPECT_NE(enough.status, 2) << enough.out.toStdString();
}

TEST_F(SmallDisk, ThatIsFullIsSeenAlsoWhereTheToolDoesNotNotice)
{
    const Cli::ProfilesFolder profiles;
    addLoudness(profiles);
    const auto measure = [&](const std::string& size) {
        return run(size,
                   Cli::command(Words{"measure", Clips::plain().native()} + profiles.words()));
    };
    const ProgramRun full = measure("4k");
    EXPECT_EQ(full.status, 2);
    EXPECT_THAT(full.err.toStdString(), HasSubstr("The disk is full.\n"));
    EXPECT_EQ(full.out.count('\n'), 2) << "no line for the file under the header";
    EXPECT_THAT(full.out.toStdString(), EndsWith("left:\n"));
    EXPECT_EQ(measure("4m").status, 0);
}

} // namespace
} // namespace vantroque

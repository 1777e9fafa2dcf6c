#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

#include <algorithm>

// Profiles that cannot be read: the problem is told and the files are analysed all the same.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

class ProfilesDir : public testing::Test {
protected:
    /// What `check` and `profiles` complain of with this folder.
    std::string problemOf(const fs::path& folder, const ProgramOptions& options = {}) const
    {
        const auto run = Cli::run(
            {"check", "--format", "json", "--profiles-dir", folder.native(), Clips::wav().native()},
            options);
        EXPECT_EQ(run.status, 2);
        const auto files = Cli::checked(run);
        EXPECT_EQ(files.size(), 1U);
        EXPECT_EQ(files.at(0).status, u"done"_s);
        EXPECT_THAT(files.at(0).report->profiles, IsEmpty());

        const auto listing = Cli::run({"profiles", "--profiles-dir", folder.native()}, options);
        EXPECT_EQ(listing.status, 2);
        EXPECT_TRUE(listing.out.isEmpty());
        EXPECT_EQ(listing.err, run.err);
        return run.err.toStdString();
    }

    std::string problemOfFile(const QByteArray& text) const
    {
        m_folder.write("damaged.json", text);
        return problemOf(m_folder.path());
    }

    const TestFolder m_folder;
};

/// A bare ad is asked about a leader that only a profile describes which is installed and not
/// chosen.
TEST(ProfilesDirLeaders, OfProfilesThatAreNotChosenCount)
{
    const Cli::ProfilesFolder profiles;
    Profile bare = Cli::containerProfile("bare", ProfileGroup::digital, "mp4");
    bare.content.emplace();
    bare.content->slate = SlatePolicy::forbidden;
    profiles.add(bare);
    const auto film = Media::make(
        {"moving slate of four seconds.mp4",
         std::vector<std::string>{"-f", "lavfi", "-i", "testsrc2=s=160x90:r=25:d=8", "-vf",
                                  "drawbox=color=black:t=fill:enable='gte(t,4)*lt(t,6)'"}
             + Clips::x264()});
    const auto padding = [&] {
        const auto run = Cli::run({"check", "--format", "json", "--profiles-dir",
                                   profiles.path().native(), "--profile", "bare", film.native()});
        const auto rows = Cli::checked(run).at(0).report->profiles.at(0).checks;
        return std::ranges::find(rows, u"padding"_s, &CheckResult::id)->verdict;
    };
    EXPECT_EQ(padding(), Verdict::pass);
    Profile master = Cli::containerProfile("master", ProfileGroup::broadcast, "mxf");
    master.content.emplace();
    master.content->slateSeconds = 4;
    master.content->slateBlackSeconds = 2;
    profiles.add(master);
    EXPECT_EQ(padding(), Verdict::warn);
}

TEST_F(ProfilesDir, Missing)
{
    EXPECT_THAT(problemOf(m_folder / "none"), EndsWith("/none: No such file or directory\n"));
}

TEST_F(ProfilesDir, WithoutAName)
{
    EXPECT_THAT(problemOf(""), EndsWith(": No such file or directory\n"));
}

TEST_F(ProfilesDir, Empty)
{
    EXPECT_EQ(problemOf(m_folder.path()),
              "vantroque-cli: No platform profiles were found in the app bundle.\n");
}

TEST_F(ProfilesDir, ThatMayNotBeRead)
{
    fs::create_directory(m_folder / "closed");
    fs::permissions(m_folder.path(), fs::perms::all);
    fs::permissions(m_folder / "closed", fs::perms::none);
    EXPECT_THAT(problemOf(m_folder / "closed", {.unprivileged = true}),
                EndsWith("/closed: Permission denied\n"));
}

TEST_F(ProfilesDir, WithADamagedFile)
{
    EXPECT_THAT(problemOfFile("{\"id\": "), HasSubstr("/damaged.json: "));
}

TEST_F(ProfilesDir, WithAWrongType)
{
    EXPECT_THAT(problemOfFile(R"({"id": "a", "name": 5, "group": "digital", "sourceURL": "",
                                  "verifiedDate": ""})"),
                HasSubstr("/damaged.json: .name: "));
}

TEST_F(ProfilesDir, WithAPatternForNamesThatIsNone)
{
    EXPECT_THAT(problemOfFile(R"({"id": "a", "name": "A", "group": "digital", "sourceURL": "",
                                  "verifiedDate": "", "file": {"namePattern": "^(spot"}})"),
                AllOf(HasSubstr("/damaged.json: .file.namePattern: no regular expression: missing "
                                "closing parenthesis at character 7\n"),
                      EndsWith("vantroque-cli profiles --check "
                               + (m_folder / "damaged.json").native() + '\n')));
}

TEST_F(ProfilesDir, WithAnUnknownGroup)
{
    EXPECT_THAT(problemOfFile(R"({"id": "a", "name": "A", "group": "cinema", "sourceURL": "",
                                  "verifiedDate": ""})"),
                HasSubstr("/damaged.json: .group: "));
}

} // namespace
} // namespace vantroque

#include "CLI/Cli.h"
#include "Review/ReviewStore.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

// Findings and notes as a file for an editing system.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// Two seconds of a moving gray picture with ten frames of black in the middle.
fs::path blackInside()
{
    return Media::make(
        {"black inside.mkv", Clips::picture("64x64", "25", "2")
                                 + Words{"-vf",
                                         "format=gray,lutyuv=y='60+val/2',format=yuv420p,"
                                         "drawbox=color=black:t=fill:enable='between(n,20,29)'",
                                         "-c:v", "ffv1"}});
}

/// A profile that has the signal measured.
Profile measuring()
{
    Profile profile = Cli::containerProfile("measuring", ProfileGroup::digital, "mkv");
    profile.frameRate = FrameRateRule();
    profile.frameRate->duplicateFramesForbidden = true;
    return profile;
}

class MarkersCommand : public testing::Test {
protected:
    MarkersCommand() { m_profiles.add(measuring()); }

    ProgramRun run(const Words& words, const ProgramOptions& options = {}) const
    {
        return Cli::run(Words{"markers"} + m_profiles.words() + words, options);
    }
    std::string output(const Words& words) const
    {
        const auto result = run(words);
        EXPECT_EQ(result.status, 0) << result.err.toStdString();
        EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
        return result.out.toStdString();
    }
    std::string problemOf(const Words& words) const
    {
        const auto result = run(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.out.isEmpty());
        return result.err.toStdString();
    }
    void note(const fs::path& file, const QString& text) const
    {
        FileReview review = *ReviewStore::loadOrCreate(FileUrl::fromPath(file));
        ReviewComment comment;
        comment.frame = 12;
        comment.frameRate = 25;
        comment.author = u"Ada"_s;
        comment.text = text;
        comment.createdAt = QDateTime({2026, 3, 1}, {12, 0}, Qt::UTC);
        review.comments = {comment};
        ASSERT_TRUE(ReviewStore::save(review));
    }

    TestFolder m_folder;

private:
    Cli::ProfilesFolder m_profiles;
    TestFolder m_data;
    ScopedVariable m_home{"XDG_DATA_HOME", m_data.path()};
    ScopedVariable m_zone{"TZ", "UTC"};
};

TEST_F(MarkersCommand, PrintsFindingsAndNotesInOrder)
{
    note(blackInside(), u"Why black?"_s);
    const std::string table = output({"--format", "csv", blackInside().native()});
    EXPECT_THAT(table, StartsWith("\xEF\xBB\xBF"
                                  "File,Kind,"));
    const auto lines = QString::fromStdString(table).split(u'\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[1], u"black inside.mkv,note,info,Ada,Why black?,12,1,00:00:00:12,00:00:00:13,"
                        "00:00:00:12,00:00:00:13,Mar 01 26 12:00PM"_s);
    EXPECT_THAT(lines[2].toStdString(),
                StartsWith("black inside.mkv,finding,info,Black frames,Dip to black for 0.4 s,"));
    EXPECT_THAT(lines[2].toStdString(), HasSubstr(",20,11,00:00:00:20,00:00:01:06,"));
}

TEST_F(MarkersCommand, WritesEachFormat)
{
    for (const auto& [format, start] : std::vector<std::pair<std::string, std::string>>{
             {"avid", "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n"},
             {"premiere", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE xmeml>\n"},
             {"resolve", "TITLE: black inside.mkv\nFCM: NON DROP FRAME\n\n001  001  C  V  "}})
        EXPECT_THAT(output({"--format", format, blackInside().native()}), StartsWith(start));
}

TEST_F(MarkersCommand, FindsTheReviewOfARenamedFile)
{
    const auto before = m_folder.write("before.mp4", contents(Clips::plain()));
    note(before, u"Too loud"_s);
    fs::rename(before, m_folder / "after.mp4");
    EXPECT_THAT(output({"--format", "csv", "--skip-signal", m_folder / "after.mp4"}),
                HasSubstr("after.mp4,note,info,Ada,Too loud,12,"));
}

TEST_F(MarkersCommand, WithoutAReviewWritesTheFindings)
{
    EXPECT_THAT(output({"--format", "resolve", blackInside().native()}),
                HasSubstr(" |C:ResolveColorCyan |M:Black frames |D:11\n"));
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(MarkersCommand, LooksOnlyForWhatTheChosenProfilesAsk)
{
    const Words call{"--format", "csv", blackInside().native()};
    for (const Words& choice : {Words{"--profile", "mxf-only"}, Words{"--skip-signal"}}) {
        const auto none = run(choice + call);
        EXPECT_EQ(none.status, 0);
        EXPECT_THAT(none.out.toStdString(), Not(HasSubstr("finding")));
        EXPECT_EQ(none.err, "vantroque-cli: this file has no notes or findings yet\n");
    }
    EXPECT_THAT(output(Words{"--all"} + call), HasSubstr("finding"));
    EXPECT_THAT(output(Words{"--group", "digital"} + call), HasSubstr("finding"));
}

TEST_F(MarkersCommand, ReplacesAnEarlierFileWhole)
{
    const auto target = m_folder.write("markers.edl", QByteArray(100'000, 'x'));
    EXPECT_EQ(output({"--format", "resolve", "-o", target.native(), blackInside().native()}), "");
    EXPECT_THAT(contents(target).toStdString(), StartsWith("TITLE: black inside.mkv\n"));
    EXPECT_THAT(contents(target).toStdString(), EndsWith("\n\n"));
    EXPECT_THAT(m_folder.names(), ElementsAre("markers.edl"));
}

TEST_F(MarkersCommand, OnAFullDiskLeavesTheEarlierFile)
{
    const auto target = m_folder.write("markers.edl", "the earlier one");
    // A limit on file sizes stands in for the full disk.
    const auto result =
        run({"--format", "resolve", "--skip-signal", "-o", target.native(), blackInside().native()},
            {.maxFileBytes = 16});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(contents(target), "the earlier one");
    EXPECT_THAT(m_folder.names(), ElementsAre("markers.edl"));
}

TEST_F(MarkersCommand, OnAFullOutputEndsWithTrouble)
{
    const auto result = run({"--format", "resolve", "--skip-signal", Clips::wav().native()},
                            {.standardOutput = "/dev/full"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(),
                EndsWith("vantroque-cli: standard output: No space left on device\n"));
}

TEST_F(MarkersCommand, AFormatThatIsNoneIsTold)
{
    const std::string problem =
        "vantroque-cli: markers takes --format avid, premiere, resolve or csv\n";
    EXPECT_EQ(problemOf({Clips::wav().native()}), problem);
    EXPECT_EQ(problemOf({"--format", "Avid", Clips::wav().native()}), problem);
}

TEST_F(MarkersCommand, TakesOneFile)
{
    const std::string problem = "vantroque-cli: markers takes one file\n";
    EXPECT_EQ(problemOf({"--format", "csv"}), problem);
    EXPECT_EQ(problemOf({"--format", "csv", Clips::wav().native(), Clips::wav().native()}),
              problem);
}

TEST_F(MarkersCommand, AProfileThatIsNoneIsTold)
{
    EXPECT_THAT(problemOf({"--format", "csv", "--profile", "nobody", Clips::wav().native()}),
                HasSubstr("nobody"));
}

TEST_F(MarkersCommand, AFileThatCannotBeAnalysedIsTold)
{
    EXPECT_THAT(problemOf({"--format", "csv", "/nowhere.mkv"}),
                StartsWith("vantroque-cli: /nowhere.mkv: ffprobe exited with status 1: "));
}

TEST_F(MarkersCommand, ADamagedReviewCostsOnlyTheNotes)
{
    note(blackInside(), u"Why black?"_s);
    const auto record =
        ReviewStore::directory()
        / (ReviewStore::fingerprint(FileUrl::fromPath(blackInside()))->toStdString() + ".json");
    std::error_code error;
    fs::resize_file(record, 10, error);
    ASSERT_FALSE(error);
    EXPECT_THAT(output({"--format", "csv", blackInside().native()}), Not(HasSubstr("note")));
}

} // namespace
} // namespace vantroque

#include "Base/Json.h"
#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

// What `check` tells of files that can be analysed.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

class Check : public testing::Test {
protected:
    ProgramRun run(const Words& words, const ProgramOptions& options = {}) const
    {
        return Cli::run(Words{"check"} + m_profiles.words() + words, options);
    }
    std::vector<Cli::File> files(const Words& words) const
    {
        return Cli::check(m_profiles.words() + words);
    }
    /// The ids of the profiles that one file was scored against.
    std::vector<QString> chosen(const Words& words) const
    {
        std::vector<QString> ids;
        const auto scored = files(words + Words{m_clip.native()});
        for (const ProfileReport& report : scored.at(0).report->profiles)
            ids.push_back(report.profileID);
        return ids;
    }

    const Cli::ProfilesFolder m_profiles;
    const std::filesystem::path m_clip = Clips::plain();
};

TEST_F(Check, TheTextNamesTheFileAndEachPlatform)
{
    const auto result = run({"--all", m_clip.native()});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
    const std::string text = result.out.toStdString();
    EXPECT_THAT(text, HasSubstr("plain.mp4    "));
    EXPECT_THAT(text, HasSubstr(" · 1.0s · 320x180 · H264\n"));
    EXPECT_THAT(text, HasSubstr("  TEST MP4-ONLY  PASS\n    ok Container              mp4\n"));
    EXPECT_THAT(text, HasSubstr("  TEST MXF-ONLY  FAIL\n    XX Container              mp4\n"
                                "       expected: mxf\n       fix: "));
    EXPECT_THAT(text, HasSubstr("  TEST WEBM-ADVISED  BELOW\n    !! Container"));
    EXPECT_TRUE(result.out.endsWith('\n'));
}

TEST_F(Check, TheSummaryTellsEachProblemOnce)
{
    const auto result = run({"--all", "--summary", m_clip.native()});
    EXPECT_EQ(result.status, 1);
    const std::string text = result.out.toStdString();
    EXPECT_THAT(text, HasSubstr("plain.mp4    "));
    EXPECT_THAT(text, HasSubstr("\n  1 problem to fix\n\n    XX Container              1 platform\n"
                                "       mp4 -> mxf: "));
    EXPECT_THAT(text, Not(HasSubstr("    ok ")));
    const auto json = run({"--summary", "--format", "json", m_clip.native()});
    EXPECT_EQ(json.status, 2);
    EXPECT_EQ(json.err, "vantroque-cli: --summary has the format text only\n");
}

TEST_F(Check, FilesAreSetApartByARule)
{
    const auto result = run({m_clip.native(), Clips::wav().native()});
    const std::string rule = '\n' + std::string(72, '-') + "\n\n";
    EXPECT_THAT(result.out.toStdString(), HasSubstr(rule + "sound.wav    "));
}

TEST_F(Check, TheStatusTellsTheWorstOutcome)
{
    EXPECT_EQ(run({"--profile", "mp4-only", m_clip.native()}).status, 0);
    EXPECT_EQ(run({"--profile", "mxf-only", m_clip.native()}).status, 1);
    EXPECT_EQ(run({"--profile", "mxf-only", m_clip.native(), "/nowhere.mp4"}).status, 2);
    EXPECT_EQ(run({"--profile", "mp4-only", Clips::mpeg2InMxf().native(), m_clip.native()}).status,
              1);
}

TEST_F(Check, ARecommendationNeverFailsAFile)
{
    const auto result = run({"--profile", "webm-advised", m_clip.native()});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out.toStdString(), HasSubstr("BELOW"));
}

TEST_F(Check, TheJsonHoldsPathStatusAndReport)
{
    const auto result = run({"--format", "json", "--all", m_clip.native(), "/nowhere.mp4"});
    EXPECT_EQ(result.status, 2);
    const QJsonObject root = Cli::json(result);
    EXPECT_THAT(root.keys(), ElementsAre(u"files"_s, u"version"_s));
    EXPECT_EQ(root.value("version"_L1).toString().count(u'.'), 2);

    const auto both = Cli::checked(result);
    ASSERT_EQ(both.size(), 2U);
    EXPECT_EQ(both[0].path.toStdString(), m_clip.native());
    EXPECT_EQ(both[0].status, u"done"_s);
    EXPECT_EQ(both[0].error, std::nullopt);
    EXPECT_FALSE(both[0].hasMedia);
    EXPECT_EQ(both[0].report->fileName, u"plain.mp4"_s);
    EXPECT_EQ(both[0].report->filePath.toStdString(), m_clip.native());
    EXPECT_EQ(both[0].report->video->frameCount, 25);
    EXPECT_EQ(both[0].report->profiles.size(), 3U);

    EXPECT_EQ(both[1].status, u"failed"_s);
    EXPECT_THAT(both[1].error->toStdString(), HasSubstr("No such file or directory"));
    EXPECT_EQ(both[1].report, std::nullopt);
}

TEST_F(Check, TheJsonIsLaidOutAsOneDocument)
{
    const auto result = run({"--format", "json", "--media", m_clip.native(), "/nowhere.mp4"});
    EXPECT_EQ(result.out, Json::print(Cli::json(result)));
}

TEST_F(Check, TheRecordOfTheFileComesOnRequest)
{
    EXPECT_TRUE(files({"--media", m_clip.native()}).at(0).hasMedia);
}

TEST_F(Check, WithoutAChoiceTheDigitalProfilesCount)
{
    EXPECT_THAT(chosen({}), ElementsAre(u"mp4-only"_s));
}

TEST_F(Check, ProfilesAndGroupsAddUpInTheirOwnOrder)
{
    EXPECT_THAT(chosen({"--all"}), ElementsAre(u"mp4-only"_s, u"mxf-only"_s, u"webm-advised"_s));
    EXPECT_THAT(chosen({"--profile", "webm-advised", "--profile", "mp4-only"}),
                ElementsAre(u"mp4-only"_s, u"webm-advised"_s));
    EXPECT_THAT(chosen({"--group", "broadcast"}), ElementsAre(u"mxf-only"_s));
    EXPECT_THAT(
        chosen({"--group", "recommendation", "--profile", "mxf-only", "--group", "broadcast"}),
        ElementsAre(u"mxf-only"_s, u"webm-advised"_s));
}

TEST_F(Check, SeveralJobsKeepTheOrderOfTheFiles)
{
    const TestFolder folder;
    Words names;
    for (int i = 0; i < 8; ++i) {
        // The slower ones come first.
        const auto source = i < 4
                                ? Clips::captioned(CaptionedCodec::h264, Clips::CaptionsBegin::late)
                                : Clips::wav();
        names.push_back(
            folder.write(std::to_string(i) + source.extension().native(), contents(source)));
    }
    std::vector<QString> expected;
    for (const std::string& name : names)
        expected.push_back(QString::fromStdString(name));
    std::vector<QString> told;
    for (const Cli::File& file : files(Words{"--jobs", "4"} + names)) {
        told.push_back(file.path);
        EXPECT_EQ(file.status, u"done"_s) << file.path.toStdString();
    }
    EXPECT_EQ(told, expected);
    EXPECT_EQ(run(Words{"--jobs", "4"} + names).out, run(names).out);
}

TEST_F(Check, TheSameFileMayBeNamedTwice)
{
    const auto both = files({"--jobs", "2", m_clip.native(), m_clip.native()});
    ASSERT_EQ(both.size(), 2U);
    EXPECT_EQ(both[0].report, both[1].report);
}

TEST_F(Check, AnyExtensionIsAnalysed)
{
    const TestFolder folder;
    const auto file = folder.write("film.bin", contents(m_clip));
    EXPECT_EQ(files({file.native()}).at(0).status, u"done"_s);
}

TEST_F(Check, ANameCannotSpeakToTheTerminal)
{
    const TestFolder folder;
    const auto file = folder.write("\u202ea.M\x1b[2JP4", contents(m_clip));
    Profile lowercase = Cli::containerProfile("lowercase", ProfileGroup::digital, "mp4");
    lowercase.container->lowercaseExtensionRequired = true;
    m_profiles.add(lowercase);
    const auto text = run({"--all", file.native()}).out.toStdString();
    EXPECT_THAT(text, HasSubstr("expected: lowercase extension (.m?[2jp4)"));
    EXPECT_THAT(text, Not(HasSubstr("\x1b")));
    EXPECT_THAT(text, Not(HasSubstr("\u202e")));
}

bool hasTerminals()
{
    return std::filesystem::exists("/dev/pts/ptmx");
}

TEST_F(Check, ColourIsForATerminalOnly)
{
    const Words words{"--all", m_clip.native()};
    EXPECT_THAT(run(words).out.toStdString(), Not(HasSubstr("\x1b[")));
    if (!hasTerminals())
        GTEST_SKIP() << "this system gives no terminals";
    const ProgramOptions terminal{.environment = {{"NO_COLOR", {}}}, .onTerminal = true};
    EXPECT_THAT(run(words, terminal).out.toStdString(), HasSubstr("\x1b[31mFAIL\x1b[0m"));
}

TEST_F(Check, ColourMayBeRefused)
{
    const Words words{"--all", m_clip.native()};
    if (!hasTerminals())
        GTEST_SKIP() << "this system gives no terminals";
    const auto onTerminal = [&](const std::string& value) {
        return run(words, {.environment = {{"NO_COLOR", value}}, .onTerminal = true})
            .out.toStdString();
    };
    EXPECT_THAT(onTerminal("1"), Not(HasSubstr("\x1b[31m")));
    EXPECT_THAT(onTerminal(""), HasSubstr("\x1b[31m"));
}

TEST_F(Check, ATerminalSeesHowFarItHasGot)
{
    if (!hasTerminals())
        GTEST_SKIP() << "this system gives no terminals";
    const auto text =
        run({m_clip.native()}, {.environment = {}, .onTerminal = true}).out.toStdString();
    EXPECT_THAT(text, HasSubstr("[....................] 0%  Reading the file  plain.mp4"));
    EXPECT_THAT(text, HasSubstr("\r\x1b[K"));
    EXPECT_TRUE(run({m_clip.native()}).err.isEmpty());
}

} // namespace
} // namespace vantroque

#include "Base/Json.h"
#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Tools/ProcessTable.h"

// A check of many files tells each as it is done, and works ahead.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

std::vector<std::string> lines(const QByteArray& text)
{
    std::vector<std::string> found;
    for (const QByteArray& line : text.trimmed().split('\n'))
        found.push_back(line.toStdString());
    return found;
}

class ManyFiles : public testing::Test {
protected:
    Words command(const Words& words) const
    {
        return Cli::command(Words{"check", "--all"} + m_profiles.words() + words);
    }
    ProgramRun run(const Words& words, const ProgramOptions& options = {}) const
    {
        return runProgram(command(words), options);
    }
    /// A sound of its own under that name.
    std::string sound(const std::string& name) const
    {
        return m_folder.write(name, contents(Clips::wav()));
    }
    std::string path(const std::string& name) const { return m_folder / name; }
    QByteArray quoted(const std::string& name) const
    {
        return "'" + QByteArray::fromStdString(path(name)) + "'";
    }

    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
    const std::string m_clip = Clips::plain().native();
};

TEST_F(ManyFiles, AreToldInALineEachWithVerdictAndTimeLeft)
{
    m_profiles.add(Cli::containerProfile("other", ProfileGroup::digital, "mp4"));
    const auto result = run({m_clip, "/nowhere.mp4", m_clip});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(
        lines(result.err),
        ElementsAre(
            MatchesRegex("1 of 3  fail  .*plain.mp4: Passes 2 of 3 platforms, [0-9]+:[0-9][0-9] "
                         "left"),
            MatchesRegex("2 of 3  error  /nowhere.mp4: could not be analysed, "
                         "[0-9]+:[0-9][0-9] left"),
            MatchesRegex("3 of 3  fail  .*plain.mp4: Passes 2 of 3 platforms")));
}

TEST_F(ManyFiles, OneAloneIsToldByItsReport)
{
    EXPECT_EQ(run({m_clip}).err, "");
}

TEST_F(ManyFiles, AFileScoredAgainstNothingHasNoVerdict)
{
    const auto result =
        runProgram(Cli::command(Words{"check", "--group", "recommendation"} + m_profiles.words()
                                + Words{m_clip, Clips::wav().native()}));
    EXPECT_THAT(lines(result.err).at(0), HasSubstr("1 of 2  warn  "));
    const TestFolder folder;
    folder.write(
        "other.json",
        Json::write(Cli::containerProfile("other", ProfileGroup::broadcast, "mp4")).value());
    const auto none = runProgram(Cli::command(
        {"check", "--profiles-dir", folder.path().native(), m_clip, Clips::wav().native()}));
    EXPECT_THAT(lines(none.err).at(0),
                MatchesRegex("1 of 2  info  .*plain.mp4: No platforms selected.*"));
}

TEST_F(ManyFiles, NamesDoNotSpeakToTheTerminal)
{
    const auto result = run({"/no\x1B[2J\nwhere.mp4", m_clip});
    EXPECT_FALSE(result.err.contains('\x1B'));
    EXPECT_THAT(lines(result.err), testing::SizeIs(2));
}

TEST_F(ManyFiles, AreToldWhileTheNextIsUnderWay)
{
    const FakeTools tools;
    // The second file waits until the first was told.
    tools.put("ffprobe", "case \"$*\" in *second.wav) while [ ! -e " + quoted("go")
                             + " ]; do sleep 0.02; done;; esac\nexec ffprobe \"$@\"");
    Words words{"sh", "-c", "exec \"$@\" 2> \"$0\"", path("log")};
    Program check(words + command({sound("first.wav"), sound("second.wav")}));
    EXPECT_TRUE(comesTrue(
        [&] { return fs::exists(path("log")) && contents(path("log")).contains("first.wav: "); }));
    EXPECT_THAT(contents(path("log")).toStdString(), Not(HasSubstr("second.wav: ")));
    m_folder.write("go", "");
    const auto result = check.wait();
    EXPECT_THAT(result.out.toStdString(), HasSubstr("\nsecond.wav    "));
    EXPECT_THAT(contents(path("log")).toStdString(), HasSubstr("2 of 2  "));
}

TEST_F(ManyFiles, AreProbedBesideTheDecodeOfTheOneBefore)
{
    auto loud = Cli::containerProfile("loud", ProfileGroup::digital, "wav");
    loud.loudness = LoudnessRule();
    m_profiles.add(loud);
    const FakeTools tools;
    // The decode of the first file ends only when the second is being probed.
    tools.put("ffprobe", "case \"$*\" in *second.wav) : > " + quoted("probed")
                             + ";; esac\nexec ffprobe \"$@\"");
    tools.put("ffmpeg", "case \"$*\" in *first.wav*) while [ ! -e " + quoted("probed")
                            + " ]; do sleep 0.02; done;; esac\nexec ffmpeg \"$@\"");
    const auto result = run({sound("first.wav"), sound("second.wav")});
    EXPECT_NE(result.status, 2) << result.err.toStdString();
    EXPECT_TRUE(fs::exists(path("probed")));
}

TEST_F(ManyFiles, AreInTheReportInTheirOrderWhoeverIsFirst)
{
    const FakeTools tools;
    // The first file is probed when all others are told.
    tools.put("ffprobe", "case \"$*\" in *0.wav) while ! grep -q '3 of 4' " + quoted("log")
                             + "; do sleep 0.02; done;; esac\nexec ffprobe \"$@\"");
    Words files;
    for (const char* const name : {"0.wav", "1.wav", "2.wav", "3.wav"})
        files.push_back(sound(name));
    m_folder.write("log", "");
    for (const std::string format : {"text", "json", "junit"}) {
        m_folder.write("log", "");
        Words words{"sh", "-c", "exec \"$@\" 2> \"$0\"", path("log")};
        const auto slow = runProgram(words + command({"--jobs", "2", "--format", format}) + files);
        m_folder.write("log", "3 of 4");
        EXPECT_EQ(slow.out, run(Words{"--format", format} + files).out) << format;
        EXPECT_THAT(slow.out.toStdString(), HasSubstr("3.wav"));
    }
}

TEST_F(ManyFiles, OnATerminalEachTextComesAtOnceAndADocumentAtTheEnd)
{
    if (!fs::exists("/dev/pts/ptmx"))
        GTEST_SKIP() << "this system gives no terminals";
    const ProgramOptions terminal{.environment = {{"NO_COLOR", "1"}}, .onTerminal = true};
    const Words files{sound("first.wav"), sound("second.wav")};
    const auto orderIn = [&](const QByteArray& shown) {
        std::vector<qsizetype> places;
        for (const char* const words : {"1 of 2  ", "2 of 2  "})
            places.push_back(shown.indexOf(words));
        return places;
    };
    const auto text = run(files, terminal).out;
    const qsizetype first = text.indexOf("first.wav    ");
    EXPECT_GE(first, 0);
    EXPECT_LT(first, orderIn(text)[1]) << "the first report comes before the second file is done";
    EXPECT_GT(text.indexOf("second.wav    "), orderIn(text)[0]);
    EXPECT_EQ(text.count("first.wav    "), 1);

    const auto json = run(Words{"--format", "json"} + files, terminal).out;
    EXPECT_GT(json.indexOf("\"files\": ["), orderIn(json)[1]);
}

TEST_F(ManyFiles, AReportThatCannotBeKeptStopsTheCheck)
{
    // A limit on the size of files stands in for the full disk.
    const Words limited{"sh", "-c", "ulimit -f 1; exec \"$0\" \"$@\""};
    const auto result = runProgram(
        limited + command({"--format", "json", m_clip, m_clip, m_clip, "-o", path("report.json")}));
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("scratch file of the report: File too large"));
    EXPECT_THAT(result.err.toStdString(), Not(HasSubstr("3 of 3")));
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

} // namespace
} // namespace vantroque

#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

#include <sys/stat.h>

// Results that were written in parts, put together.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::HasSubstr;
using testing::SizeIs;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class Collect : public testing::Test {
protected:
    std::string sound(const std::string& name) const
    {
        return m_folder.write(name, contents(Clips::wav()));
    }
    std::string path(const std::string& name) const { return m_folder / name; }
    /// What `check` tells of these files.
    ProgramRun check(const std::string& format, const Words& files) const
    {
        return Cli::run(Words{"check", "--all", "--media", "--format", format} + m_profiles.words()
                        + files);
    }
    /// A part with a line on each.
    std::string part(const std::string& name, const Words& files) const
    {
        return m_folder.write(name, check("jsonl", files).out);
    }
    static ProgramRun collect(const Words& words) { return Cli::run(Words{"collect"} + words); }

    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
    const std::string m_clip = Clips::plain().native();
};

TEST_F(Collect, GivesWhatOneCheckOfAllFilesHadGiven)
{
    const Words files{m_clip, sound("caf\xE9.wav"), sound("b.wav"), "/nowhere.mp4"};
    fs::create_directory(m_folder / "parts");
    part("parts/1.jsonl", {files[0], files[1]});
    part("parts/2.jsonl", {files[2], files[3]});
    m_folder.write("parts/notes.txt", "no part");
    for (const std::string format : {"json", "junit"}) {
        const auto whole = check(format, files);
        const auto joined = collect({"--format", format, path("parts")});
        EXPECT_EQ(joined.out, whole.out);
        EXPECT_EQ(joined.status, 2);
        EXPECT_EQ(joined.err, "");
    }
    const auto whole = m_folder.write("whole.json", check("json", files).out);
    EXPECT_EQ(collect({"--format", "json", whole, "-o", path("again.json")}).status, 2);
    EXPECT_EQ(contents(path("again.json")), contents(whole));
}

TEST_F(Collect, SaysWhatIsMissingThereTwiceOrBeyondReading)
{
    const Words files{sound("a.wav"), sound("b\nb.wav"), sound("caf\xE9.wav"), sound("d.wav")};
    const auto one = part("1.jsonl", {files[0], files[1]});
    const QByteArray line = contents(one).split('\n').first();
    const auto torn = m_folder.write("2.jsonl", line + "\n" + line.left(line.size() / 2));
    const auto bad = m_folder.write("3.jsonl", line + "\nnoise\n\nmore\n");
    std::string list;
    for (const std::string& name : files)
        if (name != files[1])
            list += name + '\0' + name + '\0';
    const auto listed = m_folder.write("list", QByteArray::fromStdString(list)).native();
    const std::string folder = m_folder.path().native() + '/';

    const auto all = collect({"--files-from", listed, one, torn, bad});
    EXPECT_EQ(all.status, 2);
    EXPECT_EQ(all.out.toStdString(),
              "missing: 2\n  " + folder + "caf\uFFFD.wav\n  " + folder + "d.wav\n"
                  + "not in the list: 1\n  " + folder + "b?b.wav\n"
                  + "there more than once, and kept once: 1\n  " + folder + "a.wav\n"
                  + "cannot be read: 1\n  " + folder
                  + "3.jsonl: line 2 is no result (not valid JSON at byte 1: illegal value), nor "
                    "are 1 more\n"
                  + "torn, as a check that was killed leaves it: 1\n  " + folder
                  + "2.jsonl: its last line\n2 files: 2 fail; 2 missing\n");
    EXPECT_EQ(all.err, "");

    const auto json = collect({"--format", "json", "--files-from", listed, one});
    EXPECT_EQ(json.status, 2);
    EXPECT_THAT(Cli::checked(json), SizeIs(2));
    EXPECT_THAT(json.err.toStdString(), HasSubstr("vantroque-cli: missing: 2\n  " + folder));
    EXPECT_EQ(collect({torn}).status, 1) << "a torn line alone is no harm";
}

TEST_F(Collect, CountsAnAnalysisMoreThanAFailure)
{
    const Words both{sound("a.wav"), path("later.wav")};
    const auto before = part("1.jsonl", both);
    sound("later.wav");
    const auto after = part("2.jsonl", {both[1]});
    for (const Words& parts : {Words{before, after}, Words{after, before}}) {
        const auto files = Cli::checked(collect(Words{"--format", "json"} + parts));
        ASSERT_THAT(files, SizeIs(2));
        EXPECT_EQ(files[0].status + files[1].status, u"donedone"_s);
    }
    const auto alone = collect({before});
    EXPECT_EQ(alone.status, 2);
    EXPECT_THAT(alone.out.toStdString(),
                HasSubstr("later.wav    could not be analysed\n  ffprobe exited"));
    EXPECT_TRUE(alone.out.endsWith("2 files: 1 fail, 1 could not be analysed\n"));
}

TEST_F(Collect, TellsVerdictsInATable)
{
    const auto parts = part("1.jsonl", {m_clip, sound("=a,b.wav"), "/nowhere.mp4"});
    const auto lines = collect({"--format", "table", parts}).out.split('\n');
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_EQ(lines[0], "path,status,verdict,failing_profiles,error");
    EXPECT_EQ(lines[1].toStdString(), m_clip + ",done,fail,1,");
    EXPECT_EQ(lines[2].toStdString(), '"' + path("=a,b.wav") + "\",done,fail,2,");
    EXPECT_TRUE(lines[3].startsWith("/nowhere.mp4,failed,,,ffprobe exited with status 1: "));
    const auto passing = m_folder.write(
        "2.jsonl", Cli::run(Words{"check", "--format", "jsonl", m_clip} + m_profiles.words()).out);
    EXPECT_EQ(collect({"--format", "table", passing}).status, 0);
}

TEST_F(Collect, TellsOfResultsOfOtherVersions)
{
    auto line = check("jsonl", {m_clip}).out;
    line.replace(0, line.indexOf(','), "{\"version\":\"0.0.9\"");
    const auto old = m_folder.write("1.jsonl", line);
    const auto joined = collect({"--format", "json", old, part("2.jsonl", {sound("a.wav")})});
    EXPECT_THAT(joined.err.toStdString(), HasSubstr("other versions of the program: 1\n  0.0.9: "));
    const auto again = m_folder.write("joined.json", joined.out);
    EXPECT_EQ(collect({"--format", "json", again}).out, joined.out);
}

TEST_F(Collect, ReadsOnBehindHostileParts)
{
    const auto good = part("good.jsonl", {m_clip});
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    const auto result = [](const QByteArray& what) {
        return "{\"version\":\"1\",\"path\":\"a\",\"status\":\"done\",\"report\":" + what + "}\n";
    };
    const std::vector<QByteArray> hostile{QByteArray("\0\0\n", 3),
                                          "[[[[",
                                          QByteArray(100'000, '['),
                                          "7",
                                          "{\"files\":7}",
                                          "{\"files\":[7,{}]}",
                                          result("{}"),
                                          result("[") + "}\n",
                                          "{\"version\":\"\x1B[2J\"}\n",
                                          "{\"version\":\"1\",\"path\":\"a\",\"pathBytes\":\"!\","
                                          "\"status\":\"failed\",\"error\":\"\"}\n"};
    Words parts{path("pipe"), "/dev/zero", "/nowhere.jsonl"};
    for (std::size_t i = 0; i < hostile.size(); ++i)
        parts.push_back(m_folder.write(std::to_string(i), hostile[i]));
    parts.push_back(m_folder.write("empty", {})); // which is none yet
    const auto told = collect(parts + Words{good});
    EXPECT_EQ(told.status, 2);
    EXPECT_THAT(told.out.toStdString(), HasSubstr("cannot be read: 13\n"));
    EXPECT_TRUE(told.out.endsWith("1 file: 1 fail\n")) << told.out.toStdString();
    EXPECT_FALSE(told.out.contains('\x1B'));
    const auto nothing = collect({"--format", "json", path("empty")});
    EXPECT_EQ(nothing.status, 2);
    EXPECT_EQ(nothing.err, "vantroque-cli: there are no results in what was named\n");
}

TEST_F(Collect, NeverWritesOverWhatItReads)
{
    fs::create_directory(m_folder / "parts");
    const auto one = part("parts/1.jsonl", {m_clip});
    const auto before = contents(one);
    for (const std::string& named : {one, path("parts")})
        EXPECT_THAT(collect({"--format", "json", named, "-o", one}).err.toStdString(),
                    HasSubstr("is a file to be read"));
    EXPECT_EQ(contents(one), before);
}

} // namespace
} // namespace vantroque

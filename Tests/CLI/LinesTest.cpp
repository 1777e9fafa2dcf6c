#include "Base/Json.h"
#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Tools/ProcessTable.h"

#include <QJsonArray>

#include <csignal>

// One file a line, as soon as it is done, and going on where a call was ended.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

QJsonObject parsed(const QByteArray& line)
{
    const auto value = Json::parse(line);
    EXPECT_TRUE(value.has_value()) << line.toStdString();
    return value ? value->toObject() : QJsonObject();
}

class Lines : public testing::Test {
protected:
    Words command(const Words& words) const
    {
        return Cli::command(Words{"check", "--all", "--format", "jsonl"} + m_profiles.words()
                            + words);
    }
    ProgramRun run(const Words& words, const ProgramOptions& options = {}) const
    {
        return runProgram(command(words), options);
    }
    std::string sound(const std::string& name) const
    {
        return m_folder.write(name, contents(Clips::wav()));
    }
    /// The names in OUT in its order.
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const QByteArray& line : contents(m_out).split('\n'))
            if (!line.isEmpty())
                found.push_back(
                    fs::path(parsed(line).value("path"_L1).toString().toStdString()).filename());
        return found;
    }
    bool hasLines(int count) const
    {
        return comesTrue([&] { return fs::exists(m_out) && contents(m_out).count('\n') == count; });
    }
    /// A tool that waits, when it is asked for this file, until the file "go" is there.
    void holdBack(const FakeTools& tools, const QByteArray& name) const
    {
        tools.put("ffprobe", "case \"$*\" in *" + name + ") while [ ! -e '"
                                 + QByteArray::fromStdString(m_folder / "go")
                                 + "' ]; do sleep 0.02; done;; esac\nexec ffprobe \"$@\"");
    }

    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
    const fs::path m_out = m_folder / "out.jsonl";
};

TEST_F(Lines, HoldWhatTheDocumentHoldsOfAFileAndTheVersion)
{
    const Words files{sound("caf\xE9.wav"), "/nowhere.mp4"};
    const auto result = run(Words{"--media"} + files);
    EXPECT_EQ(result.status, 2);
    const auto document = runProgram(Cli::command(
        Words{"check", "--all", "--format", "json", "--media"} + m_profiles.words() + files));
    const QJsonObject root = Cli::json(document);
    const auto lines = result.out.split('\n');
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_EQ(lines.back(), "");
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(lines[i].startsWith("{\"version\":\""));
        QJsonObject object = parsed(lines[i]);
        EXPECT_EQ(object.take("version"_L1), root.value("version"_L1));
        EXPECT_EQ(object, root.value("files"_L1)[i].toObject());
    }
}

TEST_F(Lines, AreThereAsSoonAsTheirFileIsDone)
{
    const FakeTools tools;
    holdBack(tools, "slow.wav");
    const Words call{"--jobs", "2", sound("slow.wav"), sound("quick.wav")};
    Program check(command(call + Words{"-o", m_out}));
    EXPECT_TRUE(hasLines(1));
    EXPECT_THAT(names(), ElementsAre("quick.wav"));

    const auto second = run({sound("other.wav"), "--resume", m_out});
    EXPECT_EQ(second.status, 2);
    EXPECT_EQ(second.err.toStdString(),
              "vantroque-cli: " + m_out.native()
                  + ": another vantroque-cli is writing it; wait for its end or name another "
                    "file\n");
    m_folder.write("go", "");
    EXPECT_EQ(check.wait().status, 1);
    EXPECT_THAT(names(), ElementsAre("quick.wav", "slow.wav"));
}

TEST_F(Lines, OfAKilledCallAreNotDoneAgain)
{
    const Words files{sound("a.wav"), sound("b.wav"), sound("slow.wav"), sound("d.wav")};
    const Words call = Words{"--resume", m_out} + files;
    QByteArray whole;
    {
        const FakeTools tools;
        holdBack(tools, "slow.wav");
        Program check(command(call));
        ASSERT_TRUE(hasLines(2));
        check.signal(SIGKILL);
        EXPECT_EQ(check.wait().status, 128 + SIGKILL);
        whole = contents(m_out);
    }
    // As if it had been killed in the middle of a line.
    m_folder.write("out.jsonl", whole + whole.left(whole.indexOf('\n') / 2));
    const FakeTools tools;
    tools.record("ffprobe");
    const auto again = run(call);
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err.toStdString(), HasSubstr(": cut off a torn last line\n"));
    EXPECT_THAT(again.err.toStdString(),
                HasSubstr(": goes on after the 2 files that stand there\n"));
    EXPECT_TRUE(contents(m_out).startsWith(whole));
    EXPECT_THAT(names(), ElementsAre("a.wav", "b.wav", "slow.wav", "d.wav"));
    for (const auto& asked : tools.calls("ffprobe"))
        EXPECT_THAT(asked.back(), testing::AnyOf(files[2], files[3]));
}

TEST_F(Lines, AreNotOfFilesWhoseToolsWereEndedByOthers)
{
    const Words call{"--resume", m_out, sound("a.wav"), sound("b.wav")};
    {
        const FakeTools tools;
        tools.put("ffprobe", "case \"$*\" in *a.wav) kill -TERM $$;; esac\nexec ffprobe \"$@\"");
        const auto ended = run(call);
        EXPECT_EQ(ended.status, 2);
        EXPECT_THAT(ended.err.toStdString(),
                    HasSubstr("a.wav: its tool was ended by others; not done"));
    }
    EXPECT_THAT(names(), ElementsAre("b.wav"));
    EXPECT_EQ(run(call).status, 1);
    EXPECT_THAT(names(), ElementsAre("b.wav", "a.wav"));
}

TEST_F(Lines, ThatStandThereCountForTheStatusAndAreKeptByTheBytesOfTheirNames)
{
    const Words files{sound("caf\xE9.wav"), sound("caf\xE8.wav"), "/nowhere.mp4"};
    const Words resume{"--resume", m_out};
    EXPECT_EQ(run(resume + Words{files[0], files[0]}).status, 1);
    EXPECT_THAT(names(), SizeIs(1));
    EXPECT_EQ(run(resume + files).status, 2);
    EXPECT_THAT(names(), SizeIs(3));
    const QByteArray before = contents(m_out);
    for (const std::string& name : files)
        EXPECT_EQ(run(resume + Words{name}).status, 2) << "of the one that could not be analysed";
    EXPECT_EQ(contents(m_out), before);
}

TEST_F(Lines, GoOnAfterNothingElse)
{
    run({"--resume", m_out, sound("a.wav")});
    const QByteArray line = contents(m_out);
    auto elsewhere = line;
    elsewhere.replace("\"status\":\"done\"", "\"status\":\"gone\"");
    auto bytes = line;
    bytes.replace("\"path\":", "\"pathBytes\":\"4pis\",\"path\":");
    for (const auto& [other, reason] : std::vector<std::pair<QByteArray, std::string>>{
             {"notes on a film", "line 1"},
             {"notes on a film\n", "line 1"},
             {"\n", "line 1"},
             {"[]\n", "it is a list"},
             {"{}\n", "it has no text \"version\""},
             {QByteArray(1000, '\0'), "line 1"},
             {line + "\n", "line 2"},
             {line + "{\"vers\xFFion\"", "line 2"},
             {line + elsewhere, "its status is neither"},
             {line + bytes, "\"pathBytes\" are not those of \"path\""},
             {line + "{\"version\":\"1\",\"path\":\"a\",\"status\":\"done\",\"report\":7}\n",
              "expected an object"},
             {line + QByteArray(1000, '[') + '\n', "nested deeper"}}) {
        m_folder.write("out.jsonl", other);
        const auto refused = run({"--resume", m_out, sound("a.wav")});
        EXPECT_EQ(refused.status, 2);
        EXPECT_THAT(refused.err.toStdString(), HasSubstr(reason));
        EXPECT_THAT(refused.err.toStdString(), HasSubstr("nothing was written; name another file"));
        EXPECT_EQ(contents(m_out), other);
    }
    EXPECT_THAT(run({"--resume", m_folder.path(), "/nowhere"}).err.toStdString(),
                HasSubstr("Is a directory"));
    EXPECT_THAT(run({"--resume", "/dev/null", "/nowhere"}).err.toStdString(),
                HasSubstr("is no file"));
    EXPECT_THAT(run({"--resume", m_out, m_out}).err.toStdString(),
                HasSubstr("is a file to be read"));
    fs::remove(m_out);
    EXPECT_EQ(run({"--resume", m_out, "--profiles-dir", "/nowhere", "/nowhere"}).status, 2);
    EXPECT_FALSE(fs::exists(m_out));
}

TEST_F(Lines, OfAnEarlierCallAreReplacedOnlyWhenTold)
{
    m_folder.write("out.jsonl", "somebody's\n");
    const Words call{"-o", m_out, sound("a.wav")};
    EXPECT_THAT(
        run(call).err.toStdString(),
        HasSubstr("out.jsonl is there already; --resume goes on with it, --overwrite begins "
                  "it anew\n"));
    EXPECT_EQ(contents(m_out), "somebody's\n");
    EXPECT_EQ(run(call + Words{"--overwrite"}).status, 1);
    EXPECT_THAT(names(), ElementsAre("a.wav"));
    const auto written = run({"-o", "/dev/stdout", sound("a.wav")});
    EXPECT_EQ(written.out, contents(m_out));
}

TEST_F(Lines, OnAFullDiskEndInWordsAndGoOnLater)
{
    const Words call{"--resume", m_out, sound("a.wav"), sound("b.wav")};
    const QByteArray line = run({sound("a.wav")}).out;
    const auto full = run(call, {.maxFileBytes = static_cast<std::uint64_t>(line.size()) * 3 / 2});
    EXPECT_EQ(full.status, 2);
    EXPECT_THAT(full.err.toStdString(), HasSubstr("out.jsonl: File too large\n"));
    EXPECT_EQ(contents(m_out).count('\n'), 1) << "and a torn one";
    EXPECT_EQ(run(call).status, 1);
    EXPECT_THAT(names(), ElementsAre("a.wav", "b.wav"));
}

} // namespace
} // namespace vantroque

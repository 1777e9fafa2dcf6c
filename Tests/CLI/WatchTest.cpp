#include "Base/FileDescriptor.h"
#include "Base/Json.h"
#include "CLI/Cli.h"
#include "CLI/KilledAtCall.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Tools/ProcessTable.h"

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>

// Films that arrive in a folder, and go by their verdict.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class ArrivingFilms : public testing::Test {
protected:
    ArrivingFilms()
    {
        for (const char* name : {"in", "done", "failed", "elsewhere"})
            fs::create_directory(m_folder / name);
    }
    Words command(const Words& more = {}) const
    {
        return Cli::command(Words{"watch", m_in, "--done", m_done, "--failed", m_failed, "--settle",
                                  "0", "--profile", "mp4-only"}
                            + m_profiles.words() + more);
    }
    ProgramRun once(const Words& more = {}, const ProgramOptions& options = {}) const
    {
        return runProgram(command(Words{"--once"} + more), options);
    }
    /// Lets a film arrive whole.
    void deliver(const std::string& name, const fs::path& film) const
    {
        const fs::path other = m_folder.write("elsewhere/" + name, contents(film));
        fs::rename(other, m_in / name);
    }
    static Words names(const fs::path& folder)
    {
        Words names;
        for (const auto& entry : fs::directory_iterator(folder))
            names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    }
    static QJsonObject report(const fs::path& path)
    {
        return Json::parse(contents(path)).value().toObject();
    }

    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
    const fs::path m_in = m_folder / "in";
    const fs::path m_done = m_folder / "done";
    const fs::path m_failed = m_folder / "failed";
};

TEST_F(ArrivingFilms, GoByTheirVerdictWithTheReportThatCheckGives)
{
    deliver("good.mp4", Clips::plain());
    deliver("bad.mxf", Clips::mpeg2InMxf());
    m_folder.write("in/torn.mov", "no film");
    const auto run = once();
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out.toStdString(),
              "fail  " + (m_failed / "bad.mxf").native() + ": Passes 0 of 1 platforms\n" + "pass  "
                  + (m_done / "good.mp4").native() + ": Passes\n" + "error  "
                  + (m_failed / "torn.mov").native() + ": could not be analysed\n");
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(names(m_in), IsEmpty());
    EXPECT_THAT(names(m_done), ElementsAre("good.mp4", "good.mp4.json"));
    EXPECT_THAT(names(m_failed),
                ElementsAre("bad.mxf", "bad.mxf.json", "torn.mov", "torn.mov.json"));
    for (const auto& [folder, name] :
         {std::pair(m_done, "good.mp4"), std::pair(m_failed, "bad.mxf"),
          std::pair(m_failed, "torn.mov")}) {
        QJsonObject written = report(folder / (std::string(name) + ".json"));
        const auto stamp = written.take("watched"_L1).toObject();
        EXPECT_EQ(stamp.value("size"_L1).toInteger(), contents(folder / name).size());
        const auto checked = Cli::run(Words{"check", "--format", "json", "--profile", "mp4-only"}
                                      + m_profiles.words() + Words{folder / name});
        // What a tool says of a torn file names the file.
        const QString moved = QString::fromUtf8(Json::print(written))
                                  .replace(QString::fromStdString(m_in / name),
                                           QString::fromStdString(folder / name));
        EXPECT_EQ(moved.toStdString(), checked.out.toStdString());
    }
}

TEST_F(ArrivingFilms, ReplaceNothingAndTakeTheirReportsAlong)
{
    m_folder.write("done/a 2.mp4.txt", "somebody's");
    for (const char* format : {"json", "text", "junit", "text"}) {
        deliver("a.mp4", Clips::plain());
        const auto run = once({"--format", format});
        EXPECT_EQ(run.status, 0) << run.err.toStdString();
    }
    EXPECT_THAT(names(m_done),
                ElementsAre("a 2.mp4", "a 2.mp4.txt", "a 2.mp4.xml", "a 3.mp4", "a 3.mp4.txt",
                            "a 4.mp4", "a 4.mp4.txt", "a.mp4", "a.mp4.json"));
    EXPECT_EQ(contents(m_done / "a 2.mp4.txt"), "somebody's");
    EXPECT_THAT(contents(m_done / "a 2.mp4.xml").toStdString(), HasSubstr("<testsuite name="));
    EXPECT_EQ(once({"--format", "jsonl"}).status, 2);
}

TEST_F(ArrivingFilms, AreTakenAsTheyComeAndNothingElseIs)
{
    ASSERT_EQ(::mkfifo((m_in / "fifo.mp4").c_str(), 0600), 0);
    fs::create_symlink(Clips::plain(), m_in / "link.mp4");
    deliver("notes.pdf", Clips::wav());
    const Words transfers{".hidden.mp4", "a.mp4.part", "b.mp4.filepart", "c.tmp", "d.crdownload"};
    for (const std::string& name : transfers + Words{"a.mp4", "folder.mp4/inside.mp4"})
        m_folder.write("in/" + name, contents(Clips::plain()));
    Program watch(command());
    for (const char* name : {"first.mp4", "second.MP4"}) {
        deliver(name, Clips::plain());
        EXPECT_TRUE(comesTrue([&] { return fs::exists(m_done / name); })) << name;
    }
    fs::rename(m_in / "a.mp4.part", m_in / "a.mp4");
    EXPECT_TRUE(comesTrue([&] { return fs::exists(m_done / "a.mp4"); }));

    watch.signal(SIGTERM);
    const auto run = watch.wait();
    EXPECT_EQ(run.status, 128 + SIGTERM);
    EXPECT_EQ(run.out.count('\n'), 3);
    EXPECT_THAT(names(m_in), ElementsAre(".hidden.mp4", "b.mp4.filepart", "c.tmp", "d.crdownload",
                                         "fifo.mp4", "folder.mp4", "link.mp4", "notes.pdf"));
    EXPECT_EQ(names(m_done).size(), 6);
    EXPECT_EQ(run.err.toStdString(),
              "vantroque-cli: a.mp4: waits until a.mp4.part beside it is gone\n"
              "vantroque-cli: fifo.mp4: is no file\n"
              "vantroque-cli: link.mp4: is a symbolic link, which is not followed; move the film "
              "itself there\n"
              "vantroque-cli: notes.pdf: is not called like a film (mp4, mov, m4v, mxf, webm, mpg, "
              "mpeg, avi, mkv)\n");
}

TEST_F(ArrivingFilms, AreNotTakenWhileSomebodyWritesThem)
{
    deliver("written.mp4", Clips::plain());
    FileDescriptor writer(::open((m_in / "written.mp4").c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(writer.isOpen());
    EXPECT_EQ(once().status, 0);
    Program watch(command());
    deliver("other.mp4", Clips::plain());
    EXPECT_TRUE(comesTrue([&] { return fs::exists(m_done / "other.mp4"); }));
    EXPECT_THAT(names(m_in), ElementsAre("written.mp4"));
    writer.close();
    EXPECT_TRUE(comesTrue([&] { return fs::exists(m_done / "written.mp4"); }));
    EXPECT_EQ(names(m_done).size(), 4);
}

TEST_F(ArrivingFilms, ThatAreChangedDuringTheirAnalysisAreAnalysedAgain)
{
    const FakeTools tools;
    tools.put("ffprobe", "echo >> '" + QByteArray::fromStdString(m_folder / "started")
                             + "'\nwhile [ ! -e '" + QByteArray::fromStdString(m_folder / "go")
                             + "' ]; do sleep 0.02; done\nexec ffprobe \"$@\"");
    for (const bool isReplaced : {true, false}) {
        fs::remove(m_folder / "go");
        fs::remove(m_folder / "started");
        deliver("a.mp4", Clips::plain());
        Program watch(command());
        ASSERT_TRUE(comesTrue([&] { return fs::exists(m_folder / "started"); }));
        if (isReplaced)
            deliver("a.mp4", Clips::mpeg2InMxf());
        else
            m_folder.write("in/a.mp4", contents(Clips::mpeg2InMxf()));
        m_folder.write("go", "");
        EXPECT_TRUE(comesTrue([&] { return names(m_in).empty(); }));
        watch.signal(SIGTERM);
        EXPECT_THAT(watch.wait().err.toStdString(), HasSubstr("a.mp4: was changed while"));
        EXPECT_THAT(names(m_done), IsEmpty());
    }
    EXPECT_THAT(names(m_failed), ElementsAre("a 2.mp4", "a 2.mp4.json", "a.mp4", "a.mp4.json"));
}

TEST_F(ArrivingFilms, OfAKilledCallAreDoneOnceWhereverItStood)
{
    int onlyMoved = 0;
    int kills = 0;
    for (bool wasKilled = true; wasKilled; kills += wasKilled ? 1 : 0) {
        deliver("a.mp4", Clips::plain());
        const bool hasReport = !names(m_done).empty();
        EXPECT_FALSE(hasReport);
        wasKilled = killedAtCall(command({"--once"}), kills);
        EXPECT_EQ(names(m_in).size() + (fs::exists(m_done / "a.mp4") ? 1 : 0), 1);
        const auto again = once();
        EXPECT_EQ(again.status, 0) << again.err.toStdString();
        onlyMoved += again.out.startsWith("moved  ") ? 1 : 0;
        EXPECT_THAT(names(m_in), IsEmpty()) << kills;
        EXPECT_THAT(names(m_done), ElementsAre("a.mp4", "a.mp4.json")) << kills;
        EXPECT_EQ(contents(m_done / "a.mp4"), contents(Clips::plain()));
        EXPECT_EQ(report(m_done / "a.mp4.json").value("files"_L1).toArray().size(), 1);
        fs::remove(m_done / "a.mp4");
        fs::remove(m_done / "a.mp4.json");
    }
    EXPECT_GE(kills, 8) << "before and after each of the calls that file a film";
    EXPECT_GE(onlyMoved, 2);
}

TEST_F(ArrivingFilms, ThatComeBackAreCheckedAgain)
{
    deliver("a.mp4", Clips::mpeg2InMxf());
    EXPECT_EQ(once().status, 1);
    fs::rename(m_failed / "a.mp4", m_in / "a.mp4");
    EXPECT_THAT(once().out.toStdString(), testing::StartsWith("fail  "));
    EXPECT_THAT(names(m_failed), ElementsAre("a 2.mp4", "a 2.mp4.json", "a.mp4.json"));
}

TEST_F(ArrivingFilms, StayWhenTheTroubleIsNotTheirs)
{
    deliver("a.mp4", Clips::plain());
    const auto stays = [&](const ProgramRun& run, const char* words) {
        EXPECT_EQ(run.status, 2);
        EXPECT_THAT(run.err.toStdString(), HasSubstr(words));
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(names(m_in), ElementsAre("a.mp4"));
        EXPECT_THAT(names(m_done) + names(m_failed), IsEmpty());
    };
    stays(once({}, {.maxFileBytes = 512}), "File too large; the film stays where it is");
    {
        const FakeTools tools;
        tools.put("ffprobe", "kill -TERM $$");
        stays(once(), "a.mp4: was not analysed, and is tried again later");
    }
    for (const fs::path& folder : {m_folder.path(), m_in, m_done, m_failed})
        fs::permissions(folder, fs::perms::all);
    fs::permissions(m_in / "a.mp4", fs::perms::none);
    stays(once({}, {.unprivileged = true}), "a.mp4: Permission denied");
    fs::permissions(m_in / "a.mp4", fs::perms::owner_all);
    EXPECT_EQ(once().status, 0);
    EXPECT_THAT(names(m_done), ElementsAre("a.mp4", "a.mp4.json"));
}

TEST_F(ArrivingFilms, RefusesFoldersThatDoNotFit)
{
    const auto refusal = [&](const Words& more) {
        const auto run = once(more);
        EXPECT_EQ(run.status, 2);
        return run.err.toStdString();
    };
    EXPECT_THAT(refusal({"--done", m_folder / "none"}),
                HasSubstr("No such file or directory; make the folder, or name another"));
    EXPECT_THAT(refusal({"--done", m_folder.write("file", "")}), HasSubstr("is no folder"));
    fs::create_directory_symlink(m_in, m_folder / "again");
    EXPECT_THAT(refusal({"--failed", m_folder / "again"}),
                HasSubstr("is the watched folder itself"));
    EXPECT_THAT(refusal({"--failed", m_done}), HasSubstr("are the same folder"));
    EXPECT_THAT(refusal({"--failed", "/proc"}), HasSubstr("another disk or mount"));
    EXPECT_THAT(refusal({"--settle", "-1"}), HasSubstr("--settle takes seconds"));
    EXPECT_THAT(refusal({"--profile", "none"}), HasSubstr("unknown profile"));
    EXPECT_THAT(refusal({m_done}), HasSubstr("watch takes one folder"));

    Program watch(command());
    deliver("a.mp4", Clips::plain());
    EXPECT_TRUE(comesTrue([&] { return fs::exists(m_done / "a.mp4"); }));
    EXPECT_THAT(refusal({}), HasSubstr("another vantroque-cli watches it"));
    fs::rename(m_in, m_folder / "moved");
    const auto ended = watch.wait();
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.err.toStdString(), HasSubstr("/in: No such file or directory"));
}

} // namespace
} // namespace vantroque

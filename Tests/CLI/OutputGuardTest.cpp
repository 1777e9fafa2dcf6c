#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

#include <sys/stat.h>
#include <thread>

// What -o never replaces, and where else it may lead.

namespace vantroque {
namespace {

using Media::operator+;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// A command that takes -o, called in a folder with the film "film.mp4" in it.
class Guarded : public testing::TestWithParam<Words> {
protected:
    Guarded() { m_folder.write("film.mp4", m_film); }

    ProgramRun run(const Words& more) const
    {
        Words words{"env", "-C", m_folder.path().native()};
        words = words + Cli::command(GetParam());
        if (GetParam().front() != "still")
            words = words + m_profiles.words();
        return runProgram(words + more + Words{"film.mp4"});
    }
    /// Expects that the film stays and the call ends before anything is done.
    void expectRefused(const std::string& target, const Words& more = {}) const
    {
        const auto before = m_folder.names();
        const auto result = run(Words{"-o", target} + more);
        EXPECT_EQ(result.status, 2) << target;
        EXPECT_EQ(result.err.toStdString(),
                  "vantroque-cli: " + target + " is a file to be read, and is not written over\n");
        EXPECT_TRUE(result.out.isEmpty());
        EXPECT_EQ(contents(m_folder / "film.mp4"), m_film);
        EXPECT_EQ(m_folder.names(), before);
    }

    const QByteArray m_film = contents(Clips::plain());
    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
};

INSTANTIATE_TEST_SUITE_P(Commands, Guarded,
                         testing::Values(Words{"check"}, Words{"check", "--format", "json"},
                                         Words{"measure"},
                                         Words{"markers", "--format", "csv", "--skip-signal"},
                                         Words{"still", "--at", "0"}),
                         [](const auto& each) {
                             return each.param.front() + std::to_string(each.index);
                         });

TEST_P(Guarded, NeverReplacesAnInputUnderWhateverName)
{
    fs::create_hard_link(m_folder / "film.mp4", m_folder / "hard.txt");
    fs::create_symlink("film.mp4", m_folder / "soft.txt");
    fs::create_symlink("soft.txt", m_folder / "softer.txt");
    fs::create_directory(m_folder / "sub");
    for (const std::string& name :
         {std::string("film.mp4"), std::string("./film.mp4"), std::string("sub/../film.mp4"),
          (m_folder / "film.mp4").native(), std::string("hard.txt"), std::string("soft.txt"),
          std::string("softer.txt"), std::string("/proc/self/cwd/film.mp4")}) {
        expectRefused(name);
        expectRefused(name, {"--overwrite"});
    }
}

TEST_P(Guarded, NeverReplacesAnInputThroughAnOpenFile)
{
    for (const std::string name : {"/proc/self/fd/7", "/dev/fd/7"}) {
        Words words{"sh", "-c", "cd \"$0\" && exec \"$@\" 7<>film.mp4", m_folder.path().native()};
        words = words + Cli::command(GetParam()) + Words{"-o", name, "film.mp4"};
        const auto result = runProgram(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err.toStdString(), HasSubstr(name + " is a file to be read"));
        EXPECT_EQ(contents(m_folder / "film.mp4"), m_film);
    }
}

TEST_P(Guarded, ReplacesWhatIsCalledLikeMediaOnlyWhenTold)
{
    fs::create_symlink("other.MOV", m_folder / "link.txt");
    for (const char* const name : {"other.MOV", "link.txt", "sound.wav"}) {
        const fs::path file = m_folder / name;
        const fs::path film = name == std::string("link.txt") ? m_folder / "other.MOV" : file;
        m_folder.write(film.filename().native(), "somebody's film");
        const auto refused = run({"-o", file.native()});
        EXPECT_EQ(refused.status, 2);
        EXPECT_EQ(refused.err.toStdString(),
                  "vantroque-cli: " + file.native()
                      + " is called like media and is there already; --overwrite replaces it\n");
        EXPECT_EQ(contents(film), "somebody's film");
        if (GetParam().front() == "still")
            continue; // its format is that of the name
        EXPECT_NE(run({"--overwrite", "-o", file.native()}).status, 2);
        EXPECT_NE(contents(film), "somebody's film");
    }
}

TEST_P(Guarded, TakesNoNameThatSomebodyHas)
{
    if (GetParam().front() == "still")
        m_folder.write("report.png.tmp", "somebody's");
    const std::string name = GetParam().front() == "still" ? "report.png" : "report.txt";
    m_folder.write(name, "an earlier one");
    m_folder.write(name + ".tmp", "somebody's");
    EXPECT_NE(run({"-o", name}).status, 2);
    EXPECT_NE(contents(m_folder / name), "an earlier one");
    EXPECT_EQ(contents(m_folder / (name + ".tmp")), "somebody's");
    EXPECT_THAT(m_folder.names(), ElementsAre("film.mp4", name, name + ".tmp"));
}

// The rest is the same for all commands.

class Target : public testing::Test {
protected:
    Words call(const Words& more) const
    {
        return Cli::command(Words{"check"} + m_profiles.words() + Words{m_clip} + more);
    }
    ProgramRun run(const Words& more) const { return runProgram(call(more)); }
    QByteArray expected() const { return run({}).out; }

    const std::string m_clip = Clips::plain().native();
    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
};

TEST_F(Target, ACaptionFileIsAnInputToo)
{
    const auto captions = m_folder.write("spot.srt", "0:00,1 --> 0:00,9\nHello.\n");
    const auto result = run({"--captions", captions.native(), "-o", captions.native()});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("spot.srt is a file to be read"));
    EXPECT_EQ(contents(captions), "0:00,1 --> 0:00,9\nHello.\n");
}

TEST_F(Target, AnInputThatIsNotThereIsNotMade)
{
    const std::string none = m_folder / "none.mp4";
    EXPECT_THAT(run({none, "-o", m_folder / "./none.mp4"}).err.toStdString(),
                HasSubstr("is a file to be read"));
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(Target, ANewFileMayBeCalledLikeMedia)
{
    EXPECT_EQ(run({"-o", m_folder / "report.mov"}).status, 0);
    EXPECT_EQ(contents(m_folder / "report.mov"), expected());
}

TEST_F(Target, StandardOutputIsNoInputEither)
{
    const auto film = m_folder.write("film.mp4", contents(m_clip));
    Words words{"sh", "-c", "exec \"$@\" >> \"$0\"", film.native()};
    words = words + Cli::command(Words{"check"} + m_profiles.words() + Words{film.native()});
    const auto result = runProgram(words);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("standard output is a file to be read"));
    EXPECT_EQ(contents(film), contents(m_clip));
}

TEST_F(Target, StandardOutputByItsNameGoesWhereItStands)
{
    const auto log = m_folder.write("log.txt", "before\n");
    for (const std::string name : {"/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"}) {
        m_folder.write("log.txt", "before\n");
        Words words{"sh", "-c", "\"$@\" >> \"$0\"; echo after >> \"$0\"", log.native()};
        EXPECT_EQ(runProgram(words + call({"-o", name})).status, 0);
        EXPECT_EQ(contents(log), "before\n" + expected() + "after\n");
    }
    EXPECT_THAT(m_folder.names(), ElementsAre("log.txt"));
}

TEST_F(Target, ADescriptorThatIsNotOpenIsTold)
{
    EXPECT_EQ(run({"-o", "/dev/fd/77"}).err, "vantroque-cli: /dev/fd/77: Bad file descriptor\n");
}

TEST_F(Target, APipeGetsTheWholeReport)
{
    const fs::path pipe = m_folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ProgramRun read;
    std::jthread reader([&] { read = runProgram({"cat", pipe.native()}); });
    EXPECT_EQ(run({"-o", pipe.native()}).status, 0);
    reader.join();
    EXPECT_EQ(read.out, expected());
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(Target, ALinkToNowhereIsFilled)
{
    fs::create_symlink("later.txt", m_folder / "link.txt");
    EXPECT_EQ(run({"-o", m_folder / "link.txt"}).status, 0);
    EXPECT_TRUE(fs::is_symlink(m_folder / "link.txt"));
    EXPECT_EQ(contents(m_folder / "later.txt"), expected());
}

TEST_F(Target, ALoopOfLinksIsTold)
{
    fs::create_symlink("b.txt", m_folder / "a.txt");
    fs::create_symlink("a.txt", m_folder / "b.txt");
    EXPECT_THAT(run({"-o", m_folder / "a.txt"}).err.toStdString(),
                EndsWith("/a.txt: Too many levels of symbolic links\n"));
}

TEST_F(Target, APlaceThatCannotTakeItIsToldBeforeTheWork)
{
    for (const std::string& name : {m_folder.path().native(), (m_folder / "none/a.txt").native()}) {
        const auto result = runProgram(call({"--verbose", "/nowhere.mp4", "-o", name}));
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err.count('\n'), 1) << result.err.toStdString();
    }
}

TEST_F(Target, AStillGoesThroughAPipe)
{
    const auto still = Cli::run({"still", "--at", "0", "-o", "/dev/stdout", m_clip});
    EXPECT_EQ(still.status, 0) << still.err.toStdString();
    EXPECT_TRUE(still.out.startsWith("\x89PNG"));
}

} // namespace
} // namespace vantroque

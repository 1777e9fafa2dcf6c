#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

#include <QJsonArray>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

// Files that cannot be analysed: each is told in its words, and the others of the same call are
// checked all the same.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class BadInput : public testing::Test {
protected:
    BadInput() { fs::permissions(m_folder.path(), fs::perms::all); }

    /// Checks the file between two good ones.
    std::string problemOf(const fs::path& file, const ProgramOptions& options = {}) const
    {
        const std::string good = Clips::wav().native();
        const Words words{"check", "--format", "json", good, file.native(), good};
        const auto run = Cli::run(words + m_profiles.words(), options);
        const auto files = Cli::checked(run);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(files.size(), 3U);
        EXPECT_EQ(files.at(0).status, u"done"_s) << files.at(0).error.value_or(u""_s).toStdString();
        EXPECT_EQ(files.at(1).status, u"failed"_s);
        EXPECT_EQ(files.at(2).status, u"done"_s);
        return files.at(1).error.value_or(u"none"_s).toStdString();
    }

    const TestFolder m_folder;
    const Cli::ProfilesFolder m_profiles;
};

MATCHER_P(SaysTheTool, words, "")
{
    return testing::ExplainMatchResult(
        AllOf(HasSubstr("ffprobe exited with status 1: "), HasSubstr(words)), arg, result_listener);
}

TEST_F(BadInput, AMissingFile)
{
    EXPECT_THAT(problemOf(m_folder / "none.mp4"),
                SaysTheTool("none.mp4: No such file or directory"));
}

TEST_F(BadInput, AFolder)
{
    EXPECT_THAT(problemOf(m_folder.path()), SaysTheTool(": Is a directory"));
}

TEST_F(BadInput, AnEmptyFile)
{
    EXPECT_THAT(problemOf(m_folder.write("empty.mp4", "")),
                SaysTheTool("empty.mp4: Invalid data found when processing input"));
}

TEST_F(BadInput, TenBytesOfNoise)
{
    const QByteArray noise("\x9A\x01\xFF\x00\x13\x77qz\xEE\x02", 10);
    EXPECT_THAT(problemOf(m_folder.write("noise.mov", noise)),
                SaysTheTool("noise.mov: Invalid data found when processing input"));
}

TEST_F(BadInput, ATextThatIsCalledAFilm)
{
    EXPECT_THAT(problemOf(m_folder.write("letter.mp4", "Dear sir or madam,\n")),
                SaysTheTool("letter.mp4: Invalid data found when processing input"));
}

TEST_F(BadInput, AFilmThatLostItsIndex)
{
    const auto whole = contents(Clips::indexBehind());
    EXPECT_THAT(problemOf(m_folder.write("cut.mp4", whole.left(whole.size() / 2))),
                SaysTheTool("moov atom not found"));
}

TEST_F(BadInput, AFileThatMayNotBeRead)
{
    const auto file = m_folder.write("closed.mp4", contents(Clips::plain()));
    fs::permissions(file, fs::perms::none);
    EXPECT_THAT(problemOf(file, {.unprivileged = true}),
                SaysTheTool("closed.mp4: Permission denied"));
}

TEST_F(BadInput, ALoopOfSymbolicLinks)
{
    fs::create_symlink("b.mp4", m_folder / "a.mp4");
    fs::create_symlink("a.mp4", m_folder / "b.mp4");
    EXPECT_THAT(problemOf(m_folder / "a.mp4"),
                SaysTheTool("a.mp4: Too many levels of symbolic links"));
}

TEST_F(BadInput, APipeWithoutAWriterDoesNotHang)
{
    ASSERT_EQ(::mkfifo((m_folder / "pipe.mp4").c_str(), 0666), 0);
    EXPECT_EQ(problemOf(m_folder / "pipe.mp4"),
              "pipe.mp4 is a pipe, socket or device and not a file.");
}

TEST_F(BadInput, ASocket)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = m_folder / "socket.mp4";
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(static_cast<char*>(address.sun_path), path.size());
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const int bound =
        ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    ::close(descriptor);
    ASSERT_EQ(bound, 0);
    EXPECT_EQ(problemOf(path), "socket.mp4 is a pipe, socket or device and not a file.");
}

TEST_F(BadInput, AnEndlessDevice)
{
    EXPECT_EQ(problemOf("/dev/zero"), "zero is a pipe, socket or device and not a file.");
}

TEST_F(BadInput, AnEmptyName)
{
    EXPECT_THAT(problemOf(""), SaysTheTool(""));
}

TEST_F(BadInput, AnAddressIsAFileNameLikeAnyOther)
{
    EXPECT_THAT(problemOf("http://localhost/a.mp4"),
                SaysTheTool("a.mp4: No such file or directory"));
}

TEST_F(BadInput, WithoutToolsEveryFileFailsInTheirWords)
{
    if (fs::exists("/usr/local/bin/ffprobe"))
        GTEST_SKIP() << "ffprobe is where it is always found";
    const ProgramOptions nothing{
        .environment = {{"PATH", m_folder.path().native()}, {"VANTROQUE_FFMPEG_DIR", {}}}};
    const auto run =
        Cli::run({"check", "--format", "json", Clips::wav().native(), "/nowhere.mp4"}, nothing);
    EXPECT_EQ(run.status, 2);
    for (const Cli::File& file : Cli::checked(run))
        EXPECT_EQ(file.error, u"ffprobe not found. Install ffmpeg (brew install ffmpeg) or bundle "
                              "it with the app."_s);
}

TEST_F(BadInput, TheTextNamesTheFileAndWhatIsWrong)
{
    const auto run =
        Cli::run(Words{"check", m_folder / "none.mp4", Clips::wav().native()} + m_profiles.words());
    EXPECT_EQ(run.status, 2);
    const std::string path = m_folder / "none.mp4";
    EXPECT_THAT(run.out.toStdString(),
                StartsWith(path + "    could not be analysed\n  ffprobe exited with status 1: "
                           + path + ": No such file or directory\n"));
    EXPECT_THAT(run.out.toStdString(), HasSubstr("\nsound.wav    "));
}

TEST_F(BadInput, AFilmThatIsCutOffIsStillChecked)
{
    const auto whole = contents(Clips::plain());
    const auto cut = m_folder.write("cut.mp4", whole.left(whole.size() / 2));
    const auto run = Cli::run({"check", "--profile", "samsung-ads", "--format", "json", cut});
    EXPECT_EQ(Cli::checked(run).at(0).status, u"done"_s);
    EXPECT_EQ(run.status, 1); // Too short and too small for that platform.
}

TEST_F(BadInput, AFileThatVanishesDuringTheProbeDoesNoHarm)
{
    const FakeTools tools;
    const auto file = m_folder.write("brief.mp4", contents(Clips::plain()));
    tools.put("ffprobe", "ffprobe \"$@\"\nstatus=$?\nrm -f '"
                             + QByteArray::fromStdString(file.native()) + "'\nexit $status");
    const auto files = Cli::check(m_profiles.words() + Words{file.native()});
    EXPECT_EQ(files.at(0).status, u"done"_s);
    EXPECT_EQ(files.at(0).report->video->frameCount, 25);
    EXPECT_FALSE(fs::exists(file));
}

class OddName : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Names, OddName,
                         testing::Values("a b.wav", "it's \"it\".wav", "two\nlines.wav",
                                         "\xF0\x9F\x8E\xAC.wav", "a:b.wav", "100%d %20.wav",
                                         "-y.wav", "--all", "file:x.wav", "caf\xE9.wav"));

TEST_P(OddName, IsCheckedLikeAnyOther)
{
    const TestFolder folder;
    folder.write(GetParam(), contents(Clips::wav()));
    // From inside the folder, so that the bare name has to be safe.
    const auto run = runProgram({"env", "-C", folder.path().native(), Cli::program().native(),
                                 "check", "--format", "json", "--media", "--profile",
                                 "pinterest-video", "--", GetParam()});
    const auto files = Cli::checked(run);
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].status, u"done"_s) << files[0].error.value_or(u""_s).toStdString();
    EXPECT_EQ(files[0].path, QString::fromUtf8(GetParam()));
    EXPECT_EQ(files[0].report->fileName, QString::fromUtf8(GetParam()));
}

/// The first object that a command prints as JSON, called in a folder with a file of that name.
QJsonObject printedIn(const TestFolder& folder, const Words& words)
{
    const auto run =
        runProgram(Words{"env", "-C", folder.path().native(), Cli::program().native()} + words);
    const QJsonObject object = Cli::json(run);
    return object.contains("files"_L1) ? object["files"_L1].toArray().first().toObject() : object;
}

TEST(FileName, ThatTextWouldNotLeadBackToComesInBytesAsWell)
{
    const TestFolder folder;
    for (const std::string name :
         {"caf\xE9.wav", "\xEF\xBB\xBFmark.wav", "in\xEF\xBB\xBFside.wav"}) {
        folder.write(name, contents(Clips::wav()));
        const auto captions = name.substr(0, name.size() - 4) + ".srt";
        folder.write(captions, "0:01 --> 0:02\nHello\n");
        const auto bytes = [](const QJsonObject& object) {
            return QByteArray::fromBase64(object["pathBytes"_L1].toString().toLatin1())
                .toStdString();
        };
        EXPECT_EQ(bytes(printedIn(folder, {"check", "--format", "json", "--skip-signal", name})),
                  name);
        EXPECT_EQ(bytes(printedIn(folder, {"probe", name})), folder / name);
        EXPECT_EQ(bytes(printedIn(folder, {"captions", "--format", "json", captions})),
                  folder / captions);
        EXPECT_EQ(bytes(printedIn(folder, {"check", "--format", "json", "no" + name})), "no" + name)
            << "a file that fails";
        EXPECT_EQ(bytes(printedIn(folder, {"captions", "--format", "json", "no" + captions})),
                  folder / ("no" + captions));
    }
}

TEST(FileName, ThatIsPlainTextComesAsTextAlone)
{
    const TestFolder folder;
    for (const std::string name :
         {"caf\xC3\xA9.wav", "\xF0\x9F\x8E\xAC.wav", "a b\n.wav", "%FF.wav"}) {
        folder.write(name, contents(Clips::wav()));
        for (const Words& words :
             {Words{"check", "--format", "json", "--skip-signal", name}, Words{"probe", name}})
            EXPECT_FALSE(printedIn(folder, words).contains("pathBytes"_L1)) << name;
    }
}

} // namespace
} // namespace vantroque

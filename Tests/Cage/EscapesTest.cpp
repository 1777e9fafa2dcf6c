#include "Base/ScopedVariable.h"
#include "Cage/Cage.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"
#include "Tools/FFTool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace vantroque {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::Eq;
using testing::Ne;

const fs::path prisoner = VANTROQUE_PRISONER;

/// What a tool tries that somebody else has taken over, in a cage of one version of Landlock. Each
/// goes well outside of it, so that it is the cage that stops it.
class Escapes : public testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        if ((held() & Cage::files) == 0)
            GTEST_SKIP() << "this kernel has no Landlock: " << Cage::words(held());
    }

    static std::uint32_t held()
    {
        const auto ran = FFTool::run("/usr/bin/true", {});
        return ran ? ran->cage : 0;
    }
    /// The status of what the prisoner tried with its own film and folder open to it.
    int status(const std::vector<std::string>& deed, bool caged) const
    {
        const ScopedVariable cage("VANTROQUE_CAGE", caged ? std::to_string(GetParam()) : "off");
        const auto ran = FFTool::run(
            prisoner, deed, {.reads = {m_film}, .writes = {m_scratch}, .allowFailure = true});
        return ran ? ran->status : -1;
    }
    void expectStopped(const std::vector<std::string>& deed) const
    {
        EXPECT_EQ(status(deed, false), 0) << deed[0] << " cannot be done at all";
        EXPECT_THAT(status(deed, true), AnyOf(Eq(EACCES), Eq(EPERM))) << deed[0];
    }
    bool ffmpeg(const std::vector<std::string>& arguments, bool caged) const
    {
        const ScopedVariable cage("VANTROQUE_CAGE", caged ? std::to_string(GetParam()) : "off");
        const auto ran = FFTool::run(*FFTool::find("ffmpeg"),
                                     Media::operator+({"-nostdin", "-v", "error", "-y"}, arguments),
                                     {.reads = {m_film}, .writes = {m_scratch}});
        return ran.has_value();
    }
    void expectStoppedFfmpeg(const std::vector<std::string>& arguments) const
    {
        EXPECT_TRUE(ffmpeg(arguments, false));
        EXPECT_FALSE(ffmpeg(arguments, true));
    }

    const TestFolder m_folder;
    const fs::path m_film = m_folder.write("film.mov", "film");
    const fs::path m_other = m_folder.write("other.txt", "not for it");
    const fs::path m_scratch = m_folder.write("scratch/own.txt", "own").parent_path();
    const ScopedVariable m_abi{"VANTROQUE_CAGE", std::to_string(GetParam())};
};

TEST_P(Escapes, WhatItNeedsStaysOpen)
{
    EXPECT_EQ(status({"read", m_film}, true), 0);
    EXPECT_EQ(status({"write", m_scratch / "new.png"}, true), 0);
    EXPECT_EQ(status({"read", m_scratch / "own.txt"}, true), 0);
    EXPECT_EQ(status({"remove", m_scratch / "own.txt"}, true), 0);
    EXPECT_EQ(status({"write", "/dev/null"}, true), 0);
}

TEST_P(Escapes, OtherFilesAreNotRead)
{
    expectStopped({"read", m_other});
    expectStopped({"read", "/etc/passwd"});
    expectStopped({"read", "/proc/1/cmdline"});
    expectStopped({"list", m_folder.path()});
}

TEST_P(Escapes, NothingIsWrittenBesideItsFolder)
{
    expectStopped({"append", m_film});
    expectStopped({"append", m_other});
    EXPECT_THAT(status({"write", m_folder / "new.txt"}, true), Ne(0));
    EXPECT_FALSE(fs::exists(m_folder / "new.txt"));
    EXPECT_THAT(status({"remove", m_other}, true), Ne(0));
    EXPECT_EQ(contents(m_other), "not for it");
}

TEST_P(Escapes, ALinkInItsFolderLeadsNowhere)
{
    fs::create_symlink(m_other, m_scratch / "link.txt");
    expectStopped({"append", m_scratch / "link.txt"});
    expectStopped({"read", m_scratch / "link.txt"});
    EXPECT_THAT(status({"link", m_scratch / "own-link"}, true), Ne(0));
}

TEST_P(Escapes, ItsFilmIsKnownAsAFileAndNotByItsName)
{
    fs::create_hard_link(m_film, m_folder / "same.mov");
    EXPECT_EQ(status({"read", m_folder / "same.mov"}, true), 0) << "the same file";
    fs::copy_file(m_film, m_folder / "equal.mov");
    expectStopped({"read", m_folder / "equal.mov"});
}

TEST_P(Escapes, NoProgramOfItsOwnIsRun)
{
    fs::copy_file("/usr/bin/true", m_scratch / "own-program");
    expectStopped({"run", m_scratch / "own-program"});
}

TEST_P(Escapes, ModesTimesAndAttributesOfItsFilmStay)
{
    expectStopped({"mode", m_film});
    expectStopped({"times", m_film});
    EXPECT_THAT(status({"attribute", m_film}, true), AnyOf(Eq(EACCES), Eq(EPERM)));
}

TEST_P(Escapes, ItsFilmIsNotCutShortByItsName)
{
    EXPECT_THAT(status({"cut", m_film}, true), AnyOf(Eq(EACCES), Eq(EPERM)));
    EXPECT_EQ(contents(m_film), "film");
    EXPECT_EQ(status({"cut", m_film}, false), 0);
}

TEST_P(Escapes, NoSocketIsMade)
{
    expectStopped({"socket"});
}

TEST_P(Escapes, NobodyIsSpokenToThroughAPath)
{
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    const std::string path = m_folder / "bus";
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(listener, 4), 0);
    expectStopped({"speak", path});
    ::close(listener);
}

TEST_P(Escapes, OtherProcessesAreLeftAlone)
{
    expectStopped({"trace"});
    if (GetParam() >= 6)
        expectStopped({"signal", std::to_string(::getpid())});
}

TEST_P(Escapes, NoNamespaceIsMade)
{
    if (status({"namespace"}, false) != 0)
        GTEST_SKIP() << "this system lets nobody make one";
    expectStopped({"namespace"});
}

#if defined(__x86_64__)
TEST_P(Escapes, TheTableOfCallsForOtherProgramsIsDeadly)
{
    if (status({"table"}, false) != 0)
        GTEST_SKIP() << "this kernel has no calls for 32 bits";
    EXPECT_EQ(status({"table"}, true), 128 + SIGSYS);
}
#endif

TEST_P(Escapes, APlaylistReadsNoOtherFile)
{
    const fs::path clip = Media::make({"caged.mkv", {"-f", "lavfi", "-i", "color=s=64x64:d=0.2"}});
    const fs::path list = m_scratch / "list.txt";
    m_folder.write("scratch/list.txt", QByteArray("file '") + clip.c_str() + "'\n");
    expectStoppedFfmpeg({"-f", "concat", "-safe", "0", "-i", list, "-f", "null", "-"});
    expectStoppedFfmpeg({"-f", "lavfi", "-i", "movie=" + clip.native(), "-f", "null", "-"});
}

TEST_P(Escapes, OutputsGoNowhereElse)
{
    const std::vector<std::string> picture{"-f", "lavfi", "-i", "color=s=64x64:d=0.04"};
    EXPECT_TRUE(ffmpeg(Media::operator+(picture, {m_scratch / "own.png"}), true));
    EXPECT_FALSE(ffmpeg(Media::operator+(picture, {m_folder / "elsewhere.png"}), true));
    EXPECT_FALSE(fs::exists(m_folder / "elsewhere.png"));
    EXPECT_FALSE(ffmpeg(Media::operator+(picture, {"-f", "rawvideo", m_film}), true));
    EXPECT_EQ(contents(m_film), "film");
    expectStoppedFfmpeg(Media::operator+(picture, {"-f", "mpegts", "udp://127.0.0.1:9"}));
}

INSTANTIATE_TEST_SUITE_P(Landlock, Escapes, testing::Values(1, 3, 7), [](const auto& version) {
    return "Version" + std::to_string(version.param);
});

} // namespace
} // namespace vantroque

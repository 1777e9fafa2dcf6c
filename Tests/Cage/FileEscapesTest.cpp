#include "Cage/Escapes.h"

#include "Base/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <future>
#include <sys/stat.h>

namespace vantroque {
namespace {

namespace fs = std::filesystem;

using FileEscapes = Escapes;

TEST_F(FileEscapes, WhatItNeedsStaysOpen)
{
    expectLeftOpen({"read", m_film});
    expectLeftOpen({"write", m_scratch / "new.png"});
    expectLeftOpen({"read", m_scratch / "own.txt"});
    expectLeftOpen({"remove", m_scratch / "own.txt"});
    expectLeftOpen({"write", "/dev/null"});
}

TEST_F(FileEscapes, OtherFilesAreNotRead)
{
    expectStopped({"read", m_other});
    expectStopped({"read", "/etc/passwd"});
    expectStopped({"read", "/proc/1/cmdline"});
    expectStopped({"list", m_folder.path()});
}

TEST_F(FileEscapes, NothingIsWrittenBesideItsFolder)
{
    expectStopped({"append", m_film});
    expectStopped({"append", m_other});
    expectStopped({"remove", m_other});
    expectStopped({"cut", m_film});
    expectStopped({"write", m_folder / "new.txt"});
    expectUnwritten({"-f", "rawvideo", m_film});
    expectUnwritten({"-f", "rawvideo", m_folder / "new.txt"});
}

TEST_F(FileEscapes, NoLinkLeadsOutOfItsFolder)
{
    expectStopped({"read", m_scratch / "link.txt"});
    expectStopped({"append", m_scratch / "link.txt"});
    expectUnwritten({"-f", "rawvideo", m_scratch / "link.txt"});
    expectStopped({"link", m_other, m_scratch / "new.txt"});
    expectStopped({"name", m_other, m_scratch / "new.txt"});
    expectStopped({"move", m_other, m_scratch / "new.txt"});
}

TEST_F(FileEscapes, ItsFilmIsKnownAsAFileAndNotByItsName)
{
    fs::create_hard_link(m_film, m_folder / "same.mov");
    expectLeftOpen({"read", m_folder / "same.mov"});
    fs::copy_file(m_film, m_folder / "equal.mov");
    expectStopped({"read", m_folder / "equal.mov"});
}

/// The status of a prisoner under whom the film is replaced once its cage is closed.
int replacing(const fs::path& film, const fs::path& gate, const std::function<int()>& prisoner)
{
    fs::copy_file(film, film.native() + ".new", fs::copy_options::overwrite_existing);
    ::mkfifo(gate.c_str(), 0600);
    auto status = std::async(std::launch::async, prisoner);
    {
        const FileDescriptor met(::open(gate.c_str(), O_WRONLY | O_CLOEXEC));
        fs::rename(film.native() + ".new", film);
    }
    return status.get();
}

TEST_F(FileEscapes, AFilmThatIsReplacedIsAnotherFile)
{
    const fs::path gate = m_scratch / "gate";
    const auto ran = [&](const char* cage) {
        lay();
        return replacing(m_film, gate, [&] { return status({"read-after", m_film, gate}, cage); });
    };
    EXPECT_EQ(ran(open), 0);
    for (const char* version : versions)
        EXPECT_EQ(ran(version), EACCES) << version;
}

TEST_F(FileEscapes, ModesTimesAndAttributesOfItsFilmStay)
{
    expectStopped({"mode", m_film});
    expectStopped({"times", m_film});
    if (status({"attribute", m_film}, open) == ENOTSUP)
        GTEST_SKIP() << "this file system has no attributes";
    expectStopped({"attribute", m_film});
}

} // namespace
} // namespace vantroque

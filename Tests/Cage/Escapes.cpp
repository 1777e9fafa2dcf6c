#include "Cage/Escapes.h"

#include "Base/ScopedVariable.h"
#include "Cage/Cage.h"
#include "Tools/FFTool.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace vantroque {

using testing::AnyOf;
using testing::Eq;
namespace fs = std::filesystem;

namespace {

const QByteArray otherBytes = "not for it";

} // namespace

void Escapes::SetUp()
{
    const auto ran = FFTool::run("/usr/bin/true", {});
    m_held = ran ? ran->cage : 0;
    if ((m_held & Cage::files) == 0)
        GTEST_SKIP() << "this kernel has no Landlock: " << Cage::words(m_held);
    lay();
}

void Escapes::lay() const
{
    fs::remove_all(m_scratch);
    fs::remove(m_folder / "new.txt");
    m_folder.write("film.mov", m_bytes);
    m_folder.write("other.txt", otherBytes);
    m_folder.write("scratch/own.txt", "own");
    fs::create_symlink(m_other, m_scratch / "link.txt");
}

int Escapes::status(const Words& deed, const std::string& cage) const
{
    const ScopedVariable setting("VANTROQUE_CAGE", cage);
    const auto ran = FFTool::run(VANTROQUE_PRISONER, deed,
                                 {.reads = {m_film}, .writes = {m_scratch}, .allowFailure = true});
    return ran ? ran->status : -1;
}

void Escapes::expectStopped(const Words& deed) const
{
    SCOPED_TRACE(testing::PrintToString(deed));
    EXPECT_EQ(status(deed, open), 0) << "cannot be done at all";
    for (const char* version : versions) {
        lay();
        const auto names = m_folder.names();
        SCOPED_TRACE(version);
        // Names are not moved from one folder to another before version 2, by that error.
        EXPECT_THAT(status(deed, version), AnyOf(Eq(EACCES), Eq(EPERM), Eq(EXDEV)));
        expectUntouched(names);
    }
    lay();
}

void Escapes::expectLeftOpen(const Words& deed) const
{
    for (const char* version : versions) {
        lay();
        EXPECT_EQ(status(deed, version), 0) << testing::PrintToString(deed) << ' ' << version;
    }
}

Escapes::Ran Escapes::ffmpeg(const Words& arguments, const std::string& cage) const
{
    const ScopedVariable setting("VANTROQUE_CAGE", cage);
    const auto ran = FFTool::run(*FFTool::find("ffmpeg"),
                                 Media::operator+({"-nostdin", "-v", "error", "-y"}, arguments),
                                 {.reads = {m_film}, .writes = {m_scratch}, .allowFailure = true});
    return ran ? Ran{ran->status, ran->output} : Ran();
}

void Escapes::expectUnread(const Words& input) const
{
    SCOPED_TRACE(testing::PrintToString(input));
    const Words call = Media::operator+(input, {"-frames:v", "1", "-f", "rawvideo", "-"});
    EXPECT_FALSE(ffmpeg(call, open).output.isEmpty()) << "cannot be read at all";
    for (const char* version : versions)
        EXPECT_TRUE(ffmpeg(call, version).output.isEmpty()) << version;
}

void Escapes::expectUnwritten(const Words& output) const
{
    SCOPED_TRACE(testing::PrintToString(output));
    const Words call = Media::operator+({"-f", "lavfi", "-i", "color=s=64x64:d=0.04"}, output);
    lay();
    EXPECT_EQ(ffmpeg(call, open).status, 0) << "cannot be written at all";
    for (const char* version : versions) {
        lay();
        const auto names = m_folder.names();
        SCOPED_TRACE(version);
        EXPECT_NE(ffmpeg(call, version).status, 0);
        expectUntouched(names);
    }
    lay();
}

void Escapes::expectUntouched(const std::vector<std::string>& names) const
{
    EXPECT_EQ(contents(m_film), m_bytes);
    EXPECT_EQ(contents(m_other), otherBytes);
    EXPECT_EQ(m_folder.names(), names);
}

} // namespace vantroque

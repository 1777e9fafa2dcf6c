#include "Base/FileDescriptor.h"
#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

#include <array>
#include <sys/inotify.h>

// Files that are made to lead the tools elsewhere, to fill the memory or to keep them busy for
// ever. ffprobe alone follows each of the lists here.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr const char* refusal = "This is a playlist, not a media file. Add the media it names.";

/// Whether anybody opens a file.
class OpenWatch {
public:
    explicit OpenWatch(const fs::path& file) : m_events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        EXPECT_GE(::inotify_add_watch(m_events.get(), file.c_str(), IN_OPEN), 0);
    }
    bool wasOpened() const
    {
        std::array<char, 4096> events{};
        return ::read(m_events.get(), events.data(), events.size()) > 0;
    }

private:
    FileDescriptor m_events;
};

class HostileFile : public testing::Test {
protected:
    /// What `check` says of it.
    std::string problemOf(const fs::path& file) const
    {
        const auto files = Cli::check(m_profiles.words() + Words{file.native()});
        EXPECT_EQ(files.at(0).status, u"failed"_s);
        return files.at(0).error.value_or(u""_s).toStdString();
    }
    /// A list under a media name that names this file.
    fs::path listOf(const fs::path& other) const
    {
        return m_folder.write("list.mov", "#EXTM3U\n#EXT-X-TARGETDURATION:2\n#EXTINF:2,\nfile://"
                                              + QByteArray::fromStdString(other.native())
                                              + "\n#EXT-X-ENDLIST\n");
    }

    const TestFolder m_folder;
    const Cli::ProfilesFolder m_profiles;
};

TEST_F(HostileFile, AListThatNamesAnotherFileIsRefusedAndThatFileNeverOpened)
{
    const fs::path other = m_folder.write("other.ts", contents(Clips::transportStream()));
    const fs::path list = listOf(other);
    const OpenWatch watch(other);
    EXPECT_EQ(problemOf(list), refusal);
    for (const Words& call :
         {Words{"probe", list}, Words{"still", "--at", "0", "-o", m_folder / "still.png", list},
          Words{"captions", list}, Words{"captions", "--media", list, list},
          Words{"markers", "--format", "csv", list}, Words{"measure", list}}) {
        const auto run = Cli::run(call);
        EXPECT_EQ(run.status, 2) << call[0];
        EXPECT_THAT(run.err.toStdString(), HasSubstr(refusal)) << call[0];
    }
    EXPECT_FALSE(watch.wasOpened());
    EXPECT_THAT(m_folder.names(), ElementsAre("list.mov", "other.ts"));
    // ffprobe itself follows it, so there was something to refuse.
    const auto probed = runProgram(
        {"ffprobe", "-v", "error", "-show_entries", "format=format_name", list.native()});
    EXPECT_THAT(probed.out.toStdString(), HasSubstr("hls"));
    EXPECT_TRUE(watch.wasOpened());
}

TEST_F(HostileFile, NoToolIsStartedOnAList)
{
    const FakeTools tools;
    tools.record("ffprobe");
    tools.record("ffmpeg");
    EXPECT_EQ(problemOf(listOf(Clips::transportStream())), refusal);
    EXPECT_THAT(tools.calls("ffprobe"), IsEmpty());
    EXPECT_THAT(tools.calls("ffmpeg"), IsEmpty());
}

TEST_F(HostileFile, ASmallListThatNamesItselfIsRefusedAtOnce)
{
    // Followed, these 48 bytes take gigabytes of memory.
    const QByteArray loop = "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=1\nloop2.mov\n";
    EXPECT_EQ(loop.size(), 48);
    EXPECT_EQ(problemOf(m_folder.write("loop2.mov", loop)), refusal);
}

TEST_F(HostileFile, AListWithoutAnEndIsRefusedAtOnce)
{
    const QByteArray live = "#EXTM3U\n#EXT-X-TARGETDURATION:600\n#EXT-X-MEDIA-SEQUENCE:0\n"
                            "#EXTINF:600,\nnone.ts\n";
    EXPECT_EQ(problemOf(m_folder.write("live.mp4", live)), refusal);
}

TEST_F(HostileFile, ManifestsAndListsOfOtherKindsAreRefused)
{
    const std::string other = Clips::transportStream().native();
    for (const std::string& text :
         {"ffconcat version 1.0\nfile '" + other + "'\n",
          std::string("<?xml version=\"1.0\"?><MPD type=\"static\" "
                      "profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\"><Period/></MPD>"),
          std::string("v=0\no=- 0 0 IN IP4 127.0.0.1\ns=a\nc=IN IP4 127.0.0.1\nt=0 0\n"
                      "m=video 5004 RTP/AVP 96\n")})
        EXPECT_EQ(problemOf(m_folder.write("film.mov", QByteArray::fromStdString(text))), refusal)
            << text;
}

TEST_F(HostileFile, TheOtherFilesOfTheCallAreStillChecked)
{
    const auto files = Cli::check(m_profiles.words()
                                  + Words{listOf(Clips::plain()).native(), Clips::wav().native()});
    EXPECT_EQ(files.at(0).status, u"failed"_s);
    EXPECT_EQ(files.at(1).status, u"done"_s);
}

TEST_F(HostileFile, WhatHoldsNeitherPictureNorSoundIsRefused)
{
    const fs::path captions = m_folder.write("a.srt", "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
    const fs::path film = m_folder / "captions.mkv";
    Media::ffmpeg({"-i", captions.native(), film.native()});
    EXPECT_EQ(problemOf(film), "There is no picture and no sound in it.");
    EXPECT_EQ(Cli::run({"captions", film.native()}).status, 0) << "captions need neither";
}

TEST_F(HostileFile, ACoverAloneIsNoPicture)
{
    const fs::path cover = m_folder / "cover.png";
    Media::ffmpeg({"-f", "lavfi", "-i", "color=red:s=64x64", "-frames:v", "1", cover.native()});
    const fs::path film = m_folder / "cover.mp4";
    Media::ffmpeg(
        {"-i", cover.native(), "-c", "copy", "-disposition:v", "attached_pic", film.native()});
    EXPECT_EQ(problemOf(film), "There is no picture and no sound in it.");
}

TEST_F(HostileFile, AFilmOfSoundOrOfPictureAloneIsChecked)
{
    for (const fs::path& film : {Clips::wav(), Clips::transportStream()})
        EXPECT_EQ(Cli::check(m_profiles.words() + Words{film.native()}).at(0).status, u"done"_s);
}

TEST_F(HostileFile, WhereFilesMayNotGrowTheOutputIsToldToBeTooLarge)
{
    const fs::path report = m_folder / "report.json";
    const auto run = runProgram(Words{"sh", "-c", "ulimit -f 1; exec \"$0\" \"$@\"",
                                      Cli::program().native(), "check", "--format", "json",
                                      "--media", "-o", report.native(), Clips::plain().native()}
                                + m_profiles.words());
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err.toStdString(), HasSubstr("File too large"));
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(HostileFile, TheTextKeepsTheLinesOfAnError)
{
    const fs::path empty = m_folder.write("empty.mkv", "");
    const auto run = Cli::run(Words{"check", empty.native()} + m_profiles.words());
    EXPECT_THAT(run.out.toStdString(),
                StartsWith(empty.native()
                           + "    could not be analysed\n  The file is empty.\n  ffprobe exited "
                             "with status 1: "));
}

TEST_F(HostileFile, AnEmptyFileIsCalledEmpty)
{
    EXPECT_THAT(problemOf(m_folder.write("empty.mp4", "")), StartsWith("The file is empty.\n"));
}

} // namespace
} // namespace vantroque

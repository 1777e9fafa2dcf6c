#include "Base/Timecode.h"
#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Tools/ProcessTable.h"

#include <algorithm>
#include <csignal>
#include <cstdint>

// One frame as a picture.

namespace vantroque {
namespace {

using Media::operator+;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// 64x64 pictures whose luma is 16 + 5 * their number.
fs::path numbered(const std::string& rate)
{
    return Media::make(
        {"numbered.mkv",
         {"-f", "lavfi", "-i", "nullsrc=s=64x64:r=" + rate + ",geq=lum='16+5*N':cb=128:cr=128",
          "-frames:v", "40", "-pix_fmt", "yuv420p", "-c:v", "ffv1"}});
}

/// The luma of an image above black; less than 0 without one.
int lumaIn(const fs::path& image)
{
    const QByteArray luma = runProgram({"ffmpeg", "-v", "error", "-i", image.native(), "-f",
                                        "rawvideo", "-pix_fmt", "yuv444p", "-"})
                                .out;
    return luma.isEmpty() ? -100 : static_cast<std::uint8_t>(luma[0]) - 16;
}

/// The number that the luma of an image tells, by steps of five and of two.
int numberIn(const fs::path& image)
{
    return (lumaIn(image) + 2) / 5;
}

int countIn(const fs::path& image)
{
    return (lumaIn(image) + 1) / 2;
}

class Still : public testing::Test {
protected:
    Still()
    {
        // Also for runs of the program as another user.
        fs::permissions(m_folder.path(), fs::perms::others_read | fs::perms::others_exec,
                        fs::perm_options::add);
        fs::copy_file(numbered("25"), clip());
    }
    ~Still() override { EXPECT_THAT(m_scratch.names(), IsEmpty()) << "scratch left"; }

    fs::path clip() const { return m_folder / "spot.v2.mkv"; }
    static ProgramRun run(const Words& words, const ProgramOptions& options = {})
    {
        return Cli::run(Words{"still"} + words, options);
    }
    /// What a failing call says; it must leave nothing.
    std::string problemOf(const Words& words) const
    {
        const auto result = run(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.out.isEmpty());
        EXPECT_THAT(m_folder.names(), ElementsAre("spot.v2.mkv"));
        return result.err.toStdString();
    }
    /// The number of the frame that a time gives.
    int frameAt(const std::string& time, const fs::path& file) const
    {
        const TestFolder folder;
        EXPECT_EQ(run({"--at", time, "-o", folder / "still.png", file.native()}).status, 0);
        return numberIn(folder / "still.png");
    }

    const TestFolder m_folder;
    const TestFolder m_scratch;

private:
    const ScopedVariable m_temporary{"TMPDIR", m_scratch.path()};
};

TEST_F(Still, StandsBesideTheFileUnderItsTimecode)
{
    const auto result = run({"--at", "00:00:01:05", clip().native()});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.isEmpty());
    EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
    EXPECT_THAT(m_folder.names(), ElementsAre("spot.v2 00-00-01-05.png", "spot.v2.mkv"));
    EXPECT_EQ(numberIn(m_folder / "spot.v2 00-00-01-05.png"), 30);
}

TEST_F(Still, GoesWhereItIsSent)
{
    m_folder.write("out.jpg", "an earlier one");
    const auto result = run({"-o", m_folder / "out.jpg", "--at", "0.2", clip().native()});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(m_folder.names(), ElementsAre("out.jpg", "spot.v2.mkv"));
    EXPECT_TRUE(contents(m_folder / "out.jpg").startsWith("\xFF\xD8\xFF"));
    EXPECT_EQ(numberIn(m_folder / "out.jpg"), 5);
}

TEST_F(Still, IsTheFrameOfTheTime)
{
    for (const auto& [time, frame] : std::map<std::string, int>{{"0", 0},
                                                                {"0.04", 1},
                                                                {"1.21", 30},
                                                                {"00:00:01", 25},
                                                                {"00:00:01:14", 39},
                                                                {"00;00;00;13", 13}})
        EXPECT_EQ(frameAt(time, clip()), frame) << time;
}

TEST_F(Still, CountsThirtyFramesASecondAt2997)
{
    const fs::path ntsc = numbered("30000/1001");
    EXPECT_EQ(frameAt("00:00:01:00", ntsc), 30);
    EXPECT_EQ(frameAt("00:00:01:09", ntsc), 39);
    EXPECT_EQ(frameAt("1", ntsc), 30);
    EXPECT_EQ(frameAt("0.5", ntsc), 15);
}

// A frame number is one frame, wherever picture, sound and time code of the file begin.

/// Pictures of 64x64 whose luma is 16 + 2 * their number, and sound beside them; the picture begins
/// so many seconds after the sound.
Words counted(const std::string& start, const Words& more)
{
    return Words{"-itsoffset",
                 start,
                 "-f",
                 "lavfi",
                 "-i",
                 "nullsrc=s=64x64:r=25,geq=lum='16+2*N':cb=128:cr=128,trim=end_frame=100",
                 "-f",
                 "lavfi",
                 "-i",
                 "sine=r=48000:d=4",
                 "-fps_mode",
                 "passthrough",
                 "-pix_fmt",
                 "yuv420p"}
           + more;
}

const Words longGroups{"-c:v", "libx264", "-preset", "veryfast", "-qp",
                       "0",    "-g",      "50",      "-c:a",     "aac"};

struct CountedFile {
    std::string name;
    std::string start;
    Words more;
};

void PrintTo(const CountedFile& file, std::ostream* out)
{
    *out << file.name;
}

class CountedStill : public Still, public testing::WithParamInterface<CountedFile> {};

INSTANTIATE_TEST_SUITE_P(
    Files, CountedStill,
    testing::Values(CountedFile{"late-edit-list.mp4", "0.48", longGroups},
                    CountedFile{"late.ts", "0.48", longGroups},
                    CountedFile{"programme.mpg",
                                "0",
                                {"-c:v", "mpeg2video", "-q:v", "1", "-g", "25", "-c:a", "mp2"}},
                    CountedFile{"late.mkv", "0.48", longGroups},
                    CountedFile{"timecode.mov", "0",
                                longGroups + Words{"-timecode", "01:00:00:00"}}),
    [](const auto& test) {
        std::string name = test.param.name;
        std::ranges::replace_if(
            name, [](char c) { return c == '.' || c == '-'; }, '_');
        return name;
    });

TEST_P(CountedStill, ShowsTheFrameOfItsNumber)
{
    const fs::path file =
        Media::make({GetParam().name, counted(GetParam().start, GetParam().more)});
    for (const int frame : {0, 1, 24, 49, 50, 51, 76, 99}) {
        const TestFolder folder;
        const std::string time = Timecode(frame, 25).text().toStdString();
        ASSERT_EQ(run({"--at", time, "-o", folder / "still.png", file.native()}).status, 0);
        EXPECT_EQ(countIn(folder / "still.png"), frame);
    }
}

TEST_F(Still, CountsFromTheFirstFrameThatAnEditListShows)
{
    const fs::path whole = Media::make({"whole.mp4", counted("0", longGroups)});
    const fs::path cut =
        Media::make({"cut.mp4", {"-ss", "0.4", "-i", whole.native(), "-c", "copy"}});
    for (const int frame : {0, 1, 45, 60}) {
        const TestFolder folder;
        const std::string time = Timecode(frame, 25).text().toStdString();
        ASSERT_EQ(run({"--at", time, "-o", folder / "still.png", cut.native()}).status, 0);
        EXPECT_EQ(countIn(folder / "still.png"), frame + 10);
    }
}

TEST_F(Still, TakesOneFileAndATime)
{
    const std::string problem = "vantroque-cli: still takes one file and --at TIME\n";
    EXPECT_EQ(problemOf({}), problem);
    EXPECT_EQ(problemOf({clip().native()}), problem);
    EXPECT_EQ(problemOf({"--at", "1"}), problem);
    EXPECT_EQ(problemOf({"--at", "1", clip().native(), clip().native()}), problem);
}

TEST_F(Still, ATimeThatIsNoneIsTold)
{
    for (const std::string time : {"-1", "1:2", "soon", "00:00:00:25", "nan", "inf", ""})
        EXPECT_EQ(problemOf({"--at", time, clip().native()}),
                  "vantroque-cli: \"" + time + "\" is no time: seconds, hh:mm:ss or hh:mm:ss:ff\n");
}

TEST_F(Still, BehindTheEndThereIsNone)
{
    EXPECT_THAT(problemOf({"--at", "60", clip().native()}),
                EndsWith("there is no frame at that time\n"));
}

TEST_F(Still, OfSoundThereIsNone)
{
    EXPECT_EQ(problemOf({"--at", "0", Clips::wav().native()}),
              "vantroque-cli: sound.wav: there is no picture in it\n");
}

TEST_F(Still, OfAMissingFileIsToldInTheProbesWords)
{
    EXPECT_THAT(problemOf({"--at", "0", "/nowhere.mkv"}),
                StartsWith("vantroque-cli: ffprobe exited with status 1: /nowhere.mkv: "));
}

TEST_F(Still, AFormatThatIsNoneIsTold)
{
    EXPECT_THAT(problemOf({"--at", "0", "-o", m_folder / "still", clip().native()}),
                StartsWith("vantroque-cli: ffmpeg exited with status 1: "));
    EXPECT_THAT(problemOf({"--at", "0", "-o", m_folder / "still.%d", clip().native()}),
                StartsWith("vantroque-cli: ffmpeg exited with status 1: "));
}

TEST_F(Still, AFolderThatIsNotThereIsTold)
{
    EXPECT_THAT(problemOf({"--at", "0", "-o", m_folder / "none/a.png", clip().native()}),
                EndsWith(": No such file or directory\n"));
}

TEST_F(Still, AFolderThatMayNotBeWrittenIsTold)
{
    fs::permissions(m_folder.path(),
                    fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
    fs::permissions(m_scratch.path(), fs::perms::all);
    const auto result = run({"--at", "0", clip().native()}, {.unprivileged = true});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), EndsWith("spot.v2 00-00-00-00.png: Permission denied\n"));
    EXPECT_THAT(m_folder.names(), ElementsAre("spot.v2.mkv"));
}

TEST_F(Still, ThatFailsLeavesAnEarlierOne)
{
    const TestFolder folder;
    folder.write("still.png", "an earlier one");
    const auto result = run({"--at", "60", "-o", folder / "still.png", clip().native()});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(contents(folder / "still.png"), "an earlier one");
    EXPECT_THAT(folder.names(), ElementsAre("still.png"));
}

TEST_F(Still, ANameWithAPatternIsTakenLiterally)
{
    const TestFolder folder;
    EXPECT_EQ(run({"--at", "0.2", "-o", folder / "100%d.png", clip().native()}).status, 0);
    EXPECT_THAT(folder.names(), ElementsAre("100%d.png"));
    const fs::path odd = m_folder / "odd %03d.mkv";
    fs::rename(clip(), odd);
    EXPECT_EQ(run({"--at", "0.2", odd.native()}).status, 0);
    EXPECT_THAT(m_folder.names(), ElementsAre("odd %03d 00-00-00-05.png", "odd %03d.mkv"));
    fs::rename(odd, clip());
}

TEST_F(Still, ThatIsInterruptedLeavesNothing)
{
    const auto started = m_folder / "started";
    {
        const FakeTools tools;
        // A tool that has written half an image and never ends.
        tools.put("ffmpeg", "for last; do :; done; printf half > \"$last\"; : > '"
                                + QByteArray::fromStdString(started.native())
                                + "'; exec sleep 600");
        Program still(Cli::command({"still", "--at", "0", clip().native()}));
        ASSERT_TRUE(comesTrue([&] { return fs::exists(started); }));
        EXPECT_THAT(m_scratch.names(), Contains(StartsWith("vantroque-")));
        still.signal(SIGINT);
        EXPECT_EQ(still.wait().status, 128 + SIGINT);
    }
    EXPECT_THAT(m_folder.names(), ElementsAre("spot.v2.mkv", "started"));
}

} // namespace
} // namespace vantroque

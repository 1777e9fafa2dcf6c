#include "Signal/CleanRun.h"
#include "Signal/MeasuredFacts.h"

namespace vantroque {
namespace {

using Media::operator+;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

// Picture and sound do not always begin and end together: a muxer's delay, an edit list, a bed that
// is longer than the cut. Times count from the first frame, as the frame numbers of a player do.

class StartTimes : public testing::Test {
private:
    const CleanRun m_cleanRun;
};

/// Five seconds of motion at 25 frames a second, black while `black` is true of the frame number n.
std::string motion(const std::string& black)
{
    return "testsrc2=s=320x180:r=25:d=5,drawbox=w=320:h=180:c=black:t=fill:enable='" + black + "'";
}

/// When picture and sound begin, in seconds.
struct Starts {
    std::string picture = "0";
    std::string sound = "0";
};

/// Picture and sound side by side, each of a graph; the sound is linear.
fs::path clip(const std::string& name, const std::string& picture, const std::string& sound,
              const Starts& starts = {})
{
    return Media::make({name,
                        {"-itsoffset", starts.picture, "-f", "lavfi", "-i", picture, "-itsoffset",
                         starts.sound, "-f", "lavfi", "-i", sound, "-fps_mode", "passthrough",
                         "-c:v", "ffv1", "-c:a", "pcm_s16le"}});
}

struct LatePicture : StartTimes, testing::WithParamInterface<const char*> {};

TEST_P(LatePicture, CountsFromItsFirstFrame)
{
    const std::string black = "lt(n,15)+between(n,50,53)+gte(n,110)";
    const SignalInfo info = measured(clip("late-picture." + std::string(GetParam()), motion(black),
                                          "sine=r=48000:d=5.48", {.picture = "0.48"}));
    EXPECT_NEAR(info.pictureStart.value_or(0), 0.48, 0.001);
    EXPECT_NEAR(info.headBlackSeconds, 0.6, 0.001);
    EXPECT_NEAR(info.tailBlackSeconds, 0.56, 0.001);
    ASSERT_THAT(info.cadence->interiorBlackRuns, SizeIs(1));
    EXPECT_NEAR(info.cadence->interiorBlackRuns[0].start, 2, 0.001);
    EXPECT_NEAR(info.cadence->interiorBlackRuns[0].end, 2.16, 0.001);
    EXPECT_THAT(info.cadence->duplicateFrames, IsEmpty()) << "black frames repeat nothing";
}

INSTANTIATE_TEST_SUITE_P(Containers, LatePicture, testing::Values("mkv", "mov"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(StartTimes, ATransportStreamsDelayMovesNoFrame)
{
    const fs::path file =
        Media::make({"delayed.ts", Words{"-f", "lavfi", "-i", motion("between(n,50,53)"), "-f",
                                         "lavfi", "-i", "sine=r=48000:d=5", "-c:v", "libx264",
                                         "-pix_fmt", "yuv420p", "-c:a", "aac"}});
    const SignalInfo info = measured(file);
    ASSERT_THAT(info.cadence->interiorBlackRuns, SizeIs(1));
    EXPECT_NEAR(info.cadence->interiorBlackRuns[0].start, 2, 0.001);
}

TEST_F(StartTimes, SoundThatIsLongerThanThePictureMakesNoRepeatsOfAHeldTitle)
{
    const SignalInfo info = measured(clip(
        "long-sound.mkv",
        "testsrc2=s=320x180:r=25,loop=loop=50:size=1:start=50,setpts=N/25/TB,trim=end_frame=150",
        "sine=r=48000:d=9"));
    EXPECT_THAT(info.cadence->duplicateFrames, IsEmpty());
}

TEST_F(StartTimes, SoundThatIsLongerThanThePictureHidesNoBlackTail)
{
    const SignalInfo info =
        measured(clip("long-sound-black-tail.mkv", motion("gte(n,75)"), "sine=r=48000:d=6"));
    EXPECT_NEAR(info.tailBlackSeconds, 1.96, 0.001);
    EXPECT_THAT(info.cadence->interiorBlackRuns, IsEmpty());
}

TEST_F(StartTimes, AStillToTheEndLastsAsLongAsThePicture)
{
    const SignalInfo info =
        measured(clip("long-sound-still.mkv", "color=gray:s=64x64:r=25:d=3", "sine=r=48000:d=6"));
    EXPECT_NEAR(info.headFreezeSeconds, 3, 0.001);
}

/// Two seconds in, the right channel turns over for a second.
const std::string turningOver = "aevalsrc=exprs='0.1*sin(2000*PI*t)|"
                                "0.1*sin(2000*PI*t)*(1-2*between(t\\,2\\,3))':s=48000:d=4";

TEST_F(StartTimes, NothingIsHeardUntilLateSoundBegins)
{
    const SignalInfo info =
        measured(clip("late-sound.mkv", motion("0"), turningOver, {.sound = "1"}));
    EXPECT_NEAR(*info.headSilenceSeconds, 1, 0.001);
    EXPECT_NEAR(*info.longestSilenceSeconds, 1, 0.001);
    ASSERT_THAT(*info.audioIslands, SizeIs(1));
    EXPECT_NEAR(info.audioIslands->front().start, 1, 0.001);
    ASSERT_THAT(info.phase->outOfPhaseRuns, SizeIs(1));
    EXPECT_NEAR(info.phase->outOfPhaseRuns[0].start, 3, 0.001);
    EXPECT_NEAR(info.phase->outOfPhaseRuns[0].end, 4, 0.001);
}

TEST_F(StartTimes, LateSoundThatBeginsSilentlyIsOneSilence)
{
    const SignalInfo info =
        measured(clip("late-silent-sound.mkv", motion("0"),
                      "aevalsrc=exprs='0.1*sin(2000*PI*t)*gt(t\\,2)':s=48000:d=4", {.sound = "1"}));
    EXPECT_NEAR(*info.headSilenceSeconds, 3, 0.001);
    EXPECT_NEAR(*info.longestSilenceSeconds, 3, 0.001);
    ASSERT_THAT(*info.audioIslands, SizeIs(1));
    EXPECT_NEAR(info.audioIslands->front().start, 3, 0.001);
}

TEST_F(StartTimes, SoundAheadOfThePictureHasNoFrame)
{
    const SignalInfo info = measured(
        clip("early-sound.mkv", "testsrc2=s=320x180:r=25:d=2", turningOver, {.picture = "2.48"}));
    ASSERT_THAT(info.phase->outOfPhaseRuns, SizeIs(1));
    EXPECT_NEAR(info.phase->outOfPhaseRuns[0].start, 0.02, 0.001) << "the first window in sight";
    EXPECT_NEAR(info.phase->outOfPhaseRuns[0].end, 0.52, 0.001);
}

} // namespace
} // namespace vantroque

#include "Signal/SignalPass.h"

#include <csignal>
#include <mutex>

// What becomes of a decode whose tool is missing, fails or is killed.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;
using Stage = AnalysisProgress::Stage;

TEST_F(SignalPass, AMissingToolFailsAheadOfEverything)
{
    if (fs::exists("/usr/local/bin/ffmpeg") || fs::exists("/opt/homebrew/bin/ffmpeg"))
        GTEST_SKIP() << "ffmpeg is where it is always found";
    const ScopedVariable path("PATH", m_folder.path());
    AnalysisProgress progress;
    const auto outcome = pass(film(), {}, &progress);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::notFound);
    EXPECT_EQ(outcome.error().tool, u"ffmpeg"_s);
    EXPECT_EQ(progress.snapshot().stage, Stage::queued);
}

TEST_F(SignalPass, AToolThatCannotBeStartedFailsInTheSystemsWords)
{
    // Without an interpreter of that name there is nothing to start.
    m_folder.writeScript("ffmpeg", "#!/nowhere/sh\n");
    const ScopedVariable tools("VANTROQUE_FFMPEG_DIR", m_folder.path());
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::launchFailed);
    EXPECT_EQ(outcome.error().status, ENOENT);
}

TEST_F(SignalPass, AToolKilledBetweenFramesFailsSinceTheRestIsMissing)
{
    m_tools.put("ffmpeg", "head -c " + QByteArray::number(5 * frameBytes) + " /dev/zero\necho '"
                              + filterLines + "' >&2\nkill -9 $$");
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().status, 128 + SIGKILL);
}

TEST_F(SignalPass, AToolThatTakesTooLongIsStopped)
{
    m_tools.put("ffmpeg", "exec sleep 60");
    const auto outcome = pass(film(), {.timeout = 0.2});
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::timedOut);
    EXPECT_EQ(outcome.error().seconds, 0.2);
}

TEST_F(SignalPass, AToolKilledInsideAFrameFailsWithItsSignal)
{
    m_tools.put("ffmpeg", "head -c " + QByteArray::number(5 * frameBytes - 7) + " /dev/zero\necho '"
                              + filterLines + "' >&2\nkill -9 $$");
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().status, 128 + SIGKILL);
}

/// Ends the tool, whose process id is in the file, once the decode has shown that it runs.
class KilledMidway : public SignalPass, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(By, KilledMidway, testing::Values(SIGKILL, SIGTERM, SIGSEGV));

TEST_P(KilledMidway, ADecodeEndsAtOnce)
{
    const fs::path list = m_folder / "pid";
    const QByteArray name = QByteArray::fromStdString(list.native());
    m_tools.put("ffmpeg", "echo $$ >'" + name + ".new'; mv '" + name + ".new' '" + name
                              + "'\nexec ffmpeg -re \"$@\"");
    const MediaInfo media = probed(longClip());
    std::once_flag once;
    AnalysisProgress progress([&](const AnalysisProgress::Snapshot& snapshot) {
        if (snapshot.mediaSeconds > 0)
            std::call_once(once, [&] {
                const pid_t tool = processesListedIn(list).at(0);
                ASSERT_GT(tool, 0);
                ::kill(tool, GetParam());
            });
    });
    const auto outcome = pass(media, {.previewWidth = 64}, &progress);
    ASSERT_FALSE(outcome) << "the rest of the film is missing";
    // ffmpeg ends in order when it is asked to.
    EXPECT_EQ(outcome.error().status, GetParam() == SIGTERM ? 255 : 128 + GetParam());
    EXPECT_FALSE(isRunning(processesListedIn(list).at(0)));
}

TEST_F(SignalPass, PicturesWithoutALumaPlaneAreDecodedOnceMoreWithoutTheirBits)
{
    const QByteArray log = QByteArray::fromStdString((m_folder / "log").native());
    m_tools.put("ffmpeg",
                "printf '%s ' \"$@\" >>'" + log + "'; echo >>'" + log
                    + "'\ncase \"$*\" in *bitsout*)\n"
                      "echo 'could not choose their formats: Parsed_extractplanes_7' >&2; exit 1\n"
                      "esac\nhead -c "
                    + QByteArray::number(frameBytes) + " /dev/zero\necho '" + filterLines
                    + "' >&2");
    MediaInfo media = film();
    media.video->bitDepth = 10;
    EXPECT_EQ(value(pass(media)).activePicture, (CropRect{64, 48, 0, 8}));
    const auto calls = contents(m_folder / "log").split('\n');
    ASSERT_EQ(calls.size(), 8) << "two of the decode, two of the extra look at its first place, "
                                  "three of the others, the end";
    EXPECT_TRUE(calls[0].contains("[bitsout]"));
    EXPECT_FALSE(calls[1].contains("[bitsout]"));
}

TEST_F(SignalPass, AnotherFailureIsNotTriedAgain)
{
    m_tools.put("ffmpeg", "echo call >>'" + QByteArray::fromStdString((m_folder / "log").native())
                              + "'; exit 1");
    MediaInfo media = film();
    media.video->bitDepth = 10;
    EXPECT_FALSE(pass(media));
    EXPECT_EQ(contents(m_folder / "log"), "call\n");
}

} // namespace
} // namespace vantroque

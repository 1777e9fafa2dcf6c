#include "Platform/NumberedClip.h"
#include "Platform/Playing.h"
#include "Support/Clips.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"
#include "Tools/ProcessTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <unistd.h>

// A decoder that dies, falls silent or lies, and files that are none.

namespace vantroque {
namespace {

using Media::operator+;
using State = PlaybackEngine::State;
using testing::IsEmpty;
namespace fs = std::filesystem;

const std::vector<std::string> x264{"-c:v",     "libx264", "-preset", "veryfast",
                                    "-pix_fmt", "yuv420p", "-g",      "12"};

fs::path clip()
{
    return NumberedClip::make("trouble.mp4", "25", x264);
}

bool waitForFailure(Playing& player)
{
    return runUntil([&] { return player.engine().state() == State::failed; });
}

/// A liar is asked for a frame, killed, started again, and believed no more.
class Lie : public testing::Test {
protected:
    static DecoderEngine::Settings settings()
    {
        auto settings = Playing::silent();
        settings.program = VANTROQUE_LYING_DECODER;
        settings.pingEvery = std::chrono::milliseconds(20);
        settings.answersOfHung = 4;
        return settings;
    }
};
class Lies : public Lie, public testing::WithParamInterface<std::string> {};

TEST_P(Lies, EndInFailureWithoutHarm)
{
    Playing player(fs::path("/nowhere") / GetParam(), 25, settings());
    player.engine().aim(5, 0);
    ASSERT_TRUE(waitForFailure(player));
    EXPECT_EQ(player.engine().frame(5), nullptr);
    EXPECT_LT(player.engine().decoder(), 0);
    EXPECT_FALSE(player.engine().canPlay(1));
    EXPECT_FALSE(player.engine().problem().isEmpty());
    EXPECT_TRUE(comesTrue([] { return !hasChildren(); }));
    // Nor does anything that is still asked.
    player.engine().aim(7, 1);
    player.engine().startSound(0);
    EXPECT_EQ(player.engine().soundSeconds(), std::nullopt);
    player.engine().stopSound();
}

INSTANTIATE_TEST_SUITE_P(OfManyKinds, Lies,
                         testing::Values("ends", "ends-later", "crashes", "is-silent", "hangs",
                                         "width", "no-width", "turns", "flipped", "twice", "early",
                                         "short", "kind", "pong", "floods", "slot",
                                         "slot-of-the-window", "size", "height", "bits", "number",
                                         "huge-number", "range", "token", "no-token", "extended",
                                         "end", "failed-later"),
                         [](const auto& lie) {
                             std::string name = lie.param;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

TEST_F(Lie, OfAnyKindEndsInFailureWithoutHarm)
{
    for (int seed = 0; seed < 40; ++seed) {
        Playing player(fs::path("/nowhere") / ("anything-" + std::to_string(seed)), 25, settings());
        player.engine().aim(5, 0);
        ASSERT_TRUE(waitForFailure(player)) << seed;
        EXPECT_LT(player.engine().decoder(), 0);
    }
    EXPECT_TRUE(comesTrue([] { return !hasChildren(); }));
}

TEST(Decoder, IsStartedAgainOnTheSameFrameWhenItIsKilled)
{
    Playing player(clip());
    ASSERT_EQ(player.shown(31), 31);
    const auto held = player.engine().frame(31);
    const pid_t first = player.engine().decoder();
    ::kill(first, SIGKILL);
    ASSERT_TRUE(runUntil([&] {
        return player.engine().decoder() != first && player.engine().frame(31) != nullptr;
    }));
    EXPECT_EQ(player.shown(31), 31);
    EXPECT_EQ(NumberedClip::numberIn(held->picture), 31) << "what is held stays";
    EXPECT_EQ(player.engine().state(), State::ready);
    EXPECT_EQ(player.stateChanges, 1);
    // Soon after that, it is enough.
    ::kill(player.engine().decoder(), SIGSEGV);
    ASSERT_TRUE(waitForFailure(player));
    EXPECT_EQ(NumberedClip::numberIn(held->picture), 31);
}

TEST(Decoder, MayDieAgainMuchLater)
{
    auto settings = Playing::silent();
    settings.soon = std::chrono::seconds(0);
    Playing player(clip(), 25, settings);
    for (const int number : {3, 33, 13}) {
        ASSERT_EQ(player.shown(number), number);
        const pid_t old = player.engine().decoder();
        ::kill(old, SIGKILL);
        ASSERT_TRUE(runUntil([&] { return player.engine().decoder() != old; }));
    }
    EXPECT_EQ(player.shown(20), 20);
}

TEST(Decoder, IsReplacedWhenItIsStopped)
{
    auto settings = Playing::silent();
    settings.mostSlots = 6;
    Playing player(clip(), 25, settings);
    ASSERT_EQ(player.shown(3), 3);
    const pid_t stopped = player.engine().decoder();
    ::kill(stopped, SIGSTOP);
    EXPECT_EQ(player.shown(40), 40);
    EXPECT_NE(player.engine().decoder(), stopped);
}

TEST(Decoder, CannotBeStartedWhereThereIsNone)
{
    auto settings = Playing::silent();
    settings.program = "/nowhere/vantroque-play";
    Playing player(clip(), 25, settings);
    EXPECT_EQ(player.opened(), State::failed);
}

TEST(Decoder, EndsWithItsPlayer)
{
    pid_t decoder = -1;
    {
        Playing player(clip());
        ASSERT_EQ(player.shown(3), 3);
        decoder = player.engine().decoder();
        EXPECT_TRUE(isRunning(decoder));
    }
    EXPECT_TRUE(comesTrue([&] { return processFile(decoder, "cmdline").isEmpty(); }));
}

TEST(Decoder, KeepsTheFramesThatAreHeldWhenItsPlayerEnds)
{
    std::shared_ptr<const PlayedFrame> held;
    {
        Playing player(clip());
        held = player.frame(17);
        ASSERT_NE(held, nullptr);
    }
    EXPECT_EQ(NumberedClip::numberIn(held->picture), 17);
}

/// What the descriptors of a process lead to.
std::vector<std::string> descriptorsOf(pid_t process)
{
    std::vector<std::string> targets;
    for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(process) + "/fd")) {
        std::error_code error;
        targets.push_back(fs::read_symlink(entry.path(), error).native());
    }
    return targets;
}

TEST(Decoder, InheritsNothingOfTheWindow)
{
    std::array<int, 2> pipe{}; // Not closed on exec.
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const auto windows = descriptorsOf(::getpid());
    Playing player(clip());
    ASSERT_EQ(player.shown(3), 3);
    const auto decoders = descriptorsOf(player.engine().decoder());
    for (const std::string& target : decoders)
        EXPECT_TRUE(target == "/dev/null" || std::ranges::count(windows, target) == 0) << target;
    EXPECT_EQ(std::ranges::count(decoders, clip().native()), 1);
    EXPECT_EQ(std::ranges::count_if(
                  decoders, [](const auto& target) { return target.starts_with("socket:"); }),
              1);
    ::close(pipe[0]);
    ::close(pipe[1]);
}

class BadFiles : public testing::Test {
protected:
    /// Frames of a file that may be damaged come, or do not; the engine stays sound.
    void tryOut(const fs::path& file)
    {
        Playing player(file);
        if (player.opened() == State::failed) {
            EXPECT_FALSE(player.engine().problem().isEmpty());
            return;
        }
        for (const int number : {0, 30, 49, 12, 13}) {
            player.engine().aim(number, 0);
            ASSERT_TRUE(runUntil([&] { return !player.engine().isDecoding(); }));
        }
        EXPECT_EQ(player.engine().state(), State::ready);
    }

    TestFolder m_folder;
    QByteArray m_bytes = contents(clip());
};

TEST_F(BadFiles, FailInWords)
{
    for (const fs::path& file :
         {m_folder.write("empty.mp4", ""), m_folder.write("noise.mp4", QByteArray(5000, 'x')),
          m_folder.write("list.m3u8", "#EXTM3U\n#EXTINF:1,\n" + QByteArray(clip().c_str())),
          m_folder.write("list.ffconcat",
                         "ffconcat version 1.0\nfile " + QByteArray(clip().c_str())),
          m_folder.write("unknown.mp4", QByteArray(m_bytes).replace("avc1", "zzzz")),
          m_folder / "missing.mp4", m_folder.path(), Clips::wav()}) {
        Playing player(file);
        EXPECT_EQ(player.opened(), State::failed) << file;
        EXPECT_FALSE(player.engine().problem().isEmpty()) << file;
    }
}

TEST_F(BadFiles, OfManyCutsDoNoHarm)
{
    const QByteArray stream = contents(NumberedClip::make("cut.ts", "25", x264));
    for (const int percent : {2, 30, 60, 99}) {
        tryOut(m_folder.write("cut.mp4", m_bytes.left(m_bytes.size() * percent / 100)));
        tryOut(m_folder.write("cut.ts", stream.left(stream.size() * percent / 100)));
    }
}

TEST_F(BadFiles, WithChangedBytesDoNoHarm)
{
    std::uint32_t chance = 1;
    for (int i = 0; i < 12; ++i) {
        QByteArray bytes = m_bytes;
        for (int change = 0; change < 30; ++change) {
            chance = chance * 1664525 + 1013904223;
            bytes[static_cast<qsizetype>(chance % static_cast<std::uint32_t>(bytes.size()))] =
                static_cast<char>(chance >> 24U);
        }
        tryOut(m_folder.write("changed.mp4", bytes));
    }
}

TEST_F(BadFiles, ThatShrinkWhileTheyPlayEndSooner)
{
    // Larger than what is read at once.
    const auto padded = x264 + std::vector<std::string>{"-muxrate", "4M"};
    const fs::path file =
        m_folder.write("shrinks.ts", contents(NumberedClip::make("padded.ts", "25", padded)));
    auto settings = Playing::silent();
    settings.mostSlots = 6;
    Playing player(file, 25, settings);
    ASSERT_EQ(player.shown(40), 40);
    fs::resize_file(file, fs::file_size(file) / 2);
    player.engine().aim(45, 0);
    ASSERT_TRUE(runUntil([&] { return !player.engine().isDecoding(); }));
    EXPECT_LT(player.engine().lastFrame().value_or(49), 40);
    EXPECT_EQ(player.shown(3), 3);
    fs::remove(file);
    EXPECT_EQ(player.shown(14), 14);
}

TEST_F(BadFiles, OfOneFrameHaveOneFrame)
{
    Playing player(NumberedClip::make("one.mp4", "25", x264, "0.04"));
    EXPECT_EQ(player.shown(0), 0);
    EXPECT_EQ(player.shown(1), std::nullopt);
    EXPECT_EQ(player.engine().lastFrame(), 0);
}

TEST_F(BadFiles, OfOddRatesAreCountedInThem)
{
    Playing slow(NumberedClip::make("slow.mp4", "1/2", x264, "8"), 0.5);
    EXPECT_EQ(slow.shown(3), 3);
    Playing fast(NumberedClip::make("fast.mp4", "240", x264, "0.25"), 240);
    EXPECT_EQ(fast.shown(37), 37);
    EXPECT_EQ(fast.shown(59), 59);
}

TEST_F(BadFiles, WithPicturesTooLargeForTheRoomFail)
{
    Playing player(
        Media::make({"huge.mp4",
                     {"-f", "lavfi", "-i", "color=gray:size=8192x8192:rate=25:duration=0.04",
                      "-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p"}}));
    EXPECT_EQ(player.opened(), State::failed);
}

} // namespace
} // namespace vantroque

#include "Platform/NumberedClip.h"
#include "Platform/Playing.h"
#include "Support/Clips.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"
#include "Tools/HeldByProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QByteArray>
#include <QElapsedTimer>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <malloc.h>
#include <unistd.h>

// Players come and go and leave nothing.

namespace vantroque {
namespace {

namespace fs = std::filesystem;

/// Few enough for every run of the tests; the environment asks for more.
int openings()
{
    constexpr int usual = 100;
    const int asked = qEnvironmentVariableIntValue("VANTROQUE_TEST_OPENINGS");
    return asked > 0 ? asked : usual;
}

TEST(OpenAndClose, LeavesNothingOfManyPlayers)
{
    const TestFolder folder;
    const std::vector<fs::path> files{
        NumberedClip::make("trouble.mp4", "25", {"-c:v", "libx264", "-pix_fmt", "yuv420p"}),
        Clips::plain(),
        Clips::mpeg2InMxf(),
        folder.write("noise.mp4", QByteArray(5000, 'x')),
        Clips::transportStream(),
        folder / "missing.mp4",
        Clips::wav()};
    const auto openAndClose = [&](int i) {
        Playing player(files[static_cast<std::size_t>(i) % files.size()]);
        // Some are closed while they open, some while they decode, some with sound.
        if (i % 5 == 0)
            return;
        player.opened();
        player.engine().aim(i % 25, i % 3 - 1);
        if (i % 4 == 0)
            player.engine().startSound(0);
        if (i % 2 == 0)
            player.frame(i % 25);
    };
    for (int i = 0; i < std::ssize(files); ++i) // What is made once.
        openAndClose(i);
    ASSERT_TRUE(comesTrue([] { return !hasChildren(); }));
    const HeldByProcess before;
    const auto bytes = ::mallinfo2().uordblks;
    for (int i = 0; i < openings(); ++i)
        openAndClose(i);
    EXPECT_TRUE(comesTrue([&] { return HeldByProcess() == before; }));
    constexpr std::size_t slack = std::size_t{1} << 18U;
    EXPECT_LT(::mallinfo2().uordblks, bytes + slack) << "memory is where it was";
}

TEST(OpenAndClose, WaitsForNoDecoder)
{
    const auto file = Clips::plain();
    std::vector<qint64> milliseconds;
    for (int i = 0; i < 3; ++i) { // A loaded machine may be late once.
        Playing player(file);
        ASSERT_EQ(player.opened(), PlaybackEngine::State::ready);
        const pid_t decoder = player.engine().decoder();
        ::kill(decoder, SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        player.close();
        milliseconds.push_back(timer.elapsed());
        EXPECT_TRUE(comesTrue([&] { return !isRunning(decoder); }));
    }
    EXPECT_LT(std::ranges::min(milliseconds), 100);
}

/// Bytes of frames that this process shares with its decoders, but for the end of a page.
std::size_t frameBytes()
{
    std::size_t bytes = 0;
    for (const QByteArray& line : processFile(::getpid(), "maps").split('\n'))
        if (line.contains("/memfd:vantroque-frames")) {
            constexpr int hexadecimal = 16;
            const auto ends = line.left(line.indexOf(' ')).split('-');
            bytes += ends.at(1).toULongLong(nullptr, hexadecimal)
                     - ends.at(0).toULongLong(nullptr, hexadecimal);
        }
    return bytes;
}

TEST(OpenAndClose, TakesNoMoreMemoryThanItIsGivenButRoomForThreeFrames)
{
    constexpr std::size_t frame = PictureLayout{.width = 192, .height = 96}.bytes();
    constexpr std::size_t page = 4096;
    const auto taken = [](std::size_t given) {
        PlaybackSource source;
        source.url = FileUrl::fromPath(
            NumberedClip::make("trouble.mp4", "25", {"-c:v", "libx264", "-pix_fmt", "yuv420p"}));
        source.memory = given;
        DecoderEngine engine(source, Playing::silent());
        engine.aim(20, 0);
        EXPECT_TRUE(runUntil([&] { return engine.frame(20) != nullptr; }));
        return frameBytes();
    };
    EXPECT_LE(taken(10 * frame + frame / 2), 10 * frame + page);
    EXPECT_GT(taken(10 * frame + frame / 2), 10 * frame - page);
    EXPECT_LE(taken(0), 3 * frame + page);
}

TEST(SoundOutput, IsNoneOfADriverThatKeepsNoTime)
{
    ::setenv("SDL_AUDIODRIVER", "dummy", 1);
    EXPECT_EQ(makeSdlOutput([](std::span<SoundRing::Pair>) {}), nullptr);
}

} // namespace
} // namespace vantroque

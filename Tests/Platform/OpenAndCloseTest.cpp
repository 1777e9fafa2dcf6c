#include "Platform/NumberedClip.h"
#include "Platform/Playing.h"
#include "Support/Clips.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"
#include "Tools/ProcessTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

long countIn(const fs::path& folder)
{
    return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

struct Held {
    long descriptors = countIn("/proc/self/fd");
    long threads = countIn("/proc/self/task");
    qsizetype sharedMemories = processFile(::getpid(), "maps").count("/memfd:vantroque-");
    bool children = hasChildren();

    bool operator==(const Held&) const = default;
};

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
    const Held before;
    const auto bytes = ::mallinfo2().uordblks;
    for (int i = 0; i < openings(); ++i)
        openAndClose(i);
    EXPECT_TRUE(comesTrue([&] { return Held() == before; }));
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

TEST(SoundOutput, IsNoneOfADriverThatKeepsNoTime)
{
    ::setenv("SDL_AUDIODRIVER", "dummy", 1);
    EXPECT_EQ(makeSdlOutput([](std::span<SoundRing::Pair>) {}), nullptr);
}

} // namespace
} // namespace vantroque

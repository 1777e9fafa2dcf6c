#include "Platform/Playing.h"
#include "Support/Clips.h"
#include "Support/TestFolder.h"
#include "Tools/ProcessTable.h"

#include <gtest/gtest.h>

namespace vantroque {
namespace {

namespace fs = std::filesystem;

TEST(DecoderOfAPlayer, IsClosedIn)
{
#ifdef VANTROQUE_SANITIZED
    GTEST_SKIP() << "a sanitizer could not look at a decoder that is closed in";
#endif
    const TestFolder folder;
    const fs::path film = folder / "film.mp4";
    fs::copy_file(Clips::plain(), film);
    Playing player(film);
    ASSERT_EQ(player.opened(), PlaybackEngine::State::ready);
    const auto decoders = processesNaming(film.native());
    ASSERT_EQ(decoders.size(), 1U);
    const QByteArray status = processFile(decoders.front(), "status");
    EXPECT_TRUE(status.contains("\nNoNewPrivs:\t1\n")) << status.toStdString();
    EXPECT_TRUE(status.contains("\nSeccomp:\t2\n")) << "a filter of calls";
    EXPECT_NE(player.frame(12), nullptr) << "and decodes";
}

} // namespace
} // namespace vantroque

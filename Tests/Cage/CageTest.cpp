#include "Cage/Cage.h"

#include "Base/ScopedVariable.h"
#include "Probe/Prober.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"
#include "Tools/FFTool.h"

#include <gtest/gtest.h>

namespace vantroque {
namespace {

/// What holds around a tool with that setting.
std::uint32_t heldWith(const std::string& setting)
{
    const ScopedVariable cage("VANTROQUE_CAGE", setting);
    const auto ran = FFTool::run("/usr/bin/true", {});
    return ran ? ran->cage : ~0U;
}

TEST(CageTest, TellsWhatHolds)
{
    EXPECT_EQ(heldWith("off"), 0U);
    if ((heldWith("") & Cage::files) == 0)
        GTEST_SKIP() << "this kernel has no Landlock";
    EXPECT_EQ(heldWith("1"), Cage::files | Cage::calls);
    EXPECT_EQ(heldWith("3"), Cage::files | Cage::calls);
    EXPECT_EQ(heldWith("0"), Cage::calls) << "as on a kernel without Landlock";
    EXPECT_EQ(heldWith("") & (Cage::files | Cage::calls), Cage::files | Cage::calls);
}

TEST(CageTest, IsToldInWords)
{
    EXPECT_EQ(Cage::words(Cage::files | Cage::network | Cage::signals | Cage::calls),
              "files, network, signals, calls");
    EXPECT_EQ(Cage::words(Cage::calls), "calls");
    EXPECT_EQ(Cage::words(0), "nothing");
}

TEST(CageTest, AToolThatIsNotToBeCagedIsNot)
{
    EXPECT_EQ(FFTool::run("/usr/bin/true", {}, {.isCaged = false})->cage, 0U);
}

TEST(CageTest, AToolOfASnapIsNotToBeCaged)
{
    for (const char* tool : {"/usr/bin/snap", "/snap/bin/ffmpeg", "/snap/ffmpeg/7/usr/bin/ffmpeg"})
        EXPECT_TRUE(FFTool::isSnap(tool)) << tool;
    for (const char* tool : {"/usr/bin/snapper", "/snapshots/ffmpeg", "/home/me/snap/ffmpeg",
                             "/snap/../usr/bin/ffmpeg", "/usr/bin/ffmpeg"})
        EXPECT_FALSE(FFTool::isSnap(tool)) << tool;
}

TEST(CageTest, AFileOfAnyNameIsRead)
{
    const TestFolder folder;
    const auto clip = Media::make(
        {"caged.mkv", {"-f", "lavfi", "-i", "color=s=64x64:d=0.2", "-c:v", "rawvideo"}});
    const auto isProbed = [](const std::filesystem::path& file) {
        return Prober::probe(FileUrl::fromPath(file)).has_value();
    };
    for (const char* name : {"a b.mkv", "it's [1], so.mkv", "\xe2\x82\xac%d.mkv", "-i.mkv"}) {
        std::filesystem::copy_file(clip, folder / name);
        EXPECT_TRUE(isProbed(folder / name)) << name;
    }
    std::filesystem::create_symlink(clip, folder / "link.mkv");
    EXPECT_TRUE(isProbed(folder / "link.mkv"));
}

} // namespace
} // namespace vantroque

#include "Base/SupportFolder.h"

#include "Base/ScopedVariable.h"

#include <gtest/gtest.h>

namespace vantroque {
namespace {

namespace fs = std::filesystem;

TEST(SupportFolder, LiesInTheDataHomeAsItIsAtEachCall)
{
    {
        const ScopedVariable data("XDG_DATA_HOME", "/some/data");
        EXPECT_EQ(SupportFolder::path(), "/some/data/Vantroque");
    }
    const ScopedVariable data("XDG_DATA_HOME", "/other");
    EXPECT_EQ(SupportFolder::path(), "/other/Vantroque");
}

TEST(SupportFolder, LiesInTheHomeWithoutADataHome)
{
    const ScopedVariable home("HOME", "/home/op");
    {
        const ScopedVariable data("XDG_DATA_HOME");
        EXPECT_EQ(SupportFolder::path(), "/home/op/.local/share/Vantroque");
    }
    for (const char* ignored : {"", "relative/data"}) {
        const ScopedVariable data("XDG_DATA_HOME", ignored);
        EXPECT_EQ(SupportFolder::path(), "/home/op/.local/share/Vantroque") << ignored;
    }
}

TEST(SupportFolder, LiesInTheTemporaryFolderWithoutAHome)
{
    const ScopedVariable data("XDG_DATA_HOME");
    const ScopedVariable home("HOME");
    const ScopedVariable temporary("TMPDIR", "/var/tmp");
    EXPECT_EQ(SupportFolder::path(), "/var/tmp/Vantroque");
}

TEST(SupportFolder, LiesInTmpWhenTheTemporaryFolderIsNone)
{
    const ScopedVariable data("XDG_DATA_HOME");
    const ScopedVariable home("HOME", "");
    const ScopedVariable temporary("TMPDIR", "/nowhere");
    EXPECT_EQ(SupportFolder::path(), "/tmp/Vantroque");
}

TEST(SupportFolder, KeepsTheBytesOfAName)
{
    const ScopedVariable data("XDG_DATA_HOME", "/d\xFF");
    EXPECT_EQ(SupportFolder::path().native(), "/d\xFF/Vantroque");
}

} // namespace
} // namespace vantroque

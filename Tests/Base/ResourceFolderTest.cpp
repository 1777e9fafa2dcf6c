#include "Base/ResourceFolder.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

namespace fs = std::filesystem;

TEST(ResourceFolder, TheExecutableIsFoundWhateverTheWorkingDirectory)
{
    const fs::path before = ResourceFolder::executableFolder();
    EXPECT_TRUE(before.is_absolute());
    EXPECT_TRUE(fs::exists(before / "BaseTests"));
    const TestFolder elsewhere;
    fs::current_path(elsewhere.path());
    EXPECT_EQ(ResourceFolder::executableFolder(), before);
    fs::current_path("/");
}

TEST(ResourceFolder, ResourcesLieBesideTheExecutablesFolder)
{
    const auto resources = ResourceFolder::path();
    ASSERT_TRUE(resources);
    EXPECT_EQ(*resources, ResourceFolder::executableFolder().parent_path() / "share/vantroque");
    EXPECT_TRUE(fs::is_directory(*resources / "Profiles"));
}

} // namespace
} // namespace vantroque

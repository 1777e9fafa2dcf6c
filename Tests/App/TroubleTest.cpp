#include "App/AppFixture.h"

#include <csignal>

namespace vantroque {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

class Trouble : public AppTest {
protected:
    /// What it said, but for Qt's words about a screen that is none.
    static std::string end(Program& window)
    {
        window.signal(SIGTERM);
        ProgramRun run = window.wait();
        EXPECT_EQ(run.status, 0);
        return run.err.replace("This plugin does not support raise()\n", "").toStdString();
    }
};

TEST_F(Trouble, AWorkspaceThatCannotBeWrittenIsKeptUntilItCan)
{
    const Path place = m_home / "data/Vantroque/workspace.json";
    m_home.write("data/Vantroque/workspace.json/in the way", "x");
    Program window = open({file("a.mp4")});
    EXPECT_EQ(start({file("b.mp4")}).wait().status, 0);
    fs::remove_all(place);
    EXPECT_EQ(start({file("c.mp4")}).wait().status, 0);
    EXPECT_TRUE(soonAnalysed(3));
    EXPECT_THAT(end(window), IsEmpty());
}

TEST_F(Trouble, AFullDiskEndsNothing)
{
    constexpr std::uint64_t nothing = 1;
    Program window = open({}, {.maxFileBytes = nothing});
    EXPECT_EQ(start({file("a.mp4")}).wait().status, 0);
    end(window); // its words do not fit either
    EXPECT_THAT(stored(), IsEmpty());
    EXPECT_TRUE(fs::is_empty(m_home / "data/Vantroque"));
}

TEST_F(Trouble, AFileInThePlaceOfTheDataFolderEndsNothing)
{
    fs::remove(m_home / "data");
    m_home.write("data", "a file");
    Program window = open({file("a.mp4")});
    EXPECT_EQ(start({file("b.mp4")}).wait().status, 0);
    EXPECT_THAT(end(window), IsEmpty());
    EXPECT_EQ(contents(m_home / "data"), "a file");
}

TEST_F(Trouble, ADamagedWorkspaceStartsEmpty)
{
    m_home.write("data/Vantroque/workspace.json", "{\"files\": [{");
    const Program window = open({file("a.mp4")});
    EXPECT_TRUE(soonStored({"a.mp4"}));
}

TEST_F(Trouble, WithoutTheToolsFilesStayInTheListAndAreAnalysedOnceTheyAreThere)
{
    const Path a = file("a.mp4");
    {
        Program window = open({a}, {.environment = {{"PATH", "/nonexistent"}}});
        EXPECT_TRUE(soonStored({"a.mp4"}));
        end(window);
    }
    const Program window = open();
    EXPECT_TRUE(soonAnalysed(1));
}

TEST_F(Trouble, WithoutReadableProfilesFilesAreStillAnalysed)
{
    // A copy of the program beside damaged profiles.
    fs::create_directories(m_home / "bin");
    fs::create_directories(m_home / "libexec");
    const Path built = Path(VANTROQUE_WINDOW).parent_path();
    fs::copy(VANTROQUE_WINDOW, m_home / "bin/vantroque");
    fs::create_directory_symlink(built / "../libexec/vantroque", m_home / "libexec/vantroque");
    m_home.write("share/vantroque/Profiles/a.json", "{}");
    Program window({(m_home / "bin/vantroque").native(), file("a.mp4").native()},
                   {.environment = {{"QT_QPA_PLATFORM", "offscreen"}}});
    EXPECT_TRUE(soonAnalysed(1));
    EXPECT_THAT(stored().at(0).report->profiles, IsEmpty());
    EXPECT_THAT(end(window), IsEmpty());
}

} // namespace
} // namespace vantroque

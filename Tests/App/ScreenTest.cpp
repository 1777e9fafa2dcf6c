#include "App/Screen.h"
#include "App/AppFixture.h"
#include "App/SessionManager.h"
#include "VantroqueApp/SingleInstance.h"

#include <algorithm>
#include <csignal>

namespace vantroque {
namespace {

class OnScreen : public AppTest {
protected:
    Screen m_screen;
};

TEST_F(OnScreen, ClosingTheWindowInTheMiddleOfAnAnalysisSavesAndLeavesNothing)
{
    const Path file = longFile();
    Program window = open({file});
    ASSERT_TRUE(m_screen.soonActive(window));
    ASSERT_TRUE(soonDecodes(file));
    m_screen.press({"alt+F4"});
    EXPECT_EQ(window.wait().status, 0);
    EXPECT_TRUE(leftNothing(file));
    EXPECT_EQ(storedNames(), std::vector<std::string>{"long.mp4"});
}

TEST_F(OnScreen, TheEndOfTheDisplaySavesAndLeavesNothing)
{
    const Path file = longFile();
    Program window = open({file});
    ASSERT_TRUE(soonDecodes(file));
    EXPECT_EQ(start({this->file("late.mp4")}).wait().status, 0);
    m_screen.end();
    EXPECT_EQ(window.wait().status, 1);
    EXPECT_TRUE(leftNothing(file));
    EXPECT_EQ(storedNames(), (std::vector<std::string>{"long.mp4", "late.mp4"}));
}

TEST_F(OnScreen, TheEndOfTheSessionSavesWhatIsNewAndLeavesNothing)
{
    SessionManager session;
    const Path file = longFile();
    Program window = open({file});
    ASSERT_TRUE(session.soonHasProgram());
    ASSERT_TRUE(soonDecodes(file));
    SingleInstance later;
    ASSERT_EQ(later.start({FileUrl::fromPath(this->file("late.mp4"))}),
              SingleInstance::Start::handedOver);
    ASSERT_TRUE(session.askToSave());
    EXPECT_EQ(storedNames(), (std::vector<std::string>{"long.mp4", "late.mp4"}));
    session.askToEnd();
    EXPECT_EQ(window.wait().status, 0);
    EXPECT_TRUE(leftNothing(file));
}

TEST_F(OnScreen, ASignalEndsItWhileAPanelIsOpen)
{
    Program window = open({file("a.mp4")});
    ASSERT_TRUE(m_screen.soonActive(window));
    m_screen.press({"ctrl+o"});
    ASSERT_TRUE(m_screen.soonActive(window, "Add Files"));
    window.signal(SIGTERM);
    EXPECT_EQ(window.wait().status, 0);
    EXPECT_EQ(storedNames(), std::vector<std::string>{"a.mp4"});
}

TEST_F(OnScreen, ALaterStartBringsTheWindowToTheFront)
{
    const Program window = open({file("a.mp4")});
    ASSERT_TRUE(m_screen.soonActive(window));
    const ScopedVariable data("XDG_DATA_HOME", m_home / "other");
    const Program above = open();
    ASSERT_TRUE(m_screen.soonActive(above));
    {
        const ScopedVariable first("XDG_DATA_HOME", m_home / "data");
        EXPECT_EQ(start({}).wait().status, 0);
    }
    ASSERT_TRUE(m_screen.soonActive(window));
    m_screen.press({"alt+F4"});
    EXPECT_TRUE(comesTrue([&] { return !isRunning(window.id()); }));
    EXPECT_TRUE(isRunning(above.id()));
}

TEST_F(OnScreen, APlayerNeedsNoOpenGL)
{
    const ScopedVariable none("QT_XCB_GL_INTEGRATION", "none");
    const Path film = file("film.mp4");
    Program window = open({film});
    ASSERT_TRUE(m_screen.soonActive(window));
    ASSERT_TRUE(soonAnalysed(1));
    EXPECT_TRUE(comesTrue([&] {
        return std::ranges::any_of(processesNaming(film.native()), [](pid_t process) {
            return processFile(process, "cmdline").contains("vantroque-play");
        });
    }));
    // A window manager that is busy with the new window may miss a key.
    EXPECT_TRUE(comesTrue([&] {
        m_screen.press({"alt+F4"});
        return !isRunning(window.id());
    }));
    EXPECT_EQ(window.wait().status, 0);
    EXPECT_TRUE(leftNothing(film));
}

TEST_F(OnScreen, FromNothingToASavedReportWithTheKeyboardAlone)
{
    const Path video = file("spot.mp4");
    const Path report = m_home / "report.txt";
    const Program window = open();
    ASSERT_TRUE(m_screen.soonActive(window));
    m_screen.press({"Return"}); // Choose Files
    ASSERT_TRUE(m_screen.soonActive(window, "Add Files"));
    m_screen.type(video.native());
    m_screen.press({"Return"});
    ASSERT_TRUE(soonAnalysed(1));
    ASSERT_TRUE(m_screen.soonActive(window));
    m_screen.press({"shift+Tab", "Return"});            // from the list to Export Report
    m_screen.press({"Down", "Down", "Down", "Return"}); // This File as Text
    ASSERT_TRUE(m_screen.soonActive(window, "Save All Reports as Text"));
    m_screen.press({"ctrl+a"});
    m_screen.type(report.native());
    m_screen.press({"Return"});
    ASSERT_TRUE(comesTrue([&] { return std::filesystem::exists(report); }));
    EXPECT_TRUE(contents(report).startsWith("spot.mp4    "));
}

} // namespace
} // namespace vantroque

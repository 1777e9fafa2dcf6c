#include "VantroqueApp/Views/Window/DoneNotice.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

class Done : public WindowTest {
protected:
    /// A queue of so many seconds, of which nobody sees the end.
    std::vector<QString> toldAfter(double seconds)
    {
        m_said.clear();
        startHeld();
        QueueRun::Seconds now{100};
        const QueueRun run(model().files(), model().queue(), [&] { return now; });
        const QWidget window; // not shown, so not in front
        DoneNotice notice(run, model().doneNotice(), window,
                          [this](const QString& title, const QString& text) {
                              m_said.push_back(title + u": "_s + text);
                          });
        model().files().add({anyFile("a.mp4"), anyFile("b.mp4")});
        EXPECT_TRUE(soon([&] { return run.isRunning(); }));
        now += QueueRun::Seconds(seconds);
        m_held.letGo();
        EXPECT_TRUE(soonIdle());
        EXPECT_TRUE(soon([&] { return notice.isIdle(); }));
        m_held.hold();
        return m_said;
    }

    std::vector<QString> m_said;
};

TEST_F(Done, TheDesktopTellsOfTheEndOfALongQueue)
{
    EXPECT_THAT(toldAfter(31), testing::ElementsAre(u"Vantroque: 2 files checked"_s));
}

TEST_F(Done, AShortQueueEndsWithoutAWord)
{
    EXPECT_THAT(toldAfter(5), testing::IsEmpty());
}

TEST_F(Done, ItCanBeTurnedOffInTheFileMenu)
{
    open();
    for (QAction* action : window().findChildren<QAction*>())
        if (action->text() == u"Notify When a Long Queue Is Done"_s) {
            EXPECT_TRUE(action->isChecked());
            action->trigger();
        }
    EXPECT_FALSE(model().doneNotice().isOn());
    m_window.reset();
    EXPECT_THAT(toldAfter(31), testing::IsEmpty());
}

TEST_F(Done, WithoutADesktopThatTellsNothingHappens)
{
    const ScopedVariable nobody("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    DoneNotice::toDesktop(u"Vantroque"_s, u"2 files checked"_s);
}

} // namespace
} // namespace vantroque

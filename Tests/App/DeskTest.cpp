#include "App/AppFixture.h"
#include "App/DeskWindow.h"
#include "Platform/NumberedClip.h"
#include "Support/Media.h"

#include <algorithm>

// The work of an operator in the real program on a real screen: what is done is done with the mouse
// and the keyboard, and what came of it is read from the screen's pixels.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;

class Desk : public AppTest {
protected:
    static constexpr int lastFrame = 249;
    static constexpr int invertedFrom = 100;

    /// Ten seconds whose pictures carry their number; from frame 100 to 150 the right channel is
    /// inverted.
    Path film(const std::string& seconds = "10") const
    {
        static const std::string right = "0.3*sin(880*PI*t)*(1-2*between(t\\,4\\,6))";
        return file(
            "film.mp4",
            Media::make({.name = "film-" + seconds + ".mp4",
                         .arguments = NumberedClip::input("25", seconds)
                                      + Arguments{"-f", "lavfi", "-i",
                                                  "aevalsrc=0.3*sin(880*PI*t)|" + right
                                                      + ":s=48000:d=" + seconds}
                                      + Clips::x264() + Arguments{"-g", "12", "-c:a", "aac"}}));
    }
    bool soonReady(const Program& window)
    {
        return m_screen.soonActive(window) && m_desk.soonOpen();
    }
    /// Clicks where a word that begins so stands in the comments.
    bool soonClicked(const QString& beginning)
    {
        const QRect place = m_desk.soonFound(beginning);
        if (!place.isEmpty())
            m_screen.click(place.center());
        return !place.isEmpty();
    }
    /// Names a file in a panel.
    void answer(const Program& window, const std::string& panel, const Path& file)
    {
        ASSERT_TRUE(m_screen.soonActive(window, panel));
        m_screen.press({"ctrl+a"});
        m_screen.type(file.native());
        m_screen.press({"Return"});
        ASSERT_TRUE(m_screen.soonActive(window));
    }
    void quit(Program& window)
    {
        m_screen.press({"ctrl+q"});
        EXPECT_EQ(window.wait().status, 0);
    }

    Screen m_screen;
    DeskWindow m_desk{m_screen};

private:
    using Arguments = std::vector<std::string>;
};

/// A frame that is sought takes its time, so that the picture may follow the field.
TEST_F(Desk, ThePictureIsTheFrameThatTheTimecodeFieldNames)
{
    Program window = open({film()});
    ASSERT_TRUE(soonReady(window));
    m_screen.press({"Right", "Right", "Right"});
    EXPECT_TRUE(m_desk.soonShows(3));
    m_screen.press({"shift+Right", "Left"});
    EXPECT_TRUE(m_desk.soonShows(12));
    m_screen.press({"End"});
    EXPECT_TRUE(m_desk.soonShows(lastFrame));
    m_screen.press({"Left"});
    EXPECT_TRUE(m_desk.soonShows(lastFrame - 1));
    m_screen.press({"Home"});
    EXPECT_TRUE(m_desk.soonShows(0));
    for (const double share : {0.71, 0.13, 0.968, 0.44, 0.45, 0.02}) {
        const QPoint place = m_desk.onTimeline(share);
        m_screen.click(place);
        EXPECT_TRUE(m_desk.soonShows(m_desk.frameAt(place, lastFrame))) << share;
    }
    m_screen.drag(
        {m_desk.onTimeline(0.02), m_desk.onTimeline(0.5), m_desk.onTimeline(0.81),
         m_desk.onTimeline(0.33)},
        [&](QPoint place) { EXPECT_TRUE(m_desk.soonShows(m_desk.frameAt(place, lastFrame))); });
    quit(window);
}

TEST_F(Desk, PlaysAndShuttlesAndStopsOnTheFrameThatItNames)
{
#if defined(VANTROQUE_SANITIZED)
    constexpr std::size_t some = 2; // such programs show few frames a second
#else
    constexpr std::size_t some = 8;
#endif
    Program window = open({film("40")}); // A slow machine does not get to its end meanwhile.
    ASSERT_TRUE(soonReady(window));
    const auto runAndStop = [&](const std::vector<std::string>& run, const std::string& stop) {
        m_screen.press(run);
        const auto seen = m_desk.passing(some);
        m_screen.press({stop});
        EXPECT_EQ(seen.size(), some);
        const auto stopped = m_desk.soonAgreed();
        EXPECT_TRUE(stopped);
        m_screen.press({"Right"});
        EXPECT_TRUE(m_desk.soonShows(stopped.value_or(0) + 1)) << "it has really stopped there";
        return std::pair(seen, stopped.value_or(0));
    };
    const auto [played, afterPlaying] = runAndStop({"space"}, "space");
    ASSERT_FALSE(played.empty());
    EXPECT_TRUE(std::ranges::is_sorted(played));
    EXPECT_GE(afterPlaying, played.back());
    const auto [shuttled, afterShuttling] = runAndStop({"l", "l"}, "k");
    ASSERT_FALSE(shuttled.empty());
    EXPECT_TRUE(std::ranges::is_sorted(shuttled));
    EXPECT_GE(afterShuttling, shuttled.back());
    const auto [reversed, afterReversing] = runAndStop({"j"}, "k");
    ASSERT_FALSE(reversed.empty());
    EXPECT_TRUE(std::ranges::is_sorted(reversed, std::greater()));
    EXPECT_LE(afterReversing, reversed.back());
    quit(window);
}

class DeskReview : public Desk {
protected:
    static constexpr int drawnAt = invertedFrom - 1;
    static constexpr int enoughRed = 100; ///< Points of an arrow.

    void openFilm(const Program& window)
    {
        ASSERT_TRUE(m_screen.soonActive(window));
        m_screen.press({"Return"}); // Choose Files
        answer(window, "Add Files", m_film);
        ASSERT_TRUE(m_desk.soonOpen());
    }
    void goToFinding()
    {
        ASSERT_TRUE(soonClicked(u"Detected"_s));
        ASSERT_TRUE(soonClicked(u"inverted"_s));
        ASSERT_TRUE(m_desk.soonShows(invertedFrom));
    }
    /// With the fourth tool of the row in which the note is saved.
    void drawArrow()
    {
        constexpr int tool = 28;
        const QRect field = m_desk.soonFound(u"Leave"_s);
        const QRect save = m_desk.soonFound(u"Save"_s);
        ASSERT_FALSE(field.isEmpty() || save.isEmpty());
        m_screen.click({field.left() + 3 * tool + tool / 2, save.center().y()});
        m_screen.drag(
            {m_desk.inPicture(0.55, 0.4), m_desk.inPicture(0.65, 0.5), m_desk.inPicture(0.7, 0.6)},
            [](QPoint) {});
        EXPECT_TRUE(soonDrawn());
    }
    bool soonDrawn()
    {
        return comesTrue([this] { return DeskWindow::redPoints(m_desk.picture()) > enoughRed; });
    }
    void writeNote()
    {
        ASSERT_TRUE(soonClicked(u"Leave"_s));
        m_screen.type("jackals look dull");
        m_screen.press({"ctrl+Return"});
        ASSERT_TRUE(m_desk.soonSays(u"jackals look dull"_s));
        EXPECT_TRUE(m_desk.soonShows(drawnAt)) << "what is typed is not for the transport";
    }
    void exportStill(const Program& window)
    {
        m_screen.click(m_desk.moreButton());
        m_screen.press({"Down", "Return"}); // Export Still
        answer(window, "Save Still", m_still);
        ASSERT_TRUE(comesTrue([this] { return std::filesystem::exists(m_still); }));
    }
    void approve()
    {
        ASSERT_TRUE(soonClicked(u"Approve"_s));
        ASSERT_TRUE(m_desk.soonSays(u"Approved over"_s));
    }

    const Path m_film = film();
    const Path m_still = m_home / "still.png";
};

TEST_F(DeskReview, IsMadeAndIsThereAtTheNextStart)
{
    {
        Program window = open();
        ASSERT_NO_FATAL_FAILURE(openFilm(window));
        ASSERT_NO_FATAL_FAILURE(goToFinding());
        m_screen.press({"Left"});
        ASSERT_TRUE(m_desk.soonShows(drawnAt));
        EXPECT_EQ(DeskWindow::redPoints(m_desk.picture()), 0);
        ASSERT_NO_FATAL_FAILURE(drawArrow());
        ASSERT_NO_FATAL_FAILURE(writeNote());
        ASSERT_NO_FATAL_FAILURE(exportStill(window));
        ASSERT_NO_FATAL_FAILURE(approve());
        quit(window);
    }
    const QImage still(QString::fromStdString(m_still.native()));
    EXPECT_EQ(numberOn(still), drawnAt);
    EXPECT_GT(DeskWindow::redPoints(still), 0);
    Program window = open();
    ASSERT_TRUE(soonReady(window));
    EXPECT_TRUE(m_desk.soonSays(u"Approved over"_s));
    EXPECT_EQ(DeskWindow::redPoints(m_desk.picture()), 0) << "of another frame";
    ASSERT_TRUE(soonClicked(u"jackals"_s));
    EXPECT_TRUE(m_desk.soonShows(drawnAt));
    EXPECT_TRUE(soonDrawn());
    quit(window);
}

} // namespace
} // namespace vantroque

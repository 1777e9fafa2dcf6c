#include "VantroqueApp/Views/Player/TransportKeys.h"

#include "Views/PaneFixture.h"

#include <QClipboard>
#include <QLineEdit>
#include <QVBoxLayout>

// The keys of the transport, pressed in real windows.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A view that keeps what comes to it.
class Listener : public QWidget {
public:
    using QWidget::QWidget;

    std::vector<int> keys;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() != Qt::Key_Shift && event->key() != Qt::Key_Control
            && event->key() != Qt::Key_Alt && event->key() != Qt::Key_Meta)
            keys.push_back(event->key());
    }
};

/// A window that notes what is asked of it, with a view and a text field.
class TransportKeysTest : public testing::Test {
protected:
    TransportKeysTest()
    {
        Look::use(AppearanceMode::dark);
        auto* layout = new QVBoxLayout(&m_window);
        layout->addWidget(m_view);
        layout->addWidget(m_text);
        m_view->setFocusPolicy(Qt::StrongFocus);
        m_window.show();
        m_view->setFocus();
    }
    static QString number(double value) { return QString::number(value); }
    TransportActions actions()
    {
        return {.isComposing = [this] { return m_isComposing; },
                .timecode = [] { return Timecode(42, FrameRate::television()); },
                .togglePlay = [this] { m_done << u"toggle"_s; },
                .shuttle =
                    [this](ShuttleState::Direction direction, bool slow) {
                        const bool forward = direction == ShuttleState::Direction::forward;
                        m_done << (forward ? u"forward"_s : u"backward"_s)
                                      + (slow ? u" slow"_s : QString());
                    },
                .shuttleStop = [this] { m_done << u"stop"_s; },
                .step = [this](std::int64_t by) { m_done << u"step %1"_s.arg(by); },
                .jump = [this](bool end) { m_done << (end ? u"end"_s : u"start"_s); },
                .seek = [this](const Timecode& time) { m_done << u"seek "_s + time.text(); },
                .zoom = nullptr,
                .escape = nullptr,
                .fullScreen = nullptr,
                .undo = nullptr,
                .redo = nullptr,
                .toMark = nullptr};
    }
    void offer(TransportActions actions)
    {
        m_keys = std::make_unique<TransportKeysModifier>(m_window, std::move(actions));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(m_window.focusWidget(), key, modifiers);
    }

    QWidget m_window;
    Listener* m_view = new Listener(&m_window);
    QLineEdit* m_text = new QLineEdit(&m_window);
    bool m_isComposing = false;
    QStringList m_done;
    std::unique_ptr<TransportKeysModifier> m_keys;
};

TEST_F(TransportKeysTest, GoToTheTransportBeforeAnyView)
{
    offer(actions());
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_J, Qt::Key_L, Qt::Key_Left, Qt::Key_Right,
                              Qt::Key_Home, Qt::Key_End})
        press(key);
    press(Qt::Key_Left, Qt::ShiftModifier);
    press(Qt::Key_Right, Qt::ShiftModifier | Qt::KeypadModifier);
    EXPECT_THAT(m_done,
                ElementsAre(u"toggle"_s, u"backward"_s, u"forward"_s, u"step -1"_s, u"step 1"_s,
                            u"start"_s, u"end"_s, u"step -10"_s, u"step 10"_s));
    EXPECT_THAT(m_view->keys, IsEmpty());
}

TEST_F(TransportKeysTest, KHeldDownMakesJAndLSlow)
{
    offer(actions());
    QTest::keyPress(m_view, Qt::Key_K);
    EXPECT_TRUE(TransportKeys::shared().kHeld());
    press(Qt::Key_J);
    press(Qt::Key_L);
    QTest::keyRelease(m_view, Qt::Key_K);
    EXPECT_FALSE(TransportKeys::shared().kHeld());
    press(Qt::Key_L);
    EXPECT_THAT(m_done,
                ElementsAre(u"stop"_s, u"backward slow"_s, u"forward slow"_s, u"forward"_s));
}

TEST_F(TransportKeysTest, AKeyThatRepeatsStepsOnButShuttlesOnce)
{
    offer(actions());
    const auto repeat = [&](Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, {}, {}, true);
        QApplication::sendEvent(m_view, &event);
    };
    repeat(Qt::Key_Right);
    repeat(Qt::Key_Right);
    EXPECT_THAT(m_done, ElementsAre(u"step 1"_s, u"step 1"_s));
    m_done.clear();
    repeat(Qt::Key_L);
    repeat(Qt::Key_Space);
    EXPECT_THAT(m_done, IsEmpty());
    repeat(Qt::Key_K);
    EXPECT_TRUE(TransportKeys::shared().kHeld());
    EXPECT_THAT(m_done, IsEmpty());
    QTest::keyRelease(m_view, Qt::Key_K);
}

TEST_F(TransportKeysTest, TypingNeverReachesTheTransportAndLetsGoOfK)
{
    offer(actions());
    QTest::keyPress(m_view, Qt::Key_K);
    m_done.clear();
    m_text->setFocus();
    QTest::keyClicks(m_text, u"jkl "_s);
    press(Qt::Key_Left);
    press(Qt::Key_Home);
    EXPECT_EQ(m_text->text(), u"jkl "_s);
    EXPECT_THAT(m_done, IsEmpty());
    EXPECT_FALSE(TransportKeys::shared().kHeld());
    m_view->setFocus();
    press(Qt::Key_L);
    EXPECT_THAT(m_done, ElementsAre(u"forward"_s));
}

TEST_F(TransportKeysTest, RestWhileAnythingIsEntered)
{
    offer(actions());
    QTest::keyPress(m_view, Qt::Key_K);
    m_done.clear();
    {
        const TransportKeysPause sheet;
        const TransportKeysPause field;
        EXPECT_EQ(TransportKeys::shared().editingFields(), 2);
        press(Qt::Key_J);
        EXPECT_FALSE(TransportKeys::shared().kHeld());
        EXPECT_THAT(m_done, IsEmpty());
    }
    EXPECT_EQ(TransportKeys::shared().editingFields(), 0);
    press(Qt::Key_J);
    EXPECT_THAT(m_done, ElementsAre(u"backward"_s));
}

TEST_F(TransportKeysTest, AnotherWindowLetsGoOfK)
{
    offer(actions());
    QTest::keyPress(m_view, Qt::Key_K);
    ASSERT_TRUE(TransportKeys::shared().kHeld());
    QWidget dialog;
    bringToFront(dialog);
    EXPECT_FALSE(TransportKeys::shared().kHeld());
}

TEST_F(TransportKeysTest, WhileANoteIsWrittenArrowsAndLettersAreNotTaken)
{
    offer(actions());
    m_isComposing = true;
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_End, Qt::Key_Space, Qt::Key_J})
        press(key);
    EXPECT_THAT(m_done, IsEmpty());
    EXPECT_THAT(m_view->keys, ElementsAre(Qt::Key_Left, Qt::Key_End, Qt::Key_Space, Qt::Key_J));
}

TEST_F(TransportKeysTest, CtrlCCopiesTheTimecodeAndCtrlVGoesToIt)
{
    offer(actions());
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"00:00:01:17"_s);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_THAT(m_done, ElementsAre(u"seek 00:00:01:17"_s));
}

TEST_F(TransportKeysTest, CtrlVOfWhatIsNoTimeGoesOnToTheView)
{
    offer(actions());
    QApplication::clipboard()->setText(u"a note"_s);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_THAT(m_done, IsEmpty());
    EXPECT_THAT(m_view->keys, ElementsAre(Qt::Key_V));
}

TEST_F(TransportKeysTest, WhatTheWindowDoesNotOfferGoesOn)
{
    offer(actions());
    for (const Qt::Key key :
         {Qt::Key_0, Qt::Key_1, Qt::Key_Plus, Qt::Key_Minus, Qt::Key_F, Qt::Key_Z, Qt::Key_Left})
        press(key, Qt::ControlModifier);
    press(Qt::Key_Escape);
    EXPECT_THAT(m_done, IsEmpty());
    EXPECT_EQ(m_view->keys.size(), 8);
}

TEST_F(TransportKeysTest, WhatIsOfferedIsTakenAndUndoSaysWhetherItDidAnything)
{
    TransportActions all = actions();
    bool undoes = true;
    all.zoom = [this](ZoomCommand command) { m_done << number(static_cast<int>(command)); };
    all.escape = [this] { m_done << u"escape"_s; };
    all.fullScreen = [this] { m_done << u"full"_s; };
    all.undo = [&] { return undoes; };
    all.redo = [] { return true; };
    all.toMark = [this](bool forward) { m_done << (forward ? u"next"_s : u"before"_s); };
    offer(all);
    for (const Qt::Key key :
         {Qt::Key_0, Qt::Key_1, Qt::Key_Equal, Qt::Key_Minus, Qt::Key_F, Qt::Key_Z, Qt::Key_Right})
        press(key, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Underscore, Qt::Key_Z})
        press(key, Qt::ControlModifier | Qt::ShiftModifier);
    press(Qt::Key_Escape);
    EXPECT_THAT(m_done, ElementsAre(u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"full"_s, u"next"_s, u"2"_s,
                                    u"3"_s, u"escape"_s));
    EXPECT_THAT(m_view->keys, IsEmpty());
    undoes = false;
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(m_view->keys, ElementsAre(Qt::Key_Z));
}

TEST_F(TransportKeysTest, OtherModifiersAreNotTaken)
{
    offer(actions());
    press(Qt::Key_J, Qt::ShiftModifier);
    press(Qt::Key_J, Qt::AltModifier);
    press(Qt::Key_Left, Qt::AltModifier);
    press(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    press(Qt::Key_Space, Qt::MetaModifier);
    EXPECT_THAT(m_done, IsEmpty());
    EXPECT_EQ(m_view->keys.size(), 5);
}

TEST_F(TransportKeysTest, BelongToTheWindowThatTheyWerePressedIn)
{
    offer(actions());
    Listener other;
    other.show();
    QTest::keyClick(&other, Qt::Key_J);
    EXPECT_THAT(m_done, IsEmpty());
    EXPECT_THAT(other.keys, ElementsAre(Qt::Key_J));
    EXPECT_EQ(TransportKeys::shared().actionsFor(other), nullptr);
}

TEST_F(TransportKeysTest, AreTakenOnlyWhileTheViewIsOnScreen)
{
    offer(actions());
    m_window.hide();
    EXPECT_EQ(TransportKeys::shared().actionsFor(m_window), nullptr);
    m_window.show();
    EXPECT_NE(TransportKeys::shared().actionsFor(m_window), nullptr);
    QTest::keyPress(m_view, Qt::Key_K);
    m_keys.reset();
    EXPECT_FALSE(TransportKeys::shared().kHeld());
    press(Qt::Key_J);
    EXPECT_THAT(m_view->keys, ElementsAre(Qt::Key_J));
}

using PlayersKeys = PaneTest;

TEST_F(PlayersKeys, LThreeTimesIsFourTimesTheSpeedAndJStartsAnewBackwards)
{
    openPane();
    ASSERT_TRUE(soonOnScreen(0));
    std::vector<double> rates;
    player().seek(50);
    for (const Qt::Key pressed : {Qt::Key_L, Qt::Key_L, Qt::Key_L, Qt::Key_J}) {
        key(pressed);
        rates.push_back(rate());
    }
    EXPECT_THAT(rates, ElementsAre(1, 2, 4, -1));
    EXPECT_FALSE(player().shuttle().isWalking());
}

TEST_F(PlayersKeys, AFileThatCannotPlayYetIsWalked)
{
    m_film.state = PlaybackEngine::State::opening;
    m_film.canPlay = [](double) { return false; };
    openPane();
    key(Qt::Key_L);
    EXPECT_TRUE(player().shuttle().isWalking());
    m_clock.pass(1);
    EXPECT_NEAR(static_cast<double>(frame()), 25, 1);
}

TEST_F(PlayersKeys, ArrowsStepAndCtrlGoesToTheFindingBeforeAndAfter)
{
    openPane({finding(20, 30, u"Too bright"_s), finding(60, 61, u"Too dark"_s)});
    key(Qt::Key_Right);
    EXPECT_EQ(frame(), 1);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(frame(), 20);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(frame(), 60);
    EXPECT_EQ(player().focus().selectedEventID(), u"e60"_s);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(frame(), 60) << "there is none after it";
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(frame(), 20);
    key(Qt::Key_End);
    EXPECT_EQ(frame(), 99);
}

} // namespace
} // namespace vantroque

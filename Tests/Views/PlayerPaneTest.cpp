#include "Captions/EmbeddedCaptions.h"
#include "Support/Media.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Player/DeskInstruments.h"
#include "VantroqueApp/Views/Player/PictureFullScreen.h"
#include "VantroqueApp/Views/Player/PlayButton.h"
#include "VantroqueApp/Views/Player/ScopesPanel.h"
#include "VantroqueApp/Views/Player/TransportRow.h"
#include "VantroqueApp/Views/Player/VerticalDragCatcher.h"
#include "Views/PaintedWords.h"
#include "Views/PaneFixture.h"

#include <QAccessible>
#include <QLabel>
#include <QMenu>
#include <QWindow>

#include <stdexcept>

namespace vantroque {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class PlayerPaneTest : public PaneTest {
protected:
    ToolButton& tool(const QString& name)
    {
        for (ToolButton* button : pane().findChildren<ToolButton*>())
            if (button->accessibleName().startsWith(name))
                return *button;
        throw std::logic_error("no tool of that name");
    }
    /// Beside the notes.
    ScopesPanel& scopesPanel()
    {
        for (ScopesPanel* panel : pane().findChildren<ScopesPanel*>())
            if (!pane().findChild<DeskInstruments*>()->isAncestorOf(panel))
                return *panel;
        throw std::logic_error("a pane without scopes");
    }
    static QStringList entries(QMenu& menu)
    {
        Q_EMIT menu.aboutToShow();
        QStringList texts;
        for (const QAction* action : menu.actions())
            if (!action->isSeparator())
                texts << action->text();
        return texts;
    }
    void choose(QMenu& menu, const QString& text)
    {
        Q_EMIT menu.aboutToShow();
        for (QAction* action : menu.actions())
            if (action->text() == text)
                return action->trigger();
        FAIL() << text.toStdString();
    }
    void dragHandle(int by)
    {
        auto& handle = *pane().findChild<VerticalDragCatcher*>();
        const QPoint from = handle.rect().center();
        QTest::mousePress(&handle, Qt::LeftButton, {}, from);
        QTest::mouseMove(&handle, from + QPoint(0, by));
        QTest::mouseRelease(&handle, Qt::LeftButton, {}, from + QPoint(0, by));
        QApplication::processEvents();
    }
    FullScreenPicture* fullScreen()
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<FullScreenPicture*>(window); found && found->isVisible())
                return found;
        return nullptr;
    }
};

TEST_F(PlayerPaneTest, ThePictureFillsTheWidthAndTheRestKeepsItsRoom)
{
    openPane({}, {720, 852});
    EXPECT_EQ(picture().height(), 360) << "twice as wide as high";
    pane().resize(720, 600);
    EXPECT_TRUE(soon([&] { return picture().height() == 290; })) << picture().height();
}

TEST_F(PlayerPaneTest, TheShareOfThePictureIsDraggedAndRemembered)
{
    openPane();
    dragHandle(-100);
    const int chosen = picture().height();
    EXPECT_NEAR(chosen, 260, 2);
    closePane();
    openPane();
    EXPECT_NEAR(picture().height(), chosen, 1);
    dragHandle(-5000);
    EXPECT_EQ(picture().height(), 120) << "it never goes away";
    dragHandle(5000);
    EXPECT_EQ(picture().height(), pane().height() - 310) << "nor does what is below";
    QTest::mouseDClick(pane().findChild<VerticalDragCatcher*>(), Qt::LeftButton);
    EXPECT_EQ(picture().height(), 360);
    closePane();
    openPane();
    EXPECT_EQ(picture().height(), 360);
}

TEST_F(PlayerPaneTest, TheHandleIsMovedByTheKeyboardToo)
{
    openPane();
    pane().findChild<VerticalDragCatcher*>()->setFocus();
    key(Qt::Key_Up);
    EXPECT_EQ(picture().height(), 344);
    key(Qt::Key_Down);
    EXPECT_EQ(picture().height(), 360);
}

TEST_F(PlayerPaneTest, InTheSmallestWindowNothingOfTheTransportIsCutOff)
{
    openPane({}, {420, 652});
    // The longest words that it has.
    QTest::keyPress(&picture(), Qt::Key_K);
    key(Qt::Key_J);
    QTest::keyRelease(&picture(), Qt::Key_K);
    player().zoom().setZoom(1.2); // of 16 pixels, "3150%"
    QApplication::processEvents();
    EXPECT_THAT(paintedWords(pane()), Contains(u"0.25x rev"_s));
    const auto& row = *pane().findChild<TransportRow*>();
    for (const QWidget* widget : row.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->parentWidget() == &row) {
            EXPECT_TRUE(row.rect().contains(widget->geometry()))
                << widget->accessibleName().toStdString();
            EXPECT_GE(widget->width(), widget->minimumSizeHint().width())
                << widget->accessibleName().toStdString();
        }
    }
    EXPECT_THAT(paintedWords(tool(u"Guides"_s)), IsEmpty()) << "an icon";
    pane().resize(700, 652);
    QApplication::processEvents();
    EXPECT_THAT(paintedWords(tool(u"Guides"_s)), ElementsAre(u"Guides"_s));
}

TEST_F(PlayerPaneTest, ThePlayButtonAndTheSpeedFollowTheShuttle)
{
    openPane();
    auto& play = *pane().findChild<PlayButton*>();
    EXPECT_EQ(play.toolTip(), u"Play or stop  (space).  J K L shuttles"_s);
    QTest::mouseClick(&play, Qt::LeftButton);
    EXPECT_EQ(rate(), 1);
    EXPECT_EQ(play.accessibleName(), u"Stop"_s);
    EXPECT_THAT(paintedWords(pane()), Not(Contains(u"1x"_s)));
    key(Qt::Key_L);
    EXPECT_THAT(paintedWords(pane()), Contains(u"2x"_s));
    key(Qt::Key_J);
    key(Qt::Key_J);
    key(Qt::Key_J);
    EXPECT_THAT(paintedWords(pane()), Contains(u"4x rev"_s));
    key(Qt::Key_K);
    EXPECT_EQ(play.accessibleName(), u"Play"_s);
}

TEST_F(PlayerPaneTest, AFileThatIsShownAsStillsSaysSo)
{
    openPane();
    auto& play = *pane().findChild<PlayButton*>();
    EXPECT_TRUE(play.isEnabled());
    m_film.become(PlaybackEngine::State::failed);
    ASSERT_TRUE(soon([&] { return player().usesFrameStepper(); }));
    QApplication::processEvents();
    EXPECT_FALSE(play.isEnabled());
    EXPECT_EQ(play.toolTip(), u"Playback isn't available for this format"_s);
    QStringList said;
    for (const QLabel* label : pane().findChildren<QLabel*>())
        if (label->isVisible())
            said << label->text();
    EXPECT_THAT(said, Contains(u"This format cannot play here. It steps frame by frame instead. "
                               u"Stills and guides work as usual."_s));
}

TEST_F(PlayerPaneTest, APictureOfHighDynamicRangeIsLabelledAsShownUnmapped)
{
    m_makeEngine = m_film.maker();
    start();
    const auto said = [&](const FileUrl& url) {
        closePane();
        model().files().add({url});
        EXPECT_TRUE(soonIdle());
        model().files().select(model().files().analyses().back().id);
        model().openPlayer().syncPlayer();
        showPane(*model().player());
        QStringList names;
        for (QLabel* label : pane().findChildren<QLabel*>())
            if (label->isVisible())
                names << QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name);
        return names.filter(u"HDR"_s);
    };
    EXPECT_THAT(said(file("pq.mp4", Clips::hdr10Bt2020())),
                ElementsAre(u"HDR (PQ), shown without tone mapping"_s));
    EXPECT_THAT(said(file("hlg.mp4", Clips::hlg())),
                ElementsAre(u"HDR (HLG), shown without tone mapping"_s));
    EXPECT_THAT(said(file("sdr.mp4", Clips::tenBit())), IsEmpty());
}

TEST_F(PlayerPaneTest, TheZoomMenuMarksWhereItIs)
{
    openPane();
    QMenu& menu = *tool(u"Zoom"_s).menu();
    EXPECT_EQ(tool(u"Zoom"_s).toolTip(), u"Zoom the picture for a closer look"_s);
    EXPECT_THAT(entries(menu),
                ElementsAre(u"Fit"_s, u"Double-click the picture to zoom to a spot. Drag to move "
                                      u"around."_s))
        << "16 pixels are enlarged as they are";
    EXPECT_TRUE(menu.actions().front()->isChecked());
    key(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_NE(tool(u"Zoom"_s).text(), u"Fit"_s);
    choose(menu, u"Fit"_s);
    EXPECT_EQ(player().zoom().zoom().scale, 1);
    EXPECT_EQ(tool(u"Zoom"_s).text(), u"Fit"_s);
}

TEST_F(PlayerPaneTest, AToolIsLitWhileThePointerIsOverItAndNotAfterItsMenu)
{
    openPane();
    ToolButton& button = tool(u"Guides"_s);
    const auto seen = [&] { return button.grab().toImage(); };
    QCursor::setPos(pane().mapToGlobal(QPoint(5, 5)));
    const QImage still = seen();
    const QPointF middle = button.rect().center();
    QEnterEvent enter(middle, middle, button.mapToGlobal(middle));
    QApplication::sendEvent(&button, &enter);
    EXPECT_NE(seen(), still);
    button.menu()->popup(button.mapToGlobal(QPoint(0, button.height())));
    button.menu()->close(); // by a press elsewhere
    EXPECT_EQ(seen(), still);
}

TEST_F(PlayerPaneTest, TheFullScreenIsOutOfTheWayWhileAnotherProgramIsInFront)
{
    openPane();
    key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(soon([&] { return fullScreen() != nullptr; }));
    const FullScreenPicture* const window = fullScreen();
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(fullScreen(), window) << "from one window to the next the keyboard is nowhere";
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_TRUE(soon([&] { return fullScreen() == nullptr; }));
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(fullScreen(), window);
    EXPECT_TRUE(window->isFullScreen());
}

TEST_F(PlayerPaneTest, TheGuidesMenuHasWhatThePictureCanHave)
{
    VideoSummary upright = video();
    upright.width = 1080;
    upright.height = 1920;
    upright.activePicture = CropRect{.width = 1080, .height = 1600, .x = 0, .y = 160};
    showPane(open(upright));
    QMenu& menu = *tool(u"Guides"_s).menu();
    QStringList wanted{u"Safe areas (90% / 93%)"_s, u"Thirds and center"_s,
                       u"Detected picture area"_s, u"Platform UI"_s};
    for (const PlatformZone& zone : player().guides().zones())
        wanted << zone.name + u" safe zone"_s;
    wanted << u"4:5 feed crop"_s;
    EXPECT_GT(wanted.size(), 5);
    EXPECT_EQ(entries(menu), wanted);
    choose(menu, u"Safe areas (90% / 93%)"_s);
    choose(menu, wanted[4]);
    EXPECT_TRUE(player().guides().guideOptions().safeAreas);
    EXPECT_EQ(player().guides().guideOptions().platformZoneIDs.size(), 1);
    choose(menu, wanted[4]);
    EXPECT_TRUE(player().guides().guideOptions().platformZoneIDs.empty());
    closePane();
    showPane(open());
    EXPECT_THAT(entries(*tool(u"Guides"_s).menu()),
                ElementsAre(u"Safe areas (90% / 93%)"_s, u"Thirds and center"_s));
}

TEST_F(PlayerPaneTest, ScopesThatAreOnStandUnderTheirTitles)
{
    openPane();
    auto& scopes = scopesPanel();
    EXPECT_FALSE(scopes.isVisible());
    QMenu& menu = *tool(u"Scopes"_s).menu();
    EXPECT_THAT(entries(menu), ElementsAre(u"Waveform"_s, u"RGB parade"_s, u"Vectorscope"_s,
                                           u"Highlight out-of-range picture"_s));
    choose(menu, u"Highlight out-of-range picture"_s);
    EXPECT_FALSE(scopes.isVisible()) << "that lies on the picture";
    choose(menu, u"Waveform"_s);
    choose(menu, u"Vectorscope"_s);
    QApplication::processEvents();
    EXPECT_TRUE(scopes.isVisible());
    EXPECT_THAT(paintedWords(scopes),
                ElementsAre(u"Waveform"_s, u"%"_s, u"100"_s, u"50"_s, u"0"_s, u"Vectorscope"_s,
                            u"R"_s, u"G"_s, u"B"_s, u"Yl"_s, u"Cy"_s, u"Mg"_s))
        << "with their scales";
    EXPECT_LT(scopes.width(), 200) << "a column";
    pane().resize(500, 652);
    QApplication::processEvents();
    EXPECT_GT(scopes.width(), 400) << "a row";
    EXPECT_LT(scopes.height(), 140);
}

TEST_F(PlayerPaneTest, TheMoreMenuTellsOfCaptions)
{
    openPane();
    QMenu& menu = *tool(u"More"_s).menu();
    EXPECT_EQ(tool(u"More"_s).toolTip(),
              u"Captions, and the picture on its own. Drop an .srt on the picture to add it"_s);
    EXPECT_THAT(entries(menu),
                ElementsAre(u"Export Still"_s, u"Export Clean Still"_s, u"Show Captions"_s,
                            u"Add Captions"_s, u"Remove Captions"_s));
    const auto captions =
        m_folder.write("words.srt", "1\n00:00:01,000 --> 00:00:03,000\nMorning comes\n");
    player().captions().loadCaptions(FileUrl::fromPath(captions));
    ASSERT_TRUE(soon([&] { return player().captions().captions() != nullptr; }));
    EXPECT_THAT(entries(menu),
                ElementsAre(u"Export Still"_s, u"Export Clean Still"_s, u"Show Captions"_s,
                            u"Replace Captions"_s, u"Remove Captions"_s,
                            u"1 cue, 00:00:01:00 to 00:00:03:00"_s));
    choose(menu, u"Remove Captions"_s);
    EXPECT_THAT(entries(menu), Contains(u"Add Captions"_s));
}

TEST_F(PlayerPaneTest, TheMoreMenuTellsWhatBecomesOfCaptions)
{
    const QString reading = u"Reading the captions out of the file"_s;
    const EmbeddedCaptionSource english{
        .streamIndex = 2, .codec = u"subrip"_s, .language = u"eng"_s};
    const EmbeddedCaptionSource german{
        .streamIndex = 3, .codec = u"subrip"_s, .language = u"ger"_s};
    VideoSummary summary = video();
    summary.embeddedCaptions = {english, german};
    showPane(
        open({.url = file("subtitled.mkv", Clips::subtitled()), .video = summary}, m_film.maker()));
    QMenu& menu = *tool(u"More"_s).menu();
    choose(menu, EmbeddedCaptions::title(german));
    EXPECT_THAT(entries(menu), Contains(reading));
    ASSERT_TRUE(soon([&] { return player().captions().captions() != nullptr; }));
    EXPECT_THAT(entries(menu),
                AllOf(Contains(EmbeddedCaptions::title(english)),
                      Contains(EmbeddedCaptions::title(german)), Not(Contains(reading))));
    for (const QAction* action : menu.actions())
        if (action->text() == EmbeddedCaptions::title(german)) {
            EXPECT_TRUE(action->isChecked());
        }

    closePane();
    open(playedFile(), m_film.maker());
    bool isOpen = false;
    QObject::connect(&player().notebook(), &Notebook::opened, m_player.get(),
                     [&] { isOpen = true; });
    showPane(player());
    ASSERT_TRUE(soon([&] { return isOpen; }));
    player().captions().restoreCaptions(FileUrl::fromPath("/nowhere/words.srt"));
    ASSERT_TRUE(soon([&] { return player().captions().captionsMissing(); }));
    EXPECT_THAT(entries(*tool(u"More"_s).menu()),
                Contains(u"The caption file is no longer where it was"_s));
}

TEST_F(PlayerPaneTest, WhatWasDoneIsToldOverThePicture)
{
    openPane();
    player().setExportMessage(u"Saved still.png"_s);
    EXPECT_THAT(paintedWords(picture()), Contains(u"Saved still.png"_s));
    player().setExportMessage({});
    EXPECT_THAT(paintedWords(picture()), Not(Contains(u"Saved still.png"_s)));
}

TEST_F(PlayerPaneTest, AStillThatWasSavedCanBeShownInItsFolder)
{
    PlayedFile file = playedFile();
    file.url = FileUrl::fromPath(
        Media::make({"still-to-show.mov", {"-f", "lavfi", "-i", "testsrc=s=320x180:r=25:d=1"}}));
    showPane(open(file, m_film.maker()));
    m_desktop.answer = FileUrl::fromPath(m_folder / "still.png");
    player().exportStill(false);
    const auto show = [&]() -> QAbstractButton* {
        for (auto* button : m_pane->findChildren<QAbstractButton*>())
            if (button->text() == u"Show"_s && button->isVisible())
                return button;
        return nullptr;
    };
    ASSERT_TRUE(soon([&] { return player().exportMessage().has_value(); }));
    ASSERT_TRUE(player().savedStill()) << player().exportMessage()->toStdString();
    ASSERT_NE(show(), nullptr);
    QTest::mouseClick(show(), Qt::LeftButton);
    EXPECT_EQ(m_desktop.shown, std::vector{*m_desktop.answer});
    player().setExportMessage(u"Reading the captions"_s);
    EXPECT_EQ(show(), nullptr);
}

TEST_F(PlayerPaneTest, CtrlFShowsThePictureOnTheWholeScreenUntilEscape)
{
    openPane();
    key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(soon([&] { return fullScreen() != nullptr && fullScreen()->isActiveWindow(); }));
    EXPECT_TRUE(
        soon([&] { return fullScreen()->geometry() == fullScreen()->screen()->geometry(); }));
    const QSizeF large = player().zoom().zoom().viewportSize;
    EXPECT_EQ(large, QSizeF(fullScreen()->size()));
    player().seek(42);
    QTest::keyClick(fullScreen()->focusWidget(), Qt::Key_Right);
    EXPECT_EQ(frame(), 43) << "its keys are those of the player";
    QTest::keyClick(fullScreen()->focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(soon([&] { return fullScreen() == nullptr; }));
    EXPECT_TRUE(soon([&] { return player().zoom().zoom().viewportSize == picture().size(); }));
    EXPECT_TRUE(soon([&] { return picture().hasFocus(); }));
}

TEST_F(PlayerPaneTest, FullScreensTransportHidesItselfAndComesBackWithThePointer)
{
    openPane();
    key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(soon([&] { return fullScreen() != nullptr; }));
    auto* transport = fullScreen()->findChild<QWidget*>(u"fullScreenTransport"_s);
    EXPECT_TRUE(transport->isVisible());
    EXPECT_TRUE(soon([&] { return !transport->isVisible(); }));
    EXPECT_EQ(fullScreen()->cursor().shape(), Qt::BlankCursor);
    // Straight to this window: without a window manager the one below it may count as on top.
    QTest::mouseMove(fullScreen()->windowHandle(), QPoint(300, 200));
    EXPECT_TRUE(soon([&] { return transport->isVisible(); }));
    closePane(); // the whole of it goes at once
    EXPECT_EQ(fullScreen(), nullptr);
}

TEST_F(PlayerPaneTest, EveryControlHasANameAndIsReachedByTheKeyboard)
{
    openPane({finding(20, 40, u"Too bright"_s)});
    QStringList reached;
    const QWidget* begin = pane().focusWidget();
    do {
        reached << pane().focusWidget()->accessibleName();
        key(Qt::Key_Tab);
    } while (pane().focusWidget() != begin && reached.size() < 20);
    EXPECT_THAT(reached, ElementsAre(u"Picture"_s, u"Timeline"_s, u"Play"_s, u"Timecode"_s,
                                     u"Next problem by time"_s, u"Zoom, Fit"_s, u"Guides"_s,
                                     u"Scopes"_s, u"More"_s, u"Height of the picture"_s));
}

} // namespace
} // namespace vantroque

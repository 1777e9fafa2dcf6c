#include "Model/PlayerFixture.h"

#include "Draw/FramePainter.h"
#include "Tools/FrameExporter.h"

// What lies on the picture of a player, how close it is looked at, and stills of it.

namespace vantroque {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

class PlayerOverlay : public PlayerTest {
protected:
    static SignalEvent event(SignalEvent::Kind kind, std::int64_t number,
                             std::optional<std::int64_t> end = {})
    {
        return {.id = u"e"_s + QString::number(number),
                .kind = kind,
                .frame = number,
                .endFrame = end,
                .verdict = Verdict::warn,
                .box = NormalizedRect{0.1, 0.2, 0.3, 0.4}};
    }
    static VideoSummary portrait()
    {
        VideoSummary summary = video();
        summary.width = 1080;
        summary.height = 1920;
        return summary;
    }
};

TEST_F(PlayerOverlay, AFindingIsRingedOnItsFrames)
{
    open();
    player().goTo(event(SignalEvent::Kind::levels, 20, 30));
    EXPECT_EQ(frame(), 20);
    EXPECT_EQ(player().focus().selectedEventID(), u"e20"_s);
    for (const auto& [number, isRinged] :
         {std::pair(19, false), std::pair(20, true), std::pair(30, true), std::pair(31, false)}) {
        player().seek(number);
        EXPECT_EQ(player().overlay().finding.has_value(), isRinged) << number;
    }
    player().goTo(event(SignalEvent::Kind::levels, 40));
    EXPECT_TRUE(player().overlay().finding);
    EXPECT_EQ(player().overlay().finding->verdict, Verdict::warn);
    player().seek(41);
    EXPECT_FALSE(player().overlay().finding) << "without an end it is one frame";
    SignalEvent unplaced = event(SignalEvent::Kind::blackFrame, 50);
    unplaced.box.reset();
    player().goTo(unplaced);
    EXPECT_FALSE(player().overlay().finding);
}

TEST_F(PlayerOverlay, ANoteTakesTheRingAway)
{
    open();
    player().goTo(event(SignalEvent::Kind::levels, 20));
    const ReviewComment note{.id = QUuid::createUuid(), .frame = 20, .frameRate = 25};
    player().goTo(note);
    EXPECT_FALSE(player().overlay().finding);
    EXPECT_EQ(player().focus().selectedEventID(), std::nullopt);
    EXPECT_EQ(player().focus().selectedCommentID(), note.id);
    player().goTo(event(SignalEvent::Kind::levels, 20));
    EXPECT_EQ(player().focus().selectedCommentID(), std::nullopt);
}

TEST_F(PlayerOverlay, AFindingTurnsOnWhatMustBeSeen)
{
    open(portrait());
    EXPECT_EQ(player().guides().guideOptions(), GuideOptions());
    player().goTo(event(SignalEvent::Kind::duplicateFrame, 5));
    EXPECT_EQ(player().guides().guideOptions(), GuideOptions()) << "of others nothing";
    player().goTo(event(SignalEvent::Kind::safeArea, 10));
    EXPECT_TRUE(player().guides().guideOptions().safeAreas);
    EXPECT_THAT(player().guides().guideOptions().platformZoneIDs, IsEmpty());
    player().goTo(event(SignalEvent::Kind::safeZone, 10));
    std::set<QString> zones;
    for (const PlatformZone& zone : player().guides().zones())
        zones.insert(zone.id);
    EXPECT_THAT(zones, Contains(PlatformZoneCatalog::tiktok().id));
    EXPECT_EQ(player().guides().guideOptions().platformZoneIDs, zones);
    EXPECT_GT(player().overlay().guides.size(), 2);
    open(portrait());
    EXPECT_EQ(player().guides().guideOptions().platformZoneIDs, zones) << "and is remembered";
    EXPECT_GT(player().overlay().guides.size(), 2);
}

TEST_F(PlayerOverlay, GuidesOfAnotherShapeAreRememberedAndNotDrawn)
{
    open(portrait());
    player().guides().showZones();
    open(video());
    EXPECT_FALSE(player().guides().guideOptions().platformZoneIDs.empty());
    EXPECT_THAT(player().overlay().guides, IsEmpty());
}

TEST_F(PlayerOverlay, ZoomCommandsKeepTheirStops)
{
    VideoSummary summary = video();
    summary.width = 1920;
    summary.height = 1080;
    open(summary);
    PictureZoom& zoom = player().zoom();
    zoom.apply(ZoomCommand::actualPixels);
    EXPECT_EQ(zoom.zoom().scale, 1) << "nothing is known of the screen";
    zoom.setContainerSize({960, 540});
    EXPECT_FALSE(zoom.showsActualPixels());
    zoom.apply(ZoomCommand::actualPixels);
    EXPECT_EQ(zoom.zoom().scale, 2);
    EXPECT_TRUE(zoom.showsActualPixels());
    zoom.apply(ZoomCommand::zoomIn);
    EXPECT_EQ(zoom.zoom().scale, 4);
    zoom.apply(ZoomCommand::zoomOut);
    zoom.apply(ZoomCommand::zoomOut);
    zoom.apply(ZoomCommand::zoomOut);
    EXPECT_EQ(zoom.zoom().scale, 1) << "never smaller than fitted";
    zoom.apply(ZoomCommand::zoomIn);
    zoom.apply(ZoomCommand::fit);
    EXPECT_EQ(zoom.zoom().scale, 1);
    zoom.setContainerSize({3840, 2160});
    zoom.apply(ZoomCommand::actualPixels);
    EXPECT_EQ(zoom.zoom().scale, 1) << "fitted it is larger than its pixels";
}

TEST_F(PlayerOverlay, AResizedWindowKeepsTheZoomAndThePlace)
{
    VideoSummary summary = video();
    summary.width = 1920;
    summary.height = 1080;
    open(summary);
    PictureZoom& zoom = player().zoom();
    zoom.setContainerSize({960, 540});
    zoom.setZoom(4, QPointF(1, 1));
    const QPointF corner = zoom.zoom().pan;
    EXPECT_LT(corner.x(), 0);
    int changes = 0;
    QObject::connect(&zoom, &PictureZoom::changed, &zoom, [&] { ++changes; });
    zoom.setContainerSize({960, 540});
    zoom.setContainerSize({0, 540});
    EXPECT_EQ(changes, 0);
    zoom.setContainerSize({480, 270});
    EXPECT_EQ(zoom.zoom().scale, 4);
    EXPECT_EQ(zoom.zoom().pictureSize, QSizeF(480, 270));
    EXPECT_NEAR(zoom.zoom().pan.x(), corner.x() / 2, 1e-9) << "no further than the edge";
    zoom.toggleZoom({0.5, 0.5});
    EXPECT_EQ(zoom.zoom().scale, 1);
    zoom.pan({50, 50}, {});
    EXPECT_EQ(zoom.zoom().pan, QPointF()) << "a picture that fits cannot be panned";
}

TEST_F(PlayerOverlay, AnAnamorphicPictureIsFittedInItsShape)
{
    VideoSummary summary = video();
    summary.width = 720;
    summary.height = 576;
    summary.pixelAspect = 64.0 / 45;
    open(summary);
    player().zoom().setContainerSize({1024, 1024});
    EXPECT_NEAR(player().zoom().zoom().pictureSize.height(), 576, 1);
}

class PlayerStill : public PlayerOverlay {
protected:
    /// A real film, on the still path.
    void openFilm(const VideoSummary& summary)
    {
        openStills({.url = file("film 30s.mp4"), .video = summary});
        player().seek(12);
    }
    static VideoSummary filmVideo()
    {
        return {.width = 320, .height = 180, .frameRate = 25, .durationSeconds = 1};
    }
    QImage saved() { return QImage(QString::fromStdString(m_desktop.answer->path().native())); }
    bool soonTold()
    {
        return soon([&] { return player().exportMessage().has_value(); });
    }
};

TEST_F(PlayerStill, CleanIsTheFrameItself)
{
    openFilm(filmVideo());
    player().guides().setGuideOptions({.thirds = true});
    m_desktop.answer = FileUrl::fromPath(m_folder / "still.png");
    player().exportStill(false);
    EXPECT_THAT(m_desktop.proposed, ElementsAre(u"film 30s_00-00-00-12.png"_s));
    ASSERT_TRUE(soonTold());
    EXPECT_EQ(player().exportMessage(), u"Saved still.png"_s);
    EXPECT_EQ(m_desktop.questions.back().beside, player().file().url);
    player().showSavedStill();
    EXPECT_EQ(m_desktop.shown, std::vector{*m_desktop.answer});
    const auto frame = FrameExporter::image(player().file().url, 12 / 25.0, "x.png");
    ASSERT_TRUE(frame);
    EXPECT_EQ(contents(m_desktop.answer->path()), *frame);
}

TEST_F(PlayerStill, WithGuidesIsWhatWasSeen)
{
    openFilm(filmVideo());
    player().guides().setGuideOptions({.thirds = true});
    player().goTo(event(SignalEvent::Kind::levels, 12));
    m_desktop.answer = FileUrl::fromPath(m_folder / "drawn.png");
    player().exportStill(true);
    ASSERT_TRUE(soonTold());
    EXPECT_EQ(player().exportMessage(), u"Saved drawn.png"_s);
    const auto clean = FrameExporter::image(player().file().url, 12 / 25.0, "x.png");
    Overlay guides;
    guides.guides = player().guides().guides();
    ASSERT_THAT(guides.guides, SizeIs(5));
    const QImage expected = FramePainter::burnIn(QImage::fromData(*clean), guides, {320, 180});
    EXPECT_EQ(saved().convertToFormat(QImage::Format_RGB32),
              expected.convertToFormat(QImage::Format_RGB32));
}

TEST_F(PlayerStill, OfAnAnamorphicPictureHasItsShape)
{
    VideoSummary summary = filmVideo();
    summary.pixelAspect = 2;
    openFilm(summary);
    player().guides().setGuideOptions({.thirds = true});
    m_desktop.answer = FileUrl::fromPath(m_folder / "wide.png");
    player().exportStill(true);
    ASSERT_TRUE(soonTold());
    EXPECT_EQ(saved().size(), QSize(640, 180));
}

TEST_F(PlayerStill, ThatCannotBeMadeIsToldWhy)
{
    openFilm(filmVideo());
    m_desktop.answer = FileUrl::fromPath(m_folder / "no/such/folder/still.png");
    player().exportStill(false);
    ASSERT_TRUE(soonTold());
    EXPECT_TRUE(player().exportMessage()->startsWith(u"Could not export the still: "_s))
        << player().exportMessage()->toStdString();
}

TEST_F(PlayerStill, WithoutAPlaceIsNone)
{
    openFilm(filmVideo());
    player().exportStill(true);
    EXPECT_EQ(player().exportMessage(), std::nullopt);
}

} // namespace
} // namespace vantroque

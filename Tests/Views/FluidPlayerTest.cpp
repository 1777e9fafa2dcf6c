#include "Model/FilmFixture.h"
#include "Support/Watchdog.h"
#include "VantroqueApp/Views/Notes/CommentsPanel.h"
#include "VantroqueApp/Views/Notes/NoteField.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/PlayerPane.h"
#include "VantroqueApp/Views/Player/Timeline.h"
#include "VantroqueApp/Views/Style/Look.h"

#include <QApplication>
#include <QMouseEvent>

#include <cmath>

namespace vantroque {
namespace {

/// Two seconds in full HD, with bars that are out of range.
std::filesystem::path film()
{
    return Media::make({"fluid-1080.mp4",
                        {"-f", "lavfi", "-i", "smptehdbars=size=1920x1080:rate=25:duration=2",
                         "-vf", "drawbox=x=t*400:y=200:w=300:h=200:color=white:t=fill", "-pix_fmt",
                         "yuv420p", "-c:v", "libx264", "-preset", "ultrafast", "-g", "12"}});
}

/// A player of a real file with everything on it: all guides and scopes, captions that change, and
/// a finding with a ring at every frame.
class FluidPlayer : public Film {
protected:
    FluidPlayer() { Look::use(AppearanceMode::dark); }
    ~FluidPlayer() override { m_pane.reset(); }

    void openAll()
    {
        const FileUrl url = FileUrl::fromPath(film());
        const auto media = Prober::probe(url, Prober::Captions::leftOut);
        ASSERT_TRUE(media);
        VideoSummary summary = *Analyzer::report(*media, {}).video;
        summary.activePicture = CropRect{.width = 1920, .height = 800, .x = 0, .y = 140};
        openInRealTime({.url = url, .video = summary});
        player().setReport(findings());
        player().scopes().setScopeOptions(
            {.waveform = true, .parade = true, .vectorscope = true, .outOfRange = true});
        std::set<QString> zones;
        for (const PlatformZone& zone : player().guides().zones())
            zones.insert(zone.id);
        player().guides().setGuideOptions({.safeAreas = true,
                                           .thirds = true,
                                           .detectedPicture = true,
                                           .platformZoneIDs = zones,
                                           .feedCrop = true});
        player().captions().loadCaptions(FileUrl::fromPath(captions()));
        m_pane = std::make_unique<PlayerPane>(player(), m_settings);
        m_pane->setBelow(new CommentsPanel(player(), m_author));
        m_pane->resize(1280, 1000);
        m_pane->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_pane.get(), 60'000));
        player().goTo(player().detectedEvents().front());
        ASSERT_TRUE(m_dog.run([&] {
            return player().isReady() && player().captions().captions() != nullptr
                   && player().notebook().isOpen() && player().shown() && isWhole()
                   && !player().scopes().scopeImages().zebra.isNull();
        }));
        rest();
    }
    static PlayerController::Report findings()
    {
        auto report = std::make_shared<FileReport>();
        report->events.emplace();
        for (int i = 0; i < 200; ++i)
            report->events->push_back({.id = QString::number(i),
                                       .kind = SignalEvent::Kind::levels,
                                       .frame = i / 4,
                                       .endFrame = 49,
                                       .verdict = Verdict::fail,
                                       .text = u"Luma beyond the limits"_s,
                                       .box = NormalizedRect{0.1, 0.2, 0.3, 0.4}});
        return report;
    }
    std::filesystem::path captions()
    {
        return m_folder.write("words.srt", "1\n00:00:00,000 --> 00:00:00,500\nMorning comes\n\n"
                                           "2\n00:00:00,500 --> 00:00:01,000\n- when you say so.\n"
                                           "- And not before.\n\n"
                                           "3\n00:00:00,900 --> 00:00:02,000\n早上好，世界\n");
    }
    void rest()
    {
        m_dog.settle();
        m_dog.begin();
    }
    PictureView& picture() { return m_pane->picture(); }
    bool isWhole() { return picture().isOverlayWhole(); }
    void move(QWidget& widget, QPointF to)
    {
        QMouseEvent event(QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton,
                          Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &event);
        m_dog.settle(2);
    }
    void press(QWidget& widget, QPointF at)
    {
        QTest::mousePress(&widget, Qt::LeftButton, {}, at.toPoint());
    }
    void release(QWidget& widget, QPointF at)
    {
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, at.toPoint());
        m_dog.settle(2);
    }
    /// On the picture, as a hand draws it.
    QPointF onStroke(int point, double height)
    {
        const QRectF rect = picture().pictureRect();
        return {rect.left() + rect.width() * (0.5 + 0.4 * std::sin(point * 0.011)),
                rect.top() + rect.height() * (height + 0.1 * std::sin(point * 0.05))};
    }
    void drawStroke(int points, double height)
    {
        press(picture(), onStroke(0, height));
        for (int point = 1; point < points; ++point)
            move(picture(), onStroke(point, height));
        release(picture(), onStroke(points, height));
    }
    void expectFluid()
    {
        EXPECT_EQ(m_dog.tooLong(), 0)
            << std::chrono::duration<double, std::milli>(m_dog.longestWork()).count() << " ms";
    }

    const NoteAuthor m_author{m_settings};
    std::unique_ptr<PlayerPane> m_pane;
    Watchdog m_dog;
};

TEST_F(FluidPlayer, WhilePlaying)
{
    openAll();
    player().togglePlay();
    ASSERT_TRUE(m_dog.run([&] { return frame() > 40; }));
    player().togglePlay();
    EXPECT_TRUE(m_dog.run([&] { return isWhole(); }));
    expectFluid();
}

TEST_F(FluidPlayer, WhileScrubbing)
{
    openAll();
    auto& timeline = *m_pane->findChild<Timeline*>();
    const auto placeOf = [&](int frame) {
        return QPointF(timeline.marks().placeOf(frame), timeline.height() - 3);
    };
    press(timeline, placeOf(0));
    for (int i = 0; i <= 98; ++i)
        move(timeline, placeOf(i < 50 ? i : 98 - i));
    release(timeline, placeOf(0));
    EXPECT_TRUE(m_dog.run([&] { return player().shown()->frame == frame() && isWhole(); }));
    expectFluid();
}

TEST_F(FluidPlayer, WhileFortyStrokesAreDrawn)
{
    openAll();
    player().notebook().setTool(AnnotationTool::pen);
    for (int stroke = 0; stroke < 40; ++stroke)
        drawStroke(12, 0.2 + 0.015 * stroke);
    EXPECT_THAT(player().notebook().draftStrokes(), testing::SizeIs(40));
    while (player().notebook().undoDrawing())
        m_dog.settle(2);
    while (player().notebook().redoDrawing())
        m_dog.settle(2);
    EXPECT_THAT(player().notebook().draftStrokes(), testing::SizeIs(40));
    EXPECT_TRUE(m_dog.run([&] { return isWhole(); }));
    expectFluid();
}

TEST_F(FluidPlayer, WhileALongStrokeIsDrawn)
{
    openAll();
    player().notebook().setTool(AnnotationTool::pen);
    drawStroke(800, 0.5);
    EXPECT_TRUE(m_dog.run([&] { return isWhole(); }));
    expectFluid();
}

TEST_F(FluidPlayer, WhileANoteIsTyped)
{
    openAll();
    auto& field = *m_pane->findChild<NoteField*>();
    QTest::mouseClick(field.viewport(), Qt::LeftButton);
    const QString note = u"The title sits too low in this shot. Please lift it by a fifth. "_s;
    for (int time = 0; time < 5; ++time)
        for (const QChar letter : note) {
            QTest::keyClick(&field, letter.toLatin1());
            m_dog.settle(2);
        }
    QTest::keyClick(&field, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(m_dog.run([&] { return !player().notebook().comments().empty(); }));
    expectFluid();
}

TEST_F(FluidPlayer, WhileTheWindowIsResized)
{
    openAll();
    for (int by = 0; by < 60; ++by) {
        m_pane->resize(1280 - 8 * by, 1000 - 4 * by);
        m_dog.settle(2);
    }
    EXPECT_TRUE(m_dog.run([&] { return isWhole(); }));
    expectFluid();
}

TEST_F(FluidPlayer, WhileThePictureIsZoomedAndMoved)
{
    openAll();
    for (int step = 0; step < 60; ++step) {
        const QPointF anchor(0.5 + 0.3 * std::sin(step * 0.2), 0.5);
        player().zoom().setZoom(1 + 0.1 * step, anchor);
        m_dog.settle(2);
    }
    const QPointF from = picture().rect().center();
    press(picture(), from);
    for (int step = 0; step < 60; ++step)
        move(picture(), from + QPointF(step * 3, step));
    release(picture(), from);
    EXPECT_TRUE(m_dog.run([&] { return isWhole(); }));
    expectFluid();
}

} // namespace
} // namespace vantroque

#include "Views/PaneFixture.h"

#include "Draw/FramePainter.h"
#include "VantroqueApp/Views/Player/DrawnStroke.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPointingDevice>
#include <QTabletEvent>
#include <QWheelEvent>

namespace vantroque {
namespace {

using testing::SizeIs;

class PictureViewTest : public PaneTest {
protected:
    /// Of the picture that is twice as wide as high.
    QPoint at(double x, double y)
    {
        const QRectF rect = picture().pictureRect();
        return QPointF(rect.left() + x * rect.width(), rect.top() + y * rect.height()).toPoint();
    }
    QPointF placeAt(const QPoint& point) { return player().zoom().zoom().normalizedPoint(point); }
    void wheel(const QPoint& point, int degrees, Qt::KeyboardModifiers modifiers)
    {
        QWheelEvent event(point, picture().mapToGlobal(point), {}, QPoint(0, degrees * 8), {},
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&picture(), &event);
    }
    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(&picture(), button, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, picture().mapToGlobal(to), Qt::NoButton, button,
                         {});
        QApplication::sendEvent(&picture(), &move);
        QTest::mouseRelease(&picture(), button, {}, to);
    }
    /// All that lies on the picture in the end.
    QImage whole()
    {
        EXPECT_TRUE(soon([&] { return picture().isOverlayWhole(); }));
        return seen();
    }
    /// What shows at once.
    QImage seen() { return picture().grab().toImage().convertToFormat(QImage::Format_RGB32); }
    /// The same drawn at once.
    QImage drawnOn(QImage ground, const Overlay& overlay)
    {
        QPainter painter(&ground);
        FramePainter::draw(
            painter, overlay, picture().pictureRect(),
            player().zoom().zoom().pictureSize.height() / FramePainter::referenceRows, 1);
        return ground;
    }
    /// How far two pictures are apart where they are furthest.
    static int difference(const QImage& one, const QImage& other)
    {
        int most = 0;
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x) {
                const QColor a = one.pixelColor(x, y);
                const QColor b = other.pixelColor(x, y);
                most = std::max({most, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                                 std::abs(a.blue() - b.blue())});
            }
        return most;
    }
    bool drop(const QString& file)
    {
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {});
        QApplication::sendEvent(&picture(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropped({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {});
        QApplication::sendEvent(&picture(), &dropped);
        return true;
    }
};

TEST_F(PictureViewTest, ShowsThePictureOfTheFrameThatTheFieldNames)
{
    openPane();
    for (const std::int64_t number : {0, 7, 42, 99}) {
        player().seek(number);
        ASSERT_TRUE(soonOnScreen(number));
        const QImage seen = picture().grab().toImage();
        EXPECT_EQ(qGreen(seen.pixel(at(0.5, 0.5) * seen.devicePixelRatio())), number);
        EXPECT_EQ(timecodeField().accessibleDescription(),
                  Timecode(number, FrameRate::television()).text());
    }
}

TEST_F(PictureViewTest, TheWheelWithCtrlKeepsWhatIsUnderThePointer)
{
    openPane();
    const QPoint point = at(0.7, 0.4);
    const QPointF before = placeAt(point);
    wheel(point, 30, Qt::ControlModifier);
    wheel(point, 30, Qt::ControlModifier);
    EXPECT_NEAR(player().zoom().zoom().scale, 4, 0.01);
    EXPECT_NEAR(placeAt(point).x(), before.x(), 0.002);
    EXPECT_NEAR(placeAt(point).y(), before.y(), 0.002);
    for (int i = 0; i < 4; ++i)
        wheel(point, -30, Qt::ControlModifier);
    EXPECT_EQ(player().zoom().zoom().scale, 1);
    EXPECT_EQ(player().zoom().zoom().pan, QPointF());
}

TEST_F(PictureViewTest, ADoubleClickLooksAtASpotAndADragMovesThePicture)
{
    openPane();
    drag(at(0.5, 0.5), at(0.6, 0.5));
    EXPECT_EQ(player().zoom().zoom().pan, QPointF()) << "a picture that fits stays";
    const QPointF spot = placeAt(at(0.4, 0.5));
    QTest::mouseDClick(&picture(), Qt::LeftButton, {}, at(0.4, 0.5));
    EXPECT_TRUE(player().zoom().zoom().isZoomed());
    EXPECT_NEAR(placeAt(picture().rect().center()).x(), spot.x(), 0.01);
    const QPointF before = player().zoom().zoom().pan;
    drag({200, 200}, {220, 190});
    EXPECT_EQ(player().zoom().zoom().pan - before, QPointF(20, -10));
    QTest::mouseDClick(&picture(), Qt::LeftButton, {}, {100, 100});
    EXPECT_FALSE(player().zoom().zoom().isZoomed());
}

TEST_F(PictureViewTest, StrokesLieInThePicturesOwnPlacesAtAnyZoom)
{
    openPane();
    player().notebook().setTool(AnnotationTool::arrow);
    player().notebook().setInk(AnnotationStroke::Ink::amber);
    for (const double zoom : {1.0, 3.0}) {
        player().zoom().setZoom(zoom, QPointF(0.5, 0.5));
        const QPoint from = at(0.45, 0.45);
        const QPoint to = at(0.55, 0.5);
        const QPointF wanted = placeAt(to);
        drag(from, to);
        const auto& stroke = player().notebook().draftStrokes().back();
        EXPECT_EQ(stroke.tool, AnnotationStroke::Tool::arrow);
        EXPECT_EQ(stroke.ink, AnnotationStroke::Ink::amber);
        ASSERT_THAT(stroke.points, SizeIs(2));
        EXPECT_NEAR(stroke.points[0].x, 0.45, 0.003);
        EXPECT_NEAR(stroke.points[1].x, wanted.x(), 1e-9);
        EXPECT_NEAR(stroke.points[1].y, wanted.y(), 1e-9);
    }
    EXPECT_TRUE(player().notebook().isComposing());
}

TEST_F(PictureViewTest, APenFollowsThePointerAndStopsThePlayer)
{
    openPane();
    key(Qt::Key_L);
    player().notebook().setTool(AnnotationTool::pen);
    QTest::mousePress(&picture(), Qt::LeftButton, {}, at(0.2, 0.2));
    EXPECT_EQ(rate(), 0);
    for (const double x : {0.3, 0.4, 0.5}) {
        const QPoint to = at(x, 0.2);
        QMouseEvent move(QEvent::MouseMove, to, picture().mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(&picture(), &move);
    }
    QTest::mouseRelease(&picture(), Qt::LeftButton, {}, at(0.5, 0.2));
    ASSERT_THAT(player().notebook().draftStrokes(), SizeIs(1));
    EXPECT_THAT(player().notebook().draftStrokes()[0].points, SizeIs(4));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(player().notebook().draftStrokes(), SizeIs(0));
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(player().notebook().draftStrokes(), SizeIs(1));
}

TEST_F(PictureViewTest, ATabletDrawsBetweenPixels)
{
    openPane();
    player().notebook().setTool(AnnotationTool::pen);
    const auto send = [&](QEvent::Type type, QPointF point) {
        QTabletEvent event(type, QPointingDevice::primaryPointingDevice(), point, point, 1, 0, 0, 0,
                           0, 0, {}, Qt::LeftButton, Qt::LeftButton);
        QApplication::sendEvent(&picture(), &event);
        EXPECT_TRUE(event.isAccepted());
    };
    send(QEvent::TabletPress, {100.25, 100.5});
    send(QEvent::TabletMove, {101.75, 100.5});
    send(QEvent::TabletRelease, {101.75, 100.5});
    ASSERT_THAT(player().notebook().draftStrokes(), SizeIs(1));
    const auto& points = player().notebook().draftStrokes()[0].points;
    ASSERT_THAT(points, SizeIs(2));
    EXPECT_NEAR((points[1].x - points[0].x) * picture().pictureRect().width(), 1.5, 1e-6);
}

TEST_F(PictureViewTest, ACircleWithoutSizeIsNoDrawingButAPensDotIs)
{
    openPane();
    for (const auto& [tool, strokes] :
         {std::pair(AnnotationTool::ellipse, 0), std::pair(AnnotationTool::pen, 1)}) {
        player().notebook().setTool(tool);
        QTest::mouseClick(&picture(), Qt::LeftButton, {}, at(0.5, 0.5));
        EXPECT_THAT(player().notebook().draftStrokes(), SizeIs(strokes));
    }
}

TEST_F(PictureViewTest, StrokesEndAtThePicturesEdge)
{
    auto stroke =
        DrawnStroke::begun(AnnotationTool::pen, AnnotationStroke::Ink::red, {.x = -0.5, .y = 0.5});
    ASSERT_TRUE(stroke);
    DrawnStroke::extend(*stroke, {.x = 0.5, .y = 7});
    EXPECT_EQ(stroke->points,
              (std::vector<NormalizedPoint>{{.x = 0, .y = 0.5}, {.x = 0.5, .y = 1}}));
    EXPECT_FALSE(DrawnStroke::begun(AnnotationTool::pointer, AnnotationStroke::Ink::red, {}));
}

TEST_F(PictureViewTest, TakesADroppedCaptionFileAndLeavesMediaToTheWindow)
{
    openPane();
    const auto captions =
        m_folder.write("words.srt", "1\n00:00:00,000 --> 00:00:03,000\nMorning comes\n");
    EXPECT_FALSE(drop(u"/films/spot.mov"_s));
    ASSERT_TRUE(drop(QString::fromStdString(captions.native())));
    EXPECT_TRUE(soon([&] { return player().captions().captions() != nullptr; }));
    EXPECT_EQ(player().overlay().captions.size(), 1);
}

constexpr int rounding = 4; // Layers are blended once more.

TEST_F(PictureViewTest, WhatLiesOnThePictureIsThereInTheEndAtAnyZoom)
{
    openPane();
    ASSERT_TRUE(soonOnScreen(0));
    for (const double zoom : {1.0, 3.0}) {
        player().zoom().setZoom(zoom, QPointF(0.5, 0.5));
        player().guides().setGuideOptions({});
        const QImage clean = whole();
        player().guides().setGuideOptions({.safeAreas = true, .thirds = true});
        EXPECT_FALSE(picture().isOverlayWhole());
        const QImage expected = drawnOn(clean, player().overlay());
        EXPECT_GT(difference(expected, clean), 50);
        EXPECT_LE(difference(whole(), expected), rounding);
    }
    player().guides().setGuideOptions({});
    EXPECT_TRUE(picture().isOverlayWhole()) << "what is gone is gone at once";
}

TEST_F(PictureViewTest, AStrokeIsThereFromTheHandThatDrewItOn)
{
    openPane();
    ASSERT_TRUE(soonOnScreen(0));
    const QImage clean = whole();
    player().notebook().setTool(AnnotationTool::arrow);
    drag(at(0.2, 0.3), at(0.6, 0.7));
    Overlay strokes;
    strokes.strokes = player().notebook().draftStrokes();
    ASSERT_THAT(strokes.strokes, SizeIs(1));
    const QImage expected = drawnOn(clean, strokes);
    EXPECT_GT(difference(expected, clean), 50);
    EXPECT_LE(difference(seen(), expected), rounding) << "before its layer is drawn";
    EXPECT_LE(difference(whole(), expected), rounding) << "and after";
    player().notebook().undoDraftStroke();
    EXPECT_EQ(difference(seen(), clean), 0);
}

TEST_F(PictureViewTest, GoesWhileItIsDrawnOn)
{
    for (int time = 0; time < 3; ++time) {
        openPane();
        ASSERT_TRUE(soonOnScreen(0));
        // Others than the time before, which are remembered.
        player().guides().setGuideOptions({.safeAreas = time % 2 == 0, .thirds = true});
        seen();
        EXPECT_FALSE(picture().isOverlayWhole());
        closePane();
    }
}

} // namespace
} // namespace vantroque

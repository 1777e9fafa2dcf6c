#include "Draw/FramePainter.h"

#include "Drawn.h"
#include "Framing/GuideBuilder.h"

#include <limits>

// Reviews and captions are files, and hold anything.

namespace vantroque {
namespace {

using namespace Drawn;
using namespace Qt::StringLiterals;
using Tool = AnnotationStroke::Tool;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

AnnotationStroke stroke(Tool tool, const std::vector<NormalizedPoint>& points)
{
    return {.id = {}, .tool = tool, .points = points, .ink = AnnotationStroke::Ink::white};
}

Overlay of(const std::vector<AnnotationStroke>& strokes)
{
    Overlay overlay;
    overlay.strokes = strokes;
    return overlay;
}

QImage burnt(const Overlay& overlay, QSize size = {320, 180})
{
    return FramePainter::burnIn(blank(size, Qt::black), overlay, size);
}

Overlay everything(QSize size)
{
    Overlay overlay;
    overlay.captions = {CaptionCue::plain(1, 0, 1, u"One line\nof captions"_s)};
    overlay.guides = GuideBuilder::guides({.safeAreas = true,
                                           .thirds = true,
                                           .detectedPicture = true,
                                           .platformZoneIDs = {u"tiktok"_s},
                                           .feedCrop = true},
                                          {size.width(), size.height()},
                                          CropRect{size.width(), size.height(), 0, 0});
    overlay.strokes = {stroke(Tool::arrow, {{0.1, 0.1}, {0.9, 0.9}})};
    overlay.finding = Finding{{0.4, 0.4, 0.2, 0.2}, Verdict::warn, u"here"_s};
    return overlay;
}

TEST(HostileStrokes, PointsThatAreNoNumbersDoNotCount)
{
    const QImage line = burnt(of({stroke(Tool::pen, {{0.1, 0.5}, {0.9, 0.5}})}));
    EXPECT_EQ(burnt(of({stroke(Tool::pen, {{0.1, 0.5}, {nan, 0.2}, {0.9, 0.5}, {0.3, infinity}})})),
              line);
    const QImage empty = burnt({});
    EXPECT_EQ(burnt(of({stroke(Tool::arrow, {{0.1, nan}, {0.9, 0.5}, {0.2, 0.2}})})), empty);
    EXPECT_EQ(burnt(of({stroke(Tool::ellipse, {{0.1, 0.1}, {-infinity, 0.5}})})), empty);
    EXPECT_EQ(burnt(of({stroke(Tool::pen, {{nan, nan}})})), empty);
}

TEST(HostileStrokes, PointsFarOutsideAreDrawnTowards)
{
    const QImage image = burnt(of({stroke(Tool::pen, {{0.5, 0.5}, {largest, 0.5}})}));
    EXPECT_GT(grey(image, 300, 90), 150);
    EXPECT_EQ(grey(image, 100, 90), 0);
    EXPECT_GT(grey(burnt(of({stroke(Tool::arrow, {{-largest, 0.5}, {largest, 0.5}})})), 5, 90),
              150);
    burnt(of({stroke(Tool::ellipse, {{-largest, -largest}, {largest, largest}})}));
}

TEST(HostileStrokes, AnArrowWithoutLengthIsItsHead)
{
    EXPECT_FALSE(difference(burnt(of({stroke(Tool::arrow, {{0.5, 0.5}, {0.5, 0.5}})})), burnt({}))
                     .isEmpty());
    EXPECT_FALSE(
        difference(burnt(of({stroke(Tool::pen, {{0.5, 0.5}, {0.5, 0.5}})})), burnt({})).isEmpty());
}

TEST(HostileStrokes, TenThousandAreDrawn)
{
    std::vector<AnnotationStroke> strokes;
    for (int i = 0; i < 10'000; ++i)
        strokes.push_back(stroke(static_cast<Tool>(i % 3), {{i % 100 / 100.0, i / 10'000.0},
                                                            {i % 37 / 37.0, i % 53 / 53.0}}));
    strokes.back() = stroke(Tool::pen, {{0, 0.5}, {1, 0.5}});
    EXPECT_GT(grey(burnt(of(strokes), {160, 90}), 80, 45), 150);
}

TEST(HostileStrokes, OneOfAHundredThousandPointsIsDrawn)
{
    std::vector<NormalizedPoint> points;
    for (int i = 0; i <= 100'000; ++i)
        points.push_back({i / 100'000.0, 0.5});
    const QImage image = burnt(of({stroke(Tool::pen, points)}));
    EXPECT_GT(grey(image, 10, 90), 150);
    EXPECT_GT(grey(image, 310, 90), 150);
}

TEST(HostileCaptions, TextWithoutEndIsCut)
{
    Overlay overlay;
    overlay.captions = {CaptionCue::plain(1, 0, 1, QString(2'000'000, u'W'))};
    EXPECT_FALSE(difference(burnt(overlay), burnt({})).isEmpty());
    overlay.captions = {CaptionCue::plain(1, 0, 1, QString(2'000'000, u'\n'))};
    burnt(overlay);
    overlay.captions = {CaptionCue::plain(1, 0, 1, u"one\ntwo"_s.repeated(100'000))};
    burnt(overlay);
}

TEST(HostileCaptions, AThousandAtOnceFillThePicture)
{
    Overlay overlay;
    overlay.captions.assign(1000, CaptionCue::plain(1, 0, 1, u"HHHH"_s));
    const QImage image = burnt(overlay);
    EXPECT_LT(boundsOf(image, [](QRgb pixel) { return qGray(pixel) > 240; }).top(), 20);
}

TEST(HostileCaptions, WithoutTextNothingIsDrawn)
{
    Overlay overlay;
    overlay.captions = {CaptionCue(), CaptionCue::plain(1, 0, 1, u""_s),
                        CaptionCue::plain(1, 0, 1, u" "_s)};
    EXPECT_EQ(burnt(overlay), burnt({}));
}

TEST(HostileCaptions, ControlsAndHalvesOfCharactersAreNoHarm)
{
    Overlay overlay;
    for (const char16_t c : {u'\0', u'\t', u'\r', u'\u202e', u'\u200f', u'\u2028', u'\ufffe'})
        overlay.captions.push_back(CaptionCue::plain(1, 0, 1, u"a"_s + QChar(c) + u'b'));
    overlay.captions.push_back(CaptionCue::plain(1, 0, 1, QString(QChar(0xD83D))));
    EXPECT_FALSE(difference(burnt(overlay), burnt({})).isEmpty());
}

TEST(HostileFindings, ABoxThatIsNoneHasNoRing)
{
    Overlay overlay;
    for (const NormalizedRect& box : {NormalizedRect{nan, 0, 1, 1}, NormalizedRect{0, 0, nan, 1},
                                      NormalizedRect{0, nan, 1, 1}, NormalizedRect{0, 0, 1, nan}}) {
        overlay.finding = Finding{box, Verdict::fail, u"label"_s};
        EXPECT_EQ(burnt(overlay), burnt({}));
    }
    overlay.finding = Finding{{0.5, 0.5, infinity, infinity}, Verdict::fail, u"label"_s};
    burnt(overlay);
}

TEST(HostilePictures, OfAnySizeAreDrawnOn)
{
    for (const QSize size :
         {QSize(1, 1), QSize(1, 1080), QSize(1920, 1), QSize(2, 3), QSize(7, 5), QSize(641, 359),
          QSize(16384, 16), QSize(16, 16384), QSize(16384, 1024)})
        EXPECT_EQ(burnt(everything(size), size).size(), size);
}

TEST(HostilePictures, AHugeOneIsDrawnToItsEdges)
{
    const QSize size(16384, 2048);
    Overlay overlay;
    overlay.guides = {{.id = u"frame"_s, .rect = {0, 0, 1, 1}, .tint = Guide::Tint::safe}};
    const QImage image = burnt(overlay, size);
    EXPECT_EQ(grey(image, 16383, 1024), 255);
    EXPECT_EQ(grey(image, 8000, 2047), 255);
}

TEST(HostilePictures, ScalesThatAreNoneDrawNoLines)
{
    for (const double scale : {0.0, -1.0, nan}) {
        Overlay overlay = everything({320, 180});
        overlay.captions.clear();
        QImage image = blank({320, 180}, Qt::black);
        QPainter painter(&image);
        FramePainter::draw(painter, overlay, QRectF(0, 0, 320, 180), scale, scale);
        painter.end();
        EXPECT_EQ(image, blank({320, 180}, Qt::black)) << scale;
    }
    QImage image = blank({320, 180}, Qt::black);
    QPainter painter(&image);
    for (const QRectF& nowhere : {QRectF(0, 0, 0, 0), QRectF(0, 0, -5, -5), QRectF(0, 0, nan, nan),
                                  QRectF(nan, nan, 320, 180)})
        FramePainter::draw(painter, everything({320, 180}), nowhere);
}

} // namespace
} // namespace vantroque

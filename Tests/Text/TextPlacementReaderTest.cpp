#include "Text/TextPlacementReader.h"
#include "Probe/Prober.h"
#include "Regions.h"
#include "Support/BoxClips.h"
#include "Support/Clips.h"
#include "Support/FakeRecognizer.h"
#include "Support/FakeTools.h"

#include <QPainter>

namespace vantroque::TextPlacementReader {
namespace {

using namespace Qt::StringLiterals;
using FakeRecognizer::Lines;
using FakeRecognizer::Subject;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
using Words = std::vector<std::string>;
namespace fs = std::filesystem;

MediaInfo probed(const fs::path& clip)
{
    return Prober::probe(FileUrl::fromPath(clip)).value();
}

MediaInfo lasting(double seconds, double rate = 25)
{
    MediaInfo media;
    media.durationSeconds = seconds;
    media.video = VideoStreamInfo();
    media.video->nominalFrameRate = rate;
    return media;
}

QImage gray()
{
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::gray);
    return image;
}

/// What is made of a recognizer's lines in a picture.
std::vector<TextSample::Box> boxesOf(const Lines& lines, const QImage& picture = gray())
{
    const auto recognizer = FakeRecognizer::finding(lines)().value();
    return detectBoxes(picture, *recognizer, Subject::frame);
}

// Which frames.

TEST(TextFrames, AreTwoASecondUpToTwoMinutesAndThenOne)
{
    EXPECT_EQ(sampleRate(120), 2);
    EXPECT_EQ(sampleRate(121), 1);
    EXPECT_EQ(sampleRate(30), 2);
}

TEST(TextFrames, AreWholeFramesApart)
{
    const auto wanted = request(lasting(30, 29.97), "/frames");
    EXPECT_EQ(wanted.step(), 14);
    EXPECT_DOUBLE_EQ(wanted.time(3), 2 * 14 / 29.97);
    EXPECT_EQ(wanted.maxWidth, 960);
    EXPECT_EQ(wanted.path(12), fs::path("/frames/00012.png"));
    EXPECT_EQ(request(lasting(121, 25), "/frames").step(), 25);
    EXPECT_EQ(request(lasting(30, 1), "/frames").step(), 1);
    EXPECT_EQ(request(lasting(30, 0), "/frames").step(), 12) << "25 frames a second";
}

// What stands in one.

TEST(Boxes, AreThoseOfTheRecognizer)
{
    EXPECT_THAT(boxesOf({{{0.1, 0.2, 0.3, 0.1}, u"SALE"_s}, {{0.5, 0.6, 0.2, 0.1}, u"-50 %"_s}}),
                ElementsAre(IsBox(NormalizedRect{0.1, 0.2, 0.3, 0.1}, u"SALE"_s),
                            IsBox(NormalizedRect{0.5, 0.6, 0.2, 0.1}, u"-50 %"_s)));
}

TEST(Boxes, OfPunctuationAloneAreDropped)
{
    const NormalizedRect rect{0.1, 0.2, 0.3, 0.1};
    EXPECT_THAT(boxesOf({{rect, u"..."_s}, {rect, u" - "_s}, {rect, u""_s}, {rect, u"™ ★"_s}}),
                IsEmpty());
    EXPECT_THAT(boxesOf({{rect, u"."_s}, {rect, u"(7)"_s}, {rect, u"«é»"_s}}), SizeIs(2));
}

TEST(Boxes, AreCutToThePicture)
{
    const auto boxes = boxesOf({{{-0.5, 0.5, 1, 1}, u"SALE"_s}});
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes[0].rect, Covers(NormalizedRect{0, 0.5, 0.5, 0.5}));
}

TEST(Boxes, WithoutSizeInThePictureAreDropped)
{
    EXPECT_THAT(boxesOf({{{0.1, 0.2, 0, 0.1}, u"A"_s},
                         {{0.1, 0.2, 0.3, 0}, u"B"_s},
                         {{1.1, 0.2, 0.3, 0.1}, u"C"_s},
                         {{0.1, -0.2, 0.3, 0.1}, u"D"_s}}),
                IsEmpty());
}

TEST(Boxes, AreTakenDownToTheInk)
{
    QImage picture = gray();
    QPainter painter(&picture);
    for (int x = 60; x < 142; x += 8)
        painter.fillRect(x, 42, 2, 10, Qt::black);
    EXPECT_THAT(boxesOf({{{0.25, 0.4, 0.5, 0.2}, u"SALE"_s}}, picture),
                ElementsAre(IsBox(NormalizedRect{0.3, 0.42, 0.41, 0.1}, u"SALE"_s)));
}

TEST(Boxes, OfThreePixelsStayTheRecognizers)
{
    QImage picture = gray();
    QPainter(&picture).fillRect(20, 20, 2, 50, Qt::black);
    const NormalizedRect rect{0.1, 0.2, 0.015, 0.5};
    EXPECT_THAT(boxesOf({{rect, u"I"_s}}, picture), ElementsAre(IsBox(rect, u"I"_s)));
}

TEST(Boxes, AreNoneWhenTheRecognizerFails)
{
    for (const auto& start : {FakeRecognizer::failing(), FakeRecognizer::throwing()})
        EXPECT_THAT(detectBoxes(gray(), *start().value(), Subject::frame), IsEmpty());
}

TEST(Boxes, AreNoneWithoutAPicture)
{
    EXPECT_THAT(boxesOf({{{0.1, 0.2, 0.3, 0.1}, u"SALE"_s}}, QImage()), IsEmpty());
}

// Stretches of frames.

TEST(Frames, AreThoseOfTheStretchWithTheirTimes)
{
    const TestFolder folder;
    const MediaInfo media = probed(BoxClips::titled());
    const auto list = frames(media, 1, 0.4, BoxClips::middle, folder / "head");
    ASSERT_THAT(list, SizeIs(10));
    for (std::size_t i = 0; i < list.size(); ++i) {
        EXPECT_DOUBLE_EQ(list[i].time, 1 + static_cast<double>(i) / 25);
        // The box comes with frame 30, which is number 5 here.
        const QImage frame(QString::fromStdString(list[i].file.native()));
        EXPECT_EQ(FakeRecognizer::isWhiteIn(frame, {0, 0, 1, 1}), i >= 5) << i;
    }
}

TEST(Frames, BeginWithTheFrameOfTheirTime)
{
    // The times of such rates are not decimal, and Matroska rounds them to milliseconds.
    for (const char* name : {"count.mkv", "count.mp4"})
        for (const char* rate : {"24000/1001", "30000/1001"}) {
            SCOPED_TRACE(name);
            SCOPED_TRACE(rate);
            // Frame n has the brightness 4n.
            const auto clip = Media::make(
                {name, Media::operator+({"-f", "lavfi", "-i",
                                         std::string("color=black:s=64x64:r=") + rate
                                             + ",format=gray,geq=lum='4*N',scale=out_range=full",
                                         "-frames:v", "60", "-g", "12"},
                                        BoxClips::encoder(name))});
            const MediaInfo media = probed(clip);
            for (const int frame : {14, 29, 43}) {
                const TestFolder folder;
                const double time = frame / media.video->nominalFrameRate;
                const auto list = frames(media, time, 0.2, {0, 0, 1, 1}, folder / "frames");
                ASSERT_FALSE(list.empty());
                const QImage first(QString::fromStdString(list[0].file.native()));
                EXPECT_NEAR(first.pixelColor(32, 32).lightness(), 4 * frame, 1) << frame;
            }
        }
}

TEST(Frames, AreCutToTheRegionWithALittleAround)
{
    const TestFolder folder;
    const auto list = frames(probed(BoxClips::titled()), 1, 0.04, BoxClips::middle, folder / "cut");
    ASSERT_THAT(list, SizeIs(1));
    const QImage frame(QString::fromStdString(list[0].file.native()));
    EXPECT_NEAR(frame.width(), 0.52 * 160, 2);
    EXPECT_NEAR(frame.height(), 0.22 * 90, 2);
}

TEST(Frames, AreAtMost320PixelsWide)
{
    const TestFolder folder;
    const auto wide = BoxClips::make({.name = "wide.mkv", .frames = 2, .width = 800, .height = 90});
    const auto list = frames(probed(wide), 0, 0.04, {0, 0, 1, 1}, folder / "wide");
    ASSERT_THAT(list, SizeIs(1));
    EXPECT_EQ(QImage(QString::fromStdString(list[0].file.native())).width(), 320);
}

TEST(Frames, AreNoneWithoutAStretch)
{
    const TestFolder folder;
    const MediaInfo media = probed(BoxClips::titled());
    EXPECT_THAT(frames(media, 1, 0.0001, BoxClips::middle, folder / "a"), IsEmpty());
    EXPECT_THAT(frames(media, 1, -1, BoxClips::middle, folder / "b"), IsEmpty());
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Frames, AreNoneWhenTheyCannotBeWritten)
{
    const TestFolder folder;
    folder.write("file", "");
    const MediaInfo media = probed(BoxClips::titled());
    EXPECT_THAT(frames(media, 1, 0.4, BoxClips::middle, folder / "file" / "head"), IsEmpty());
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    EXPECT_THAT(frames(media, 1, 0.4, BoxClips::middle, folder / "head"), IsEmpty());
}

TEST(Frames, AskFFmpegForACroppedStretch)
{
    const TestFolder folder;
    MediaInfo media = lasting(30);
    media.url = FileUrl::fromPath("/spots/spot.mov");
    const FakeTools tools;
    tools.put("ffmpeg", "printf '%s\\n' \"$@\" '' >> '"
                            + QByteArray::fromStdString((tools.folder() / "ffmpeg.log").native())
                            + "'");
    const std::string pattern = (folder / "head" / "%05d.png").native();
    frames(media, 1.92, 0.48, {0.2, 0.4, 0.3, 0.05}, folder / "head");
    EXPECT_THAT(tools.calls("ffmpeg"),
                ElementsAre(Words{"-hide_banner", "-loglevel", "error", "-y", "-ss", "1.9200", "-i",
                                  "/spots/spot.mov", "-t", "0.4800", "-vf",
                                  "crop=iw*0.320000:ih*0.070000:iw*0.190000:ih*0.390000,"
                                  "scale='min(320,iw)':-2",
                                  "-pix_fmt", "rgb24", "-compression_level", "1", "-f", "image2",
                                  pattern}));
}

TEST(Frames, ACropStaysInThePicture)
{
    const TestFolder folder;
    const FakeTools tools;
    tools.record("ffmpeg");
    frames(probed(BoxClips::titled()), 1, 0.04, {0.005, 0.9, 0.99, 0.1}, folder / "edge");
    ASSERT_THAT(tools.calls("ffmpeg"), SizeIs(1));
    EXPECT_THAT(tools.calls("ffmpeg")[0],
                testing::Contains("crop=iw*1.000000:ih*0.110000:iw*0.000000:ih*0.890000,"
                                  "scale='min(320,iw)':-2"));
}

// A whole file.

/// Reads white boxes at that place as text.
std::optional<std::vector<TextRegion>> readAt(const NormalizedRect& place, const MediaInfo& media,
                                              AnalysisProgress* progress = nullptr)
{
    RecognizerPool pool(FakeRecognizer::answering(FakeRecognizer::lookingAt({place})));
    return read(media, pool, progress);
}

void expectTitled(const std::optional<std::vector<TextRegion>>& regions, double rate = 25)
{
    ASSERT_THAT(regions, Optional(SizeIs(1)));
    const TextRegion& region = regions->front();
    EXPECT_NEAR(region.start * rate, 30, 1e-6);
    EXPECT_NEAR(region.end * rate, 90, 1e-6);
    EXPECT_THAT(region.rect(), Covers(BoxClips::middle));
    EXPECT_EQ(region.text, u"TEXT 0"_s);
}

TEST(ReadText, FindsTheTextToTheFrame)
{
    expectTitled(readAt(BoxClips::middle, probed(BoxClips::titled())));
}

TEST(ReadText, FindsTheTextToTheFrameAtBroadcastRates)
{
    for (const char* name : {"titled-ntsc.mkv", "titled-ntsc.mov", "titled-ntsc.mp4"}) {
        SCOPED_TRACE(name);
        expectTitled(readAt(BoxClips::middle, probed(BoxClips::titled(name, "30000/1001"))),
                     30000 / 1001.0);
    }
}

TEST(ReadText, FindsNoneInAPlainPicture)
{
    EXPECT_THAT(readAt(BoxClips::middle, probed(BoxClips::make({.name = "plain-gray.mkv"}))),
                Optional(IsEmpty()));
}

TEST(ReadText, TakesThePictureAsItIsShown)
{
    const auto upright = BoxClips::titled("upright.mp4");
    const MediaInfo media = probed(Media::make(
        {"turned.mp4", {"-i", upright.native(), "-c", "copy", "-metadata:s:v:0", "rotate=90"}}));
    ASSERT_EQ(std::abs(media.video->rotation.value_or(0)), 90);
    std::atomic<int> turned = 0;
    constexpr NormalizedRect middle{0.4, 0.25, 0.2, 0.5};
    const auto look = FakeRecognizer::lookingAt({middle});
    RecognizerPool pool(
        FakeRecognizer::answering([&](const QImage& frame, Subject subject, auto deadline) {
            turned += frame.width() < frame.height() ? 1 : 0;
            return look(frame, subject, deadline);
        }));
    const auto regions = read(media, pool, nullptr);
    ASSERT_THAT(regions, Optional(SizeIs(1)));
    EXPECT_NEAR(regions->front().start * 25, 30, 1e-6);
    EXPECT_NEAR(regions->front().end * 25, 90, 1e-6);
    EXPECT_THAT(regions->front().rect(), Covers(middle));
    EXPECT_GT(turned, 0);
}

TEST(ReadText, LeavesACoverPictureAside)
{
    const MediaInfo media = probed(Clips::coverAhead(BoxClips::titled("covered.mp4")));
    ASSERT_EQ(media.video->specifier(), "v:1");
    const FakeTools tools;
    tools.record("ffmpeg");
    expectTitled(readAt(BoxClips::middle, media));
    ASSERT_THAT(tools.calls("ffmpeg"), SizeIs(3)) << "the frames and two edges";
    for (const Words& call : tools.calls("ffmpeg"))
        EXPECT_THAT(call, testing::IsSupersetOf({"-map", "0:v:1"}));
}

TEST(ReadText, AsksFFmpegForEveryNthFrame)
{
    const MediaInfo media = probed(BoxClips::titled());
    const FakeTools tools;
    tools.record("ffmpeg");
    RecognizerPool pool(FakeRecognizer::finding({}));
    read(media, pool, nullptr);
    ASSERT_THAT(tools.calls("ffmpeg"), SizeIs(1));
    Words call = tools.calls("ffmpeg")[0];
    EXPECT_EQ(fs::path(call.back()).filename(), "%05d.png");
    call.pop_back();
    EXPECT_EQ(call,
              (Words{"-hide_banner", "-loglevel", "error", "-y", "-i", media.url.path().native(),
                     "-vf", "select='not(mod(n\\,12))',scale='min(960,iw)':-2", "-pix_fmt", "rgb24",
                     "-compression_level", "1", "-fps_mode", "passthrough", "-f", "image2"}));
}

TEST(ReadText, ReadsFramesAtMost960PixelsWide)
{
    const auto wide = BoxClips::make({.name = "uhd.mkv", .frames = 2, .width = 1920, .height = 90});
    std::atomic<int> width = 0;
    RecognizerPool pool(FakeRecognizer::answering([&](const QImage& frame, Subject, auto) {
        width = frame.width();
        return Lines();
    }));
    read(probed(wide), pool, nullptr);
    EXPECT_EQ(width, 960);
}

TEST(ReadText, GivesNothingWhenFFmpegFails)
{
    const MediaInfo media = probed(BoxClips::titled());
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    EXPECT_EQ(readAt(BoxClips::middle, media), std::nullopt);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST(ReadText, LeavesNoFilesBehind)
{
    const MediaInfo media = probed(BoxClips::titled());
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    expectTitled(readAt(BoxClips::middle, media));
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST(ReadText, GivesNothingWithoutAPictureStream)
{
    EXPECT_EQ(readAt(BoxClips::middle, probed(Clips::wav())), std::nullopt);
}

TEST(ReadText, GivesNothingWithoutARecognizer)
{
    RecognizerPool pool(FakeRecognizer::notStarting());
    EXPECT_EQ(read(probed(BoxClips::titled()), pool, nullptr), std::nullopt);
}

TEST(ReadText, TellsItsProgress)
{
    AnalysisProgress progress;
    expectTitled(readAt(BoxClips::middle, probed(BoxClips::titled()), &progress));
    EXPECT_EQ(progress.snapshot().textFramesRead, 9);
    EXPECT_EQ(progress.snapshot().textFramesExtracted, 9);
}

} // namespace
} // namespace vantroque::TextPlacementReader

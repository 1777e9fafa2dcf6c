#include "Tools/FrameExporter.h"

#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Support/Program.h"

#include <cstdint>

namespace vantroque {
namespace {

using Media::operator+;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr int framesInNumbered = 40;

/// 64x64 pictures whose luma is 16 + 5 * their number, coded without loss or nearly so, in long
/// groups of pictures.
fs::path numbered(const std::string& rate, const std::string& extension)
{
    const Words codec = extension == "mxf"
                            ? Words{"-c:v", "mpeg2video", "-q:v", "1", "-bf", "2"}
                            : Words{"-c:v", "libx264", "-preset", "veryfast", "-qp", "0"};
    return Media::make(
        {"numbered." + extension,
         Words{"-f", "lavfi", "-i", "nullsrc=s=64x64:r=" + rate + ",geq=lum='16+5*N':cb=128:cr=128",
               "-frames:v", std::to_string(framesInNumbered), "-pix_fmt", "yuv420p", "-g", "12"}
             + codec});
}

fs::path wide()
{
    return Media::make({"wide.mp4", Clips::picture("640x360", "25", "0.2") + Clips::x264()});
}

/// The number that the luma of a picture tells.
int numberIn(const QByteArray& luma)
{
    return luma.isEmpty() ? -1 : (static_cast<std::uint8_t>(luma[0]) - 16 + 2) / 5;
}

/// The same of an image, read by ffmpeg itself.
int numberIn(const fs::path& image)
{
    return numberIn(runProgram({"ffmpeg", "-v", "error", "-i", image.native(), "-f", "rawvideo",
                                "-pix_fmt", "yuv444p", "-"})
                        .out);
}

/// What a PNG says of itself in its first chunk.
struct PngHeader {
    int width = 0;
    int height = 0;
    int depth = 0;
    int colourType = 0; ///< 2: RGB, 6: RGB and alpha.
    bool operator==(const PngHeader&) const = default;
};

PngHeader headerOf(const QByteArray& png)
{
    EXPECT_TRUE(png.startsWith("\x89PNG\r\n\x1A\n"));
    const auto number = [&](qsizetype at, qsizetype size) {
        return png.mid(at, size).toHex().toInt(nullptr, 16);
    };
    return {number(16, 4), number(20, 4), number(24, 1), number(25, 1)};
}

std::string problemOf(const auto& outcome)
{
    return outcome ? "none" : Error(outcome.error()).description.toStdString();
}

class FrameExporterTest : public testing::Test {
protected:
    ~FrameExporterTest() override { EXPECT_THAT(m_scratch.names(), IsEmpty()) << "scratch left"; }

    fs::path out(const std::string& name) const { return m_folder / name; }
    Words recorded(const std::function<void()>& work) const
    {
        const FakeTools tools;
        tools.record("ffmpeg");
        work();
        const auto calls = tools.calls("ffmpeg");
        EXPECT_EQ(calls.size(), 1U);
        return calls.empty() ? Words() : calls.front();
    }

    const FileUrl m_clip = FileUrl::fromPath(numbered("25", "mp4"));
    const std::string m_clipName = m_clip.path().native();
    const TestFolder m_folder;

private:
    const TestFolder m_scratch;
    const ScopedVariable m_temporary{"TMPDIR", m_scratch.path()};
};

// The calls.

TEST_F(FrameExporterTest, AStillIsOneFrameBehindAFastSeek)
{
    const Words call = recorded(
        [&] { EXPECT_TRUE(FrameExporter::writeFrame(m_clip, 1.0 / 3, out("still.png"))); });
    ASSERT_FALSE(call.empty());
    EXPECT_THAT(Words(call.begin(), call.end() - 1),
                ElementsAre("-hide_banner", "-loglevel", "error", "-y", "-ss", "0.333333", "-i",
                            m_clipName, "-frames:v", "1"));
    EXPECT_THAT(call.back(), MatchesRegex(".*/vantroque-[0-9]+-[A-Za-z0-9]{6}/frame\\.png"));
}

TEST_F(FrameExporterTest, AFrameForReadingIsNarrowAndFastToEncode)
{
    const Words call = recorded(
        [&] { EXPECT_TRUE(FrameExporter::writeFrame(m_clip, 0.4, out("still.png"), 960)); });
    ASSERT_FALSE(call.empty());
    EXPECT_THAT(Words(call.begin(), call.end() - 1),
                ElementsAre("-hide_banner", "-loglevel", "error", "-y", "-ss", "0.400000", "-i",
                            m_clipName, "-frames:v", "1", "-vf", "scale='min(960,iw)':-2",
                            "-pix_fmt", "rgb24", "-compression_level", "1"));
}

TEST_F(FrameExporterTest, AFrameInMemoryComesThroughAPipe)
{
    EXPECT_THAT(recorded([&] { EXPECT_TRUE(FrameExporter::frameData(m_clip, 0.4)); }),
                ElementsAre("-hide_banner", "-loglevel", "error", "-ss", "0.400000", "-i",
                            m_clipName, "-frames:v", "1", "-f", "image2pipe", "-vcodec", "png",
                            "-"));
    EXPECT_THAT(recorded([&] { EXPECT_TRUE(FrameExporter::frameData(m_clip, 0.4, 320)); }),
                ElementsAre("-hide_banner", "-loglevel", "error", "-ss", "0.400000", "-i",
                            m_clipName, "-frames:v", "1", "-vf", "scale=320:-2:flags=bilinear",
                            "-f", "image2pipe", "-vcodec", "png", "-"));
}

TEST_F(FrameExporterTest, ARawFrameIsAveragedIntoFullPlanes)
{
    EXPECT_THAT(recorded([&] { EXPECT_TRUE(FrameExporter::rawFrame(m_clip, 0.4, 8, 6)); }),
                ElementsAre("-hide_banner", "-loglevel", "error", "-ss", "0.400000", "-i",
                            m_clipName, "-frames:v", "1", "-vf",
                            "scale=8:6:flags=area,format=yuv444p", "-f", "rawvideo", "-pix_fmt",
                            "yuv444p", "-"));
}

TEST_F(FrameExporterTest, ANegativeTimeIsTheFirstFrame)
{
    const Words call = recorded([&] {
        const auto frame = FrameExporter::rawFrame(m_clip, -0.5, 2, 2);
        EXPECT_EQ(numberIn(frame.value_or(QByteArray())), 0);
    });
    ASSERT_GE(call.size(), 5U);
    EXPECT_EQ(call[3], "-ss");
    EXPECT_EQ(call[4], "0.000000");
}

// Which frame.

struct Numbered {
    std::string name; ///< Of the test.
    std::string rate;
    double fps;
    std::string extension;
};

void PrintTo(const Numbered& clip, std::ostream* out)
{
    *out << clip.name;
}

class ExactFrame : public FrameExporterTest, public testing::WithParamInterface<Numbered> {};

constexpr double ntsc = 30'000.0 / 1001;

INSTANTIATE_TEST_SUITE_P(Clips, ExactFrame,
                         testing::Values(Numbered{"Mp4At25", "25", 25, "mp4"},
                                         Numbered{"MxfAt25", "25", 25, "mxf"},
                                         Numbered{"MkvAt25", "25", 25, "mkv"},
                                         Numbered{"Mp4At2997", "30000/1001", ntsc, "mp4"},
                                         Numbered{"MxfAt2997", "30000/1001", ntsc, "mxf"},
                                         Numbered{"MkvAt2997", "30000/1001", ntsc, "mkv"}),
                         [](const auto& test) { return test.param.name; });

TEST_P(ExactFrame, IsTheOneAtItsNumberOverTheRate)
{
    const FileUrl clip = FileUrl::fromPath(numbered(GetParam().rate, GetParam().extension));
    std::vector<int> wanted;
    std::vector<int> found;
    // At the start, around a key frame, and at the end.
    for (const int frame : {0, 1, 2, 11, 12, 13, 29, 30, framesInNumbered - 1}) {
        const auto raw = FrameExporter::rawFrame(clip, frame / GetParam().fps, 2, 2);
        wanted.push_back(frame);
        found.push_back(numberIn(raw.value_or(QByteArray())));
    }
    EXPECT_EQ(found, wanted);
}

TEST_P(ExactFrame, IsTheSameInAllForms)
{
    const FileUrl clip = FileUrl::fromPath(numbered(GetParam().rate, GetParam().extension));
    for (const int frame : {1, 13, framesInNumbered - 1}) {
        const double time = frame / GetParam().fps;
        ASSERT_TRUE(FrameExporter::writeFrame(clip, time, out("still.png")));
        EXPECT_EQ(numberIn(out("still.png")), frame);
        const auto data = FrameExporter::frameData(clip, time);
        EXPECT_EQ(numberIn(m_folder.write("data.png", data.value_or(QByteArray()))), frame);
    }
}

// The picture.

TEST_F(FrameExporterTest, APictureInMemoryIsBroughtToTheWidthAlsoUpward)
{
    const auto clip = FileUrl::fromPath(wide());
    EXPECT_EQ(headerOf(FrameExporter::frameData(clip, 0)->left(64)), (PngHeader{640, 360, 8, 2}));
    EXPECT_EQ(headerOf(FrameExporter::frameData(clip, 0, 960)->left(64)),
              (PngHeader{960, 540, 8, 2}));
    EXPECT_EQ(headerOf(FrameExporter::frameData(clip, 0, 200)->left(64)),
              (PngHeader{200, 112, 8, 2}));
}

TEST_F(FrameExporterTest, APictureForReadingIsNeverEnlarged)
{
    const auto clip = FileUrl::fromPath(wide());
    const auto written = [&](int width) {
        EXPECT_TRUE(FrameExporter::writeFrame(clip, 0, out("still.png"), width));
        return headerOf(contents(out("still.png")));
    };
    EXPECT_EQ(written(960), (PngHeader{640, 360, 8, 2}));
    EXPECT_EQ(written(320), (PngHeader{320, 180, 8, 2}));
}

TEST_F(FrameExporterTest, APictureForReadingHasNoAlphaNorDepth)
{
    const auto clip = FileUrl::fromPath(Clips::prores(4, "yuva444p10le"));
    ASSERT_TRUE(FrameExporter::writeFrame(clip, 0, out("still.png")));
    EXPECT_EQ(headerOf(contents(out("still.png"))), (PngHeader{64, 64, 16, 6}));
    ASSERT_TRUE(FrameExporter::writeFrame(clip, 0, out("still.png"), 960));
    EXPECT_EQ(headerOf(contents(out("still.png"))), (PngHeader{64, 64, 8, 2}));
}

TEST_F(FrameExporterTest, SamplesOfARawFrameAreAverages)
{
    const auto chequers = FileUrl::fromPath(Media::make(
        {"chequers.mkv",
         {"-f", "lavfi", "-i",
          "nullsrc=s=64x64:r=25:d=0.08,geq=lum='if(mod(X+Y,2),234,16)':cb='if(mod(X,2),60,100)'"
          ":cr=200",
          "-pix_fmt", "yuv444p", "-c:v", "ffv1"}}));
    const auto raw = FrameExporter::rawFrame(chequers, 0, 4, 2);
    ASSERT_TRUE(raw) << problemOf(raw);
    ASSERT_EQ(raw->size(), 3 * 4 * 2);
    const auto plane = [&](int number) {
        std::vector<int> samples;
        for (const char byte : raw->mid(8 * number, 8))
            samples.push_back(static_cast<std::uint8_t>(byte));
        return samples;
    };
    EXPECT_THAT(plane(0), Each(testing::AllOf(testing::Ge(124), testing::Le(126))));
    EXPECT_THAT(plane(1), Each(testing::AllOf(testing::Ge(79), testing::Le(81))));
    EXPECT_THAT(plane(2), Each(200));
}

TEST_F(FrameExporterTest, APictureThatIsTaggedToBeTurnedIsTurned)
{
    const fs::path lying =
        Media::make({"lying.mp4", Clips::picture("64x32", "25", "0.2") + Clips::x264()});
    // The tag is only written when the stream is copied.
    const auto turned = FileUrl::fromPath(Media::make(
        {"turned.mp4", {"-i", lying.native(), "-c", "copy", "-metadata:s:v:0", "rotate=90"}}));
    EXPECT_EQ(headerOf(FrameExporter::frameData(turned, 0)->left(64)), (PngHeader{32, 64, 8, 2}));
}

TEST_F(FrameExporterTest, ACoverIsNotTheFilm)
{
    const auto clip = FileUrl::fromPath(Clips::coverAhead(Clips::plain()));
    EXPECT_EQ(headerOf(FrameExporter::frameData(clip, 0.2)->left(64)), (PngHeader{320, 180, 8, 2}));
}

// Where the still goes.

TEST_F(FrameExporterTest, TheExtensionSetsTheFormat)
{
    const auto start = [&](const std::string& name) {
        const auto written = FrameExporter::writeFrame(m_clip, 0, out(name));
        EXPECT_TRUE(written) << name << ": " << problemOf(written);
        return contents(out(name)).left(4).toStdString();
    };
    EXPECT_EQ(start("a.png"), "\x89PNG");
    EXPECT_EQ(start("A.PNG"), "\x89PNG");
    EXPECT_EQ(start("a.shot.jpg"), "\xFF\xD8\xFF\xE0");
    EXPECT_EQ(start("a.tiff").substr(0, 2), "II");
    EXPECT_EQ(start("a.bmp").substr(0, 2), "BM");
}

class StillName : public FrameExporterTest, public testing::WithParamInterface<std::string> {};

INSTANTIATE_TEST_SUITE_P(Any, StillName,
                         testing::Values("%d.png", "shot %03d 100%.png", "%%.png",
                                         "it's \"quoted\".png", "a,b;c:[d].png", "-y.png",
                                         "file:x.png", "back\\slash.png", "line\nbreak.png",
                                         "\xC3\xA9.png", "caf\xE9.png", "$HOME `id`.png",
                                         "pipe:1.png"));

TEST_P(StillName, IsTakenLiterally)
{
    const auto written = FrameExporter::writeFrame(m_clip, 0.2, out(GetParam()));
    ASSERT_TRUE(written) << problemOf(written);
    EXPECT_THAT(m_folder.names(), ElementsAre(GetParam()));
    EXPECT_EQ(numberIn(m_folder.write("copy.png", contents(out(GetParam())))), 5);
}

class NoImageName : public FrameExporterTest, public testing::WithParamInterface<std::string> {};

INSTANTIATE_TEST_SUITE_P(Any, NoImageName,
                         testing::Values("still", "still.", ".png", "still.%d", "still.image",
                                         "still.pn g", "still.'"));

TEST_P(NoImageName, IsRefusedAndNothingIsWritten)
{
    const auto written = FrameExporter::writeFrame(m_clip, 0.2, out(GetParam()));
    EXPECT_THAT(problemOf(written), StartsWith("ffmpeg exited with status 1: "));
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(FrameExporterTest, AnEarlierImageIsReplaced)
{
    m_folder.write("still.png", QByteArray(1'000'000, 'x'));
    ASSERT_TRUE(FrameExporter::writeFrame(m_clip, 0.2, out("still.png")));
    EXPECT_EQ(numberIn(out("still.png")), 5);
    EXPECT_THAT(m_folder.names(), ElementsAre("still.png"));
}

TEST_F(FrameExporterTest, AFailureLeavesAnEarlierImage)
{
    m_folder.write("still.png", "the earlier one");
    const FakeTools tools;
    tools.put("ffmpeg", R"(for last; do :; done; printf half > "$last"; echo broken >&2; exit 3)");
    EXPECT_EQ(problemOf(FrameExporter::writeFrame(m_clip, 0, out("still.png"))),
              "ffmpeg exited with status 3: broken\n");
    EXPECT_EQ(contents(out("still.png")), "the earlier one");
    EXPECT_THAT(m_folder.names(), ElementsAre("still.png"));
}

TEST_F(FrameExporterTest, AFolderThatIsNotThereIsTold)
{
    EXPECT_THAT(problemOf(FrameExporter::writeFrame(m_clip, 0, out("none/still.png"))),
                EndsWith(": No such file or directory"));
    m_folder.write("file", "");
    EXPECT_THAT(problemOf(FrameExporter::writeFrame(m_clip, 0, out("file/still.png"))),
                EndsWith(": Not a directory"));
    EXPECT_THAT(m_folder.names(), ElementsAre("file"));
}

TEST_F(FrameExporterTest, AFolderOfThatNameStays)
{
    m_folder.write("still.png/inside", "");
    EXPECT_THAT(problemOf(FrameExporter::writeFrame(m_clip, 0, out("still.png"))),
                EndsWith(": Is a directory"));
    EXPECT_THAT(m_folder.names(), ElementsAre("still.png"));
}

// No frame.

TEST_F(FrameExporterTest, BehindTheEndThereIsNoFrame)
{
    const std::string problem = "there is no frame at that time";
    m_folder.write("still.png", "the earlier one");
    EXPECT_EQ(problemOf(FrameExporter::writeFrame(m_clip, 60, out("still.png"))), problem);
    EXPECT_EQ(problemOf(FrameExporter::frameData(m_clip, 60)), problem);
    EXPECT_EQ(problemOf(FrameExporter::rawFrame(m_clip, 60, 8, 8)), problem);
    EXPECT_EQ(contents(out("still.png")), "the earlier one");
    EXPECT_THAT(m_folder.names(), ElementsAre("still.png"));
}

TEST_F(FrameExporterTest, SoundHasNoFrames)
{
    const auto sound = FileUrl::fromPath(Clips::wav());
    EXPECT_THAT(problemOf(FrameExporter::writeFrame(sound, 0, out("still.png"))),
                StartsWith("ffmpeg exited with status 1: "));
    EXPECT_FALSE(FrameExporter::frameData(sound, 0));
    EXPECT_FALSE(FrameExporter::rawFrame(sound, 0, 8, 8));
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(FrameExporterTest, AMissingFileIsToldInTheToolsWords)
{
    const auto none = FileUrl::fromPath("/nowhere.mp4");
    const std::string problem =
        "ffmpeg exited with status 1: /nowhere.mp4: No such file or directory\n";
    EXPECT_EQ(problemOf(FrameExporter::writeFrame(none, 0, out("still.png"))), problem);
    EXPECT_EQ(problemOf(FrameExporter::frameData(none, 0)), problem);
    EXPECT_EQ(problemOf(FrameExporter::rawFrame(none, 0, 8, 8)), problem);
}

TEST_F(FrameExporterTest, WithoutFfmpegThatIsTheProblem)
{
    const std::string problem =
        "ffmpeg not found. Install ffmpeg (brew install ffmpeg) or bundle it with the app.";
    const ScopedVariable chosen("VANTROQUE_FFMPEG_DIR");
    m_folder.writeScript("which", "#!/bin/sh\nexit 1\n");
    const ScopedVariable path("PATH", m_folder.path());
    EXPECT_EQ(problemOf(FrameExporter::writeFrame(m_clip, 0, out("still.png"))), problem);
    EXPECT_EQ(problemOf(FrameExporter::frameData(m_clip, 0)), problem);
    EXPECT_EQ(problemOf(FrameExporter::rawFrame(m_clip, 0, 8, 8)), problem);
}

} // namespace
} // namespace vantroque

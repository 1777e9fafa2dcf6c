#include "Picture/FrameSamples.h"
#include "Platform/NumberedClip.h"
#include "Platform/Playing.h"
#include "Support/Media.h"
#include "Support/Program.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <fstream>

// The codes of a picture are those of the file.

namespace vantroque {
namespace {

using Media::operator+;
using Words = std::vector<std::string>;
namespace fs = std::filesystem;

constexpr int width = 98; // Whose rows do not fill cache lines,
constexpr int height = 50;

/// Noise of all codes, stored without loss.
fs::path noise(const std::string& format)
{
    return Media::make({"noise-" + format + ".mkv",
                        {"-f", "lavfi", "-i",
                         "nullsrc=size=98x50:rate=25:duration=0.2,format=" + format
                             + ",noise=alls=100:allf=t,geq='random(1)*pow(2,16)':'random(2)*pow(2,"
                               "16)':'random(3)*pow(2,16)'",
                         "-pix_fmt", format, "-c:v", "ffv1"}});
}

/// The first frame of it, as ffmpeg decodes it.
QByteArray rawOf(const fs::path& file, const std::string& format)
{
    return runProgram({"ffmpeg", "-v", "error", "-i", file.native(), "-frames:v", "1", "-f",
                       "rawvideo", "-pix_fmt", format, "-"})
        .out;
}

/// The rows of a picture without what lies between them.
QByteArray packed(const BiPlanarPicture& picture)
{
    const int sampleBytes = picture.sampleBits == 8 ? 1 : 2;
    QByteArray bytes;
    for (int y = 0; y < picture.height; ++y)
        bytes.append(reinterpret_cast<const char*>(picture.luma + picture.lumaStride * y),
                     qsizetype{picture.width} * sampleBytes);
    for (int y = 0; y < (picture.height + 1) / 2; ++y)
        bytes.append(reinterpret_cast<const char*>(picture.chroma + picture.chromaStride * y),
                     qsizetype{(picture.width + 1) / 2 * 2} * sampleBytes);
    return bytes;
}

QByteArray played(const fs::path& file)
{
    Playing player(file);
    const auto frame = player.frame(0);
    return frame ? packed(frame->picture) : QByteArray();
}

TEST(PictureCodes, AreThoseOfTheFile)
{
    EXPECT_EQ(played(noise("yuv420p")), rawOf(noise("yuv420p"), "nv12"));
    EXPECT_EQ(played(noise("yuv420p10le")), rawOf(noise("yuv420p10le"), "p010le"));
    EXPECT_EQ(played(noise("yuv422p")).left(width * height),
              rawOf(noise("yuv422p"), "yuv422p").left(width * height));
}

TEST(PictureCodes, OfTwoRowsOfChromaAreTheirMean)
{
    const QByteArray own = played(noise("yuv422p")).mid(width * height);
    const QByteArray raw = rawOf(noise("yuv422p"), "yuv422p").mid(width * height);
    constexpr int half = width / 2;
    ASSERT_EQ(own.size(), half * height);
    const auto at = [&](int plane, int x, int y) {
        return static_cast<std::uint8_t>(raw[plane * half * height + y * half + x]);
    };
    for (int y = 0; y < height / 2; ++y)
        for (int x = 0; x < half; ++x)
            for (const int plane : {0, 1})
                ASSERT_EQ(static_cast<std::uint8_t>(own[y * width + 2 * x + plane]),
                          (at(plane, x, 2 * y) + at(plane, x, 2 * y + 1) + 1) / 2);
}

TEST(PictureCodes, OfRedGreenAndBlueFollowTheMatrixAndTheRange)
{
    const fs::path file = noise("gbrp");
    const QByteArray raw = rawOf(file, "gbrp");
    const auto at = [&](int plane, int i) {
        return static_cast<std::uint8_t>(raw[plane * width * height + i]);
    };
    struct Case {
        ColorMatrix matrix;
        double red; // ITU-R BT.709, BT.601 and BT.2020
        double blue;
    };
    for (const Case& one :
         {Case{ColorMatrix::bt709, 0.2126, 0.0722}, Case{ColorMatrix::bt601, 0.299, 0.114},
          Case{ColorMatrix::bt2020, 0.2627, 0.0593}})
        for (const bool full : {false, true}) {
            PlaybackSource source;
            source.url = FileUrl::fromPath(file);
            source.matrix = one.matrix;
            source.fullRange = full;
            DecoderEngine engine(source, Playing::silent());
            engine.aim(0, 0);
            ASSERT_TRUE(runUntil([&] { return engine.frame(0) != nullptr; }));
            const QByteArray own = packed(engine.frame(0)->picture);
            for (int i = 0; i < width * height; ++i) {
                const double luma =
                    one.red * at(2, i) + (1 - one.red - one.blue) * at(0, i) + one.blue * at(1, i);
                const double code = full ? luma : 16 + luma * 219 / 255;
                ASSERT_NEAR(static_cast<std::uint8_t>(own[i]), code, 1.01) << full;
            }
        }
}

const Words x264{"-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-g", "12"};

/// Two seconds of pictures of 192x96, and after them two of another size.
fs::path changing(const std::string& size)
{
    const auto first = NumberedClip::make("changes.ts", "25", x264);
    const auto second = NumberedClip::make(
        "other-size.ts", "25",
        Words{"-vf", "scale=" + size + ":flags=neighbor", "-output_ts_offset", "2"} + x264);
    return Media::make(
        "changes-to-" + size + ".ts", {first.native(), second.native()}, [&](const fs::path& file) {
            const QByteArray bytes = contents(first) + contents(second);
            std::ofstream(file, std::ios::binary).write(bytes.constData(), bytes.size());
        });
}

TEST(PictureSize, MayChangeInTheMiddle)
{
    Playing player(changing("96x48"));
    EXPECT_EQ(player.shown(3), 3);
    EXPECT_EQ(player.shown(70), 20);
    EXPECT_EQ(player.frame(70)->picture.width, 96);
    EXPECT_EQ(player.shown(49), 49);
    EXPECT_EQ(player.frame(49)->picture.width, 192);
    EXPECT_EQ(player.shown(50), 0);
}

TEST(PictureSize, IsBroughtBackWhenThereIsNoRoomForMore)
{
    Playing player(changing("384x192"));
    EXPECT_EQ(player.shown(3), 3);
    EXPECT_EQ(player.shown(70), 20);
    EXPECT_EQ(player.frame(70)->picture.width, 192);
    EXPECT_EQ(player.frame(70)->picture.height, 96);
    EXPECT_EQ(player.shown(30), 30);
}

TEST(PictureSize, OfOddSidesRoundsChromaUp)
{
    Playing player(Media::make({"odd.mkv",
                                {"-f", "lavfi", "-i", "testsrc2=size=33x17:rate=25:duration=0.2",
                                 "-vf", "scale=33:17,format=yuv420p", "-c:v", "ffv1"}}));
    const auto frame = player.frame(1);
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->picture.width, 33);
    EXPECT_EQ(frame->picture.height, 17);
    EXPECT_EQ(packed(frame->picture).size(), 33 * 17 + 34 * 9);
}

/// The first two rows of a display matrix, without what moves the picture.
struct DisplayMatrix {
    std::string name;
    std::int8_t a, b, c, d;
};

/// A clip whose track header asks for that matrix.
fs::path displayed(const DisplayMatrix& matrix)
{
    const auto level = NumberedClip::make("level.mp4", "25", x264, "0.2");
    return Media::make(
        "displayed-" + matrix.name + ".mp4", {level.native(), "1"}, [&](const fs::path& path) {
            QByteArray bytes = contents(level);
            constexpr int beforeMatrix = 44; // from the name of the box on
            const auto begin = bytes.indexOf("tkhd") + beforeMatrix;
            const std::array<std::pair<int, std::int8_t>, 4> entries{
                {{0, matrix.a}, {4, matrix.b}, {12, matrix.c}, {16, matrix.d}}};
            // Whole numbers are the upper two of four bytes.
            for (const auto& [at, value] : entries)
                bytes.replace(begin + at, 4,
                              QByteArray::fromRawData(value == 0   ? "\0\0\0\0"
                                                      : value == 1 ? "\0\1\0\0"
                                                                   : "\xff\xff\0\0",
                                                      4));
            std::ofstream(path, std::ios::binary).write(bytes.constData(), bytes.size());
        });
}

class Displayed : public testing::TestWithParam<DisplayMatrix> {};

TEST_P(Displayed, IsAsFFmpegTurnsAndMirrorsIt)
{
    const fs::path clip = displayed(GetParam());
    Playing player(clip);
    const auto frame = player.frame(0);
    ASSERT_NE(frame, nullptr);
    const Orientation orientation = player.engine().orientation();
    const int wide = frame->picture.width;
    const int high = frame->picture.height;
    const auto shown =
        FrameSamples::ofShown(frame->picture, orientation, orientation.isOnItsSide() ? high : wide,
                              orientation.isOnItsSide() ? wide : high, false, ColorMatrix::bt601);
    ASSERT_TRUE(shown);
    const auto byFFmpeg = runProgram({"ffmpeg", "-v", "error", "-i", clip.native(), "-vf",
                                      "extractplanes=y", "-frames:v", "1", "-f", "rawvideo", "-"});
    EXPECT_EQ(std::string(shown->y.begin(), shown->y.end()), byFFmpeg.out.toStdString());
}

INSTANTIATE_TEST_SUITE_P(OfAllKinds, Displayed,
                         testing::Values(DisplayMatrix{"level", 1, 0, 0, 1},
                                         DisplayMatrix{"right", 0, 1, -1, 0},
                                         DisplayMatrix{"over", -1, 0, 0, -1},
                                         DisplayMatrix{"left", 0, -1, 1, 0},
                                         DisplayMatrix{"mirrored", -1, 0, 0, 1},
                                         DisplayMatrix{"upside_down", 1, 0, 0, -1},
                                         DisplayMatrix{"transposed", 0, 1, 1, 0},
                                         DisplayMatrix{"transposed_over", 0, -1, -1, 0}),
                         [](const auto& each) { return each.param.name; });

} // namespace
} // namespace vantroque

#include "Platform/NumberedClip.h"
#include "Platform/Playing.h"
#include "Probe/Prober.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"
#include "Tools/FrameExporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

// Where the pictures of a file do not simply follow each other: the frame of a number is the one
// that is on screen at that moment.

namespace vantroque {
namespace {

using Media::operator+;
using Words = std::vector<std::string>;
namespace fs = std::filesystem;

const Words x264{
    "-c:v",     "libx264", "-preset",      "veryfast",
    "-pix_fmt", "yuv420p", "-x264-params", "keyint=12:min-keyint=12:scenecut=0:bframes=2"};

DecoderEngine::Settings withLittleRoom()
{
    auto settings = Playing::silent();
    settings.mostSlots = 6;
    return settings;
}

/// In any order, each number shows the picture that `pictureOf` says.
void expectPictures(const fs::path& file, int count, int (*pictureOf)(int))
{
    Playing player(file, 25, withLittleRoom());
    ASSERT_EQ(player.opened(), PlaybackEngine::State::ready);
    for (int i = 0; i < count; ++i) {
        const int number = i * 17 % count;
        ASSERT_EQ(player.shown(number), pictureOf(number)) << "sought at " << number;
    }
    for (int number = 0; number < count; ++number)
        ASSERT_EQ(player.shown(number, 1), pictureOf(number)) << "reached at " << number;
    for (int number = count - 1; number >= 0; --number)
        ASSERT_EQ(player.shown(number), pictureOf(number)) << "gone back to at " << number;
    player.frame(count, 1);
    EXPECT_EQ(player.engine().lastFrame(), count - 1);
}

/// Of every ten pictures, all but the first and the last two stay away: 0, 8, 9, 10, 18, 19 ...
Words withGaps()
{
    return {"-vf", "select='not(between(mod(n,10),1,7))'", "-vsync", "vfr"};
}

int beforeGap(int number)
{
    return number % 10 < 8 ? number / 10 * 10 : number;
}

TEST(ShownMoments, OfAVariableRateHoldTheFrameBefore)
{
    const Words pictures = withGaps() + x264;
    expectPictures(NumberedClip::make("gaps.mp4", "25", pictures), 50, beforeGap);
    expectPictures(NumberedClip::make("gaps.mkv", "25", pictures), 50, beforeGap);
    expectPictures(NumberedClip::make("gaps.ts", "25", pictures), 50, beforeGap);
}

TEST(ShownMoments, OfOneLongFrameLastToItsEnd)
{
    const auto file = NumberedClip::make(
        "held.mp4", "25", Words{"-vf", "select='lt(n,3)+eq(n,49)'", "-vsync", "vfr"} + x264);
    expectPictures(file, 50, [](int number) { return number < 3 || number == 49 ? number : 2; });
}

TEST(ShownMoments, OfAFileCountedAtTwiceItsRateComeTwice)
{
    Playing player(NumberedClip::make("half.mp4", "25", x264), 50, withLittleRoom());
    for (const int number : {60, 61, 3, 2, 1, 0, 98, 97, 44})
        EXPECT_EQ(player.shown(number), number / 2) << number;
}

TEST(ShownMoments, OfAFileCountedAtHalfItsRateSkipEverySecondOne)
{
    Playing player(NumberedClip::make("double.mp4", "50", x264), 25, withLittleRoom());
    for (const int number : {40, 41, 3, 2, 1, 0, 49, 22})
        EXPECT_NEAR(player.shown(number).value_or(-9), 2 * number, 1) << number;
}

/// The start of the file is cut off by an edit list in the middle of a group of pictures.
TEST(ShownMoments, CountFromTheStartOfAnEditList)
{
    const auto whole = NumberedClip::make("whole.mp4", "25", x264);
    const auto cut =
        Media::make({"edited.mp4", {"-ss", "0.68", "-i", whole.native(), "-c", "copy"}});
    Playing player(cut, 25, withLittleRoom());
    for (const int number : {0, 5, 20, 30, 1, 12, 0})
        EXPECT_EQ(player.shown(number), number + 17) << number;
}

QByteArray word(std::uint32_t value)
{
    QByteArray bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

std::uint32_t wordAt(const QByteArray& bytes, qsizetype at)
{
    return bytes.mid(at, 4).toHex().toUInt(nullptr, 16);
}

/// The same file with an edit list of two segments: pictures 0 to 24, and 30 to 49.
void writeTwoSegments(const fs::path& whole, const fs::path& target)
{
    QByteArray bytes = contents(whole);
    const qsizetype list = bytes.indexOf("elst");
    const qsizetype entry = list + 12; // After version and count: duration, media time, rate.
    const std::uint32_t begin = wordAt(bytes, entry + 4);
    constexpr std::uint32_t ticksOfFrame = 512;
    bytes.replace(list + 8, 4, word(2));
    bytes.replace(entry, 4, word(1000));
    bytes.insert(entry + 12, word(800) + word(begin + 30 * ticksOfFrame) + word(0x10000));
    for (const char* const name : {"elst", "edts", "trak", "moov"}) {
        const qsizetype size = bytes.indexOf(name) - 4;
        bytes.replace(size, 4, word(wordAt(bytes, size) + 12));
    }
    std::ofstream(target, std::ios::binary).write(bytes.constData(), bytes.size());
}

/// The number in a still, which comes from ffmpeg.
std::optional<int> inStill(const fs::path& file, double seconds)
{
    constexpr int width = 192;
    constexpr int height = 96;
    const auto still = FrameExporter::rawFrame(FileUrl::fromPath(file), seconds, width, height);
    if (!still || still->size() < width * height)
        return std::nullopt;
    return NumberedClip::numberIn(
        {.width = width,
         .height = height,
         .luma = reinterpret_cast<const std::uint8_t*>(still->constData()),
         .lumaStride = width});
}

/// libavformat gives the pictures of the second segment times that are two frames late, since its
/// pictures are reordered. Reports count by those times, and so does the player.
TEST(ShownMoments, OfAnEditListOfTwoSegmentsAreThoseOfTheDecodedTimes)
{
    const auto whole = NumberedClip::make("whole.mp4", "25", x264);
    const auto cut = Media::make("segments.mp4", {whole.native(), "0 to 24, 30 to 49"},
                                 [&](const fs::path& target) { writeTwoSegments(whole, target); });
    Playing player(cut, 25, withLittleRoom());
    for (const int number : {40, 24, 27, 28, 3, 46, 23, 0})
        EXPECT_EQ(player.shown(number), number < 25 ? number : number + 3) << number;
    for (const int number : {40, 27, 46})
        EXPECT_EQ(player.shown(number), inStill(cut, number / 25.0)) << number;
}

TEST(ShownMoments, AreThoseOfStillsAndReports)
{
    const auto whole = NumberedClip::make("whole.mp4", "25", x264);
    for (const fs::path& file :
         {NumberedClip::make("late.ts", "25", x264 + Words{"-output_ts_offset", "12.3"}),
          NumberedClip::make("mpeg2.ts", "25", {"-c:v", "mpeg2video", "-g", "12", "-bf", "2"}),
          Media::make({"edited.mp4", {"-ss", "0.68", "-i", whole.native(), "-c", "copy"}}),
          Media::make({"begins-open.ts", {"-ss", "0.68", "-i", whole.native(), "-c", "copy"}})}) {
        Playing player(file, 25, withLittleRoom());
        const double start = Prober::pictureStart(FileUrl::fromPath(file), "v:0");
        for (const int number : {0, 1, 13, 27})
            EXPECT_EQ(player.shown(number), inStill(file, start + number / 25.0))
                << file << " at " << number;
    }
}

} // namespace
} // namespace vantroque

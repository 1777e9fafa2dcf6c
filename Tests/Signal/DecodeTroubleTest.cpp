#include "Signal/DecodeTrouble.h"
#include "Records/MediaInfo.h"
#include "Signal/DecodeHealthAnalyzer.h"

#include <gmock/gmock.h>

#include <string>

// What a log says about damage, and what is made of it.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string file = "/spots/spot.mp4";
const std::string mapping = "Stream mapping:\n"
                            "  Stream #0:0 (h264) -> cropdetect:default\n"
                            "  Stream #0:2 (aac) -> asplit:default\n";

/// Frame number `index` of 25 a second, as the log prints it for each of two statistics, with the
/// number that ffmpeg's graph gives it and the time of frame `shownAt`.
std::string frame(int index, int shownAt)
{
    const std::string time = "frame:" + QString::number(index).toStdString() + "    pts:"
                             + QString::number(shownAt * 512).toStdString() + "     pts_time:"
                             + QString::number(shownAt * 0.04).toStdString() + "\n";
    return "[Parsed_metadata_7 @ 0x1] " + time + "[Parsed_metadata_8 @ 0x1] " + time;
}

std::string frame(int index)
{
    return frame(index, index);
}

std::string frames(int first, int last)
{
    std::string all;
    for (int i = first; i <= last; ++i)
        all += frame(i);
    return all;
}

DecodeTrouble trouble(const std::string& log)
{
    return {log, file, 25};
}

MediaInfo spot(std::int64_t frameCount)
{
    MediaInfo media;
    media.containerKind = u"mp4"_s;
    media.durationSeconds = static_cast<double>(frameCount) / 25;
    media.video = VideoStreamInfo();
    media.video->nominalFrameRate = 25;
    media.video->frameCount = frameCount;
    media.video->durationSeconds = media.durationSeconds;
    return media;
}

DecodeHealth health(const std::string& log, std::int64_t frameCount)
{
    return DecodeHealthAnalyzer::measure(trouble(log), spot(frameCount));
}

TEST(DecodeTrouble, AQuietLogHasNone)
{
    const auto quiet = trouble(mapping + frames(0, 49));
    EXPECT_THAT(quiet.complaints(), IsEmpty());
    EXPECT_THAT(quiet.gaps(), IsEmpty());
    EXPECT_EQ(quiet.frames(), 50) << "each is printed more than once";
    EXPECT_TRUE(health(mapping + frames(0, 49), 50).isWhole());
}

TEST(DecodeTrouble, AComplaintLiesWhereTheLastFrameDoes)
{
    for (const char* words :
         {"[h264 @ 0x1] concealing 94 DC, 94 AC, 94 MV errors in B frame\n",
          "[h264 @ 0x1] error while decoding MB 15 9, bytestream -5\n",
          "[mpeg2video @ 0x1] ac-tex damaged at 6 5\n", "[prores @ 0x1] invalid frame header\n",
          "[hevc @ 0x1] Could not find ref with POC 24\n",
          "[matroska,webm @ 0x1] 0x00 at pos 156039 (0x26187) invalid as first byte of an EBML "
          "number\n",
          "[matroska,webm @ 0x1] Length 5 indicated by an EBML number's first byte 0x0d at pos "
          "119740 (0x1d3bc) exceeds max length 4.\n",
          "[matroska,webm @ 0x1] Unknown-sized element at 0x27592 inside parent with finite size\n",
          "Error while decoding stream #0:0: Invalid data found when processing input\n",
          "/spots/spot.mp4: corrupt decoded frame in stream 0\n"}) {
        const auto found = trouble(mapping + frames(0, 20) + words + frames(21, 49)).complaints();
        ASSERT_THAT(found, SizeIs(1)) << words;
        EXPECT_NEAR(found[0].start, 0.8, 1e-9) << words;
        EXPECT_TRUE(found[0].picture) << words;
    }
}

TEST(DecodeTrouble, OfTheSoundIsToldFromThatOfThePicture)
{
    const auto found =
        trouble(mapping + frames(0, 20)
                + "[Parsed_ametadata_9 @ 0x1] frame:5    pts:24000   pts_time:0.5\n"
                  "Error while decoding stream #0:2: Invalid data found when processing input\n")
            .complaints();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].start, 0.5);
    EXPECT_FALSE(found[0].picture);
    EXPECT_TRUE(found[0].sound);
}

TEST(DecodeTrouble, OfStreamsThatNobodyDecodesIsNone)
{
    EXPECT_THAT(
        trouble(mapping + frames(0, 20)
                + "[mov,mp4,m4a,3gp,3g2,mj2 @ 0x1] Packet corrupt (stream = 1, dts = 49664).\n"
                  "[mov,mp4,m4a,3gp,3g2,mj2 @ 0x1] stream 1, offset 0x18: partial file\n")
            .complaints(),
        IsEmpty());
}

TEST(DecodeTrouble, HarmlessComplaintsAreNone)
{
    for (const char* words :
         {"[null @ 0x1] Application provided invalid, non monotonically increasing dts to muxer in "
          "stream 0: 79 >= 78\n",
          "[h264 @ 0x1] mmco: unref short failure\n", "[h264 @ 0x1] co located POCs unavailable\n",
          "[wav @ 0x1] Estimating duration from bitrate, this may be inaccurate\n",
          "[wav @ 0x1] Packet corrupt (stream = 0, dts = NOPTS).\n",
          "[mp3float @ 0x1] overread, skip -8 enddists: -1 -1\n",
          "[mpegts @ 0x1] Packet corrupt (stream = 0, dts = 392400).\n",
          "[swscaler @ 0x1] deprecated pixel format used\n", "Last message repeated 3 times\n"})
        EXPECT_TRUE(health(mapping + frames(0, 20) + words + frames(21, 49), 50).isWhole())
            << words;
}

TEST(DecodeTrouble, APacketWithoutAPictureIsNone)
{
    EXPECT_TRUE(health(mapping + frames(0, 49)
                           + "[h264 @ 0x1] no frame!\nError while decoding stream #0:0: Invalid "
                             "data found when processing input\n",
                       51)
                    .isWhole());
}

TEST(DecodeTrouble, AStreamThatBeginsAheadOfItsHeadersLosesItsFirstPictures)
{
    const std::string log = "[h264 @ 0x1] non-existing PPS 0 referenced\n" + mapping;
    EXPECT_THAT(health(log + frames(0, 38), 46).places,
                ElementsAre(DamagedPlace{0, 0, true, false}));
    EXPECT_TRUE(health(log + frames(0, 38), 39).isWhole());
}

TEST(DecodeTrouble, AStreamThatBeginsInsideAGroupLosesItsFirstPictures)
{
    const auto found = health(mapping
                                  + "[h264 @ 0x1] no frame!\nError while decoding stream #0:0: "
                                    "Invalid data found when processing input\n"
                                  + frames(0, 38),
                              46);
    EXPECT_EQ(found.framesDecoded, 39);
    EXPECT_EQ(found.framesPromised, 46);
    EXPECT_THAT(found.places, ElementsAre(DamagedPlace{0, 0, true, false}));
}

TEST(DecodeTrouble, ComplaintsWithinASecondAreOnePlace)
{
    const std::string words = "[h264 @ 0x1] concealing 9 DC, 9 AC, 9 MV errors in B frame\n";
    const auto found =
        trouble(mapping + frames(0, 20) + words + frames(21, 40) + words + frames(41, 100) + words)
            .complaints();
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_NEAR(found[0].end, 1.6, 1e-9);
    EXPECT_NEAR(found[1].start, 4, 1e-9);
}

TEST(DecodeTrouble, TagsOfTheFileForgeNone)
{
    const std::string header = "Input #0, mov,mp4, from '/spots/spot.mp4':\n"
                               "  Metadata:\n"
                               "    title           : x\n"
                               "/spots/spot.mp4: corrupt decoded frame in stream 0\n"
                               "[h264 @ 0x1] concealing 9 DC, 9 AC, 9 MV errors in B frame\n"
                               "  Stream #0:0: Video: h264\n";
    const std::string again = "Output #0, rawvideo, to 'pipe:':\n"
                              "  Metadata:\n"
                              "    title           : x\n"
                              "/spots/spot.mp4: corrupt decoded frame in stream 0\n"
                              "Error while decoding stream #0:0: Invalid data found\n"
                              "  Stream #0:0: Video: wrapped_avframe\n";
    EXPECT_THAT(trouble(header + mapping + again + frames(0, 49)).complaints(), IsEmpty());
}

TEST(DecodeTrouble, FramesMissingBetweenOthersAreAGap)
{
    const auto found = trouble(mapping + frames(0, 20) + frames(24, 49)).gaps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].missingFrames, 3);
    EXPECT_NEAR(found[0].start, 0.8, 1e-9);
}

TEST(DecodeTrouble, FramesOfTheSameTimeAreTwo)
{
    const std::string log =
        mapping + frames(0, 20) + frame(21, 22) + frame(22, 22) + frames(23, 49);
    EXPECT_EQ(trouble(log).frames(), 50);
    EXPECT_TRUE(health(log, 50).isWhole()) << "one is late, and none is missing";
}

TEST(DecodeTrouble, TheFrameThatAFilterHeldWhenTheGraphWasBuiltAnewIsThere)
{
    std::string log = mapping + frames(0, 23);
    for (int i = 0; i < 25; ++i)
        log += frame(i, 25 + i);
    EXPECT_EQ(trouble(log).frames(), 50);
    EXPECT_TRUE(health(log, 50).isWhole());

    std::string lossy = mapping + frames(0, 20);
    for (int i = 0; i < 25; ++i)
        lossy += frame(i, 25 + i);
    const auto lost = health(lossy, 50);
    EXPECT_EQ(lost.framesDecoded, 47);
    ASSERT_THAT(lost.places, SizeIs(1));
    EXPECT_NEAR(lost.places[0].start, 0.8, 1e-9);
}

// What is made of it.

TEST(DecodeHealth, AGapThatPacketsDoNotAccountForIsNoDamage)
{
    const std::string log = mapping + frames(0, 20) + frames(24, 49);
    EXPECT_TRUE(health(log, 47).isWhole()) << "the recorder dropped them";
    EXPECT_TRUE(health(log, 50 + 5).isWhole()) << "packets without a picture, and a recorder";
    const auto lost = health(log, 50);
    EXPECT_EQ(lost.framesDecoded, 47);
    EXPECT_EQ(lost.framesPromised, 50);
    ASSERT_THAT(lost.places, SizeIs(1));
    EXPECT_NEAR(lost.places[0].start, 0.8, 1e-9);
}

TEST(DecodeHealth, AGapBesideAnIncompletePacketOfATransportStreamIsDamage)
{
    const std::string words = "[mpegts @ 0x1] Packet corrupt (stream = 0, dts = 392400).\n";
    EXPECT_FALSE(health(mapping + frames(0, 20) + words + frames(24, 49), 47).isWhole());
}

TEST(DecodeHealth, FramesThatAreLostMakeNoVariableRate)
{
    const std::string words = "[mpegts @ 0x1] Packet corrupt (stream = 0, dts = 392400).\n";
    const std::string lost = mapping + frames(0, 20) + words + frames(24, 49);
    MediaInfo media = spot(47);
    media.video->isVFR = true;
    EXPECT_FALSE(DecodeHealthAnalyzer::measure(trouble(lost), media).isWhole());
    const std::string variable = lost + frames(55, 60) + frames(90, 99);
    EXPECT_TRUE(DecodeHealthAnalyzer::measure(trouble(variable), media).isWhole());
}

TEST(DecodeHealth, OfAFileThatEndsInAPacketTellsItsLastFrame)
{
    const auto cut =
        health(mapping + frames(0, 120)
                   + "[mov,mp4,m4a,3gp,3g2,mj2 @ 0x1] Packet corrupt (stream = 0, dts = 29184).\n"
                     "[h264 @ 0x1] Error splitting the input into NAL units.\n",
               250);
    EXPECT_EQ(cut.framesDecoded, 121);
    EXPECT_EQ(cut.framesPromised, 250);
    EXPECT_THAT(cut.places, IsEmpty()) << "that it ends is all";
    ASSERT_TRUE(cut.endsAt);
    EXPECT_NEAR(*cut.endsAt, 4.8, 1e-9);
}

TEST(DecodeHealth, OfAFileThatLacksBytesIsThatOfOneCutOff)
{
    MediaInfo media = spot(50);
    media.missingBytes = 1;
    const auto cut = DecodeHealthAnalyzer::measure(trouble(mapping + frames(0, 49)), media);
    ASSERT_TRUE(cut.endsAt);
    EXPECT_NEAR(*cut.endsAt, 1.96, 1e-9);
    media.missingBytes = 0;
    EXPECT_TRUE(DecodeHealthAnalyzer::measure(trouble(mapping + frames(0, 49)), media).isWhole());
}

TEST(DecodeHealth, OfAFileThatLacksBytesInItsMiddleTellsWhereItSkips)
{
    MediaInfo media = spot(100);
    media.containerKind = u"mkv"_s;
    media.video->frameCount = 90;
    media.missingBytes = 12'972;
    const auto lost =
        DecodeHealthAnalyzer::measure(trouble(mapping + frames(0, 46) + frames(57, 99)), media);
    EXPECT_EQ(lost.endsAt, std::nullopt);
    EXPECT_EQ(lost.framesDecoded, 90);
    EXPECT_EQ(lost.framesPromised, 100);
    ASSERT_EQ(lost.places.size(), 1U);
    EXPECT_NEAR(lost.places[0].start, 1.84, 1e-9);
}

TEST(DecodeHealth, TwoPacketsAFrameArePromisedOnce)
{
    EXPECT_TRUE(health(mapping + frames(0, 49), 100).isWhole());
    const std::string words = "[h264 @ 0x1] concealing 9 DC, 9 AC, 9 MV errors in B frame\n";
    EXPECT_EQ(health(mapping + frames(0, 49) + words, 100).framesPromised, 50);
}

TEST(DecodeHealth, OfFlashVideoThatEndsBeforeItsDurationIsThatOfOneCutOff)
{
    MediaInfo media = spot(100);
    media.containerKind = u"flv"_s;
    EXPECT_TRUE(DecodeHealthAnalyzer::measure(trouble(mapping + frames(0, 49)), media).endsAt);
}

TEST(DecodeHealth, ListsAHundredPlacesAndCountsAll)
{
    std::string log = mapping;
    for (int i = 0; i < 120; ++i)
        log += frame(i * 50) + "[h264 @ 0x1] concealing 9 DC, 9 AC, 9 MV errors in B frame\n";
    const auto many = DecodeHealthAnalyzer::measure({log, file, 0}, spot(120));
    EXPECT_THAT(many.places, SizeIs(100));
    EXPECT_EQ(many.placeCount, 120);
}

} // namespace
} // namespace vantroque

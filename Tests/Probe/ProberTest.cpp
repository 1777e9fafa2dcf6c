#include "Base/Json.h"
#include "Probe/Probed.h"
#include "Support/FakeTools.h"

#include <sys/stat.h>

// How a probe goes about its work, and what faults cost.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

std::string problemOf(const fs::path& file)
{
    const auto media = Prober::probe(FileUrl::fromPath(file));
    return media ? "none" : media.error().description.toStdString();
}

/// ffprobe that answers the main probe with this text and every other question like the shell
/// words `otherwise`.
void answerMainProbe(const FakeTools& tools, const QByteArray& json,
                     const QByteArray& otherwise = "exit 1")
{
    tools.put("ffprobe", "case \"$*\" in\n*-show_format*) cat <<'END'\n" + json + "\nEND\n;;\n*) "
                             + otherwise + " ;;\nesac");
}

/// One picture of these properties, and nothing known of the file.
QByteArray onePicture(const QByteArray& properties)
{
    return R"({"streams": [{"index": 0, "codec_type": "video", )" + properties + "}]}";
}

TEST(Probe, EveryToolIsCalledWithTheseArguments)
{
    const FakeTools tools;
    tools.record("ffprobe");
    tools.record("ffmpeg");
    const std::string file = Clips::hdr10P3();
    probed(file);
    const std::vector<std::string> start{"-v", "error", "-print_format", "json"};
    using Words = std::vector<std::string>;
    const auto joined = [&](const Words& words) {
        Words all = start;
        all.insert(all.end(), words.begin(), words.end());
        all.push_back(file);
        return all;
    };
    const auto calls = tools.calls("ffprobe");
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls[0], joined({"-show_format", "-show_streams"}));
    EXPECT_THAT( // beside each other
        std::vector(calls.begin() + 1, calls.end()),
        UnorderedElementsAre(
            joined({"-select_streams", "v:0", "-show_entries", "packet=pts_time,dts_time,size"}),
            joined({"-select_streams", "v:0", "-read_intervals", "%+#1", "-show_frames"}),
            // The look at the head sees all of so short a clip, so that there is none further on.
            joined({"-show_frames", "-read_intervals", "%+#60", "-select_streams", "v:0"})));
    EXPECT_THAT(tools.calls("ffmpeg"),
                ElementsAre(Words{"-v", "trace", "-i", file, "-c", "copy", "-bsf:v",
                                  "trace_headers", "-frames:v", "1", "-f", "null", "-"}));
}

TEST(Probe, BehindACoverEveryToolNamesTheRealStream)
{
    const FakeTools tools;
    tools.record("ffprobe");
    probed(Clips::coverAhead(Clips::hdr10P3()));
    const auto calls = tools.calls("ffprobe");
    ASSERT_EQ(calls.size(), 4U);
    for (std::size_t i = 1; i < calls.size(); ++i)
        EXPECT_THAT(calls[i], Contains("v:1")) << i;
}

TEST(Probe, AFailingPacketListCostsOnlyItsFields)
{
    const FakeTools tools;
    answerMainProbe(tools, onePicture(R"("codec_name": "mpeg4", "avg_frame_rate": "25/1",
                                         "bit_rate": "800000", "nb_frames": "50")"));
    const auto video = probedVideo("/a.avi");
    EXPECT_FALSE(video.isVFR);
    EXPECT_EQ(video.vfrDetail, std::nullopt);
    EXPECT_THAT(video.bitratePerSecondKbps, IsEmpty());
    EXPECT_EQ(video.bitrateKbps, 800);
    EXPECT_EQ(video.frameCount, 50);
}

TEST(Probe, WithoutPacketsAndWithoutAnswersRateAndCountAreAbsent)
{
    const FakeTools tools;
    answerMainProbe(tools, onePicture(R"("codec_name": "mpeg4", "nb_frames": "N/A")"));
    const auto video = probedVideo("/a.avi");
    EXPECT_EQ(video.bitrateKbps, std::nullopt);
    EXPECT_EQ(video.frameCount, std::nullopt);
}

TEST(Probe, AnEmptyPacketListIsARateOfZero)
{
    const FakeTools tools;
    answerMainProbe(tools, onePicture(R"("duration": "2.0")"), "echo '{}'");
    const auto video = probedVideo("/a.avi");
    EXPECT_EQ(video.bitrateKbps, 0);
    EXPECT_EQ(video.frameCount, 0);
}

TEST(Probe, WithoutADurationPacketsGiveNoRate)
{
    const FakeTools tools;
    answerMainProbe(tools, onePicture(R"("codec_name": "mpeg4")"),
                    R"(echo '{"packets": [{"pts_time": "0", "size": "10"}]}')");
    const auto video = probedVideo("/a.avi");
    EXPECT_EQ(video.durationSeconds, 0);
    EXPECT_EQ(video.bitrateKbps, std::nullopt);
    EXPECT_EQ(video.frameCount, 1);
}

TEST(Probe, TheTrueRateStandsInForAnUnknownAverage)
{
    const FakeTools tools;
    const auto rateOf = [&](const QByteArray& average, const QByteArray& real) {
        answerMainProbe(tools, onePicture("\"avg_frame_rate\": \"" + average
                                          + "\", \"r_frame_rate\": \"" + real + '"'));
        return probedVideo("/a.avi");
    };
    EXPECT_EQ(rateOf("0/0", "25/1").nominalFrameRate, 25);
    EXPECT_EQ(rateOf("24/1", "25/1").nominalFrameRate, 24);
    EXPECT_EQ(rateOf("0/1", "25/1").nominalFrameRate, 0);
    EXPECT_EQ(rateOf("0/0", "0/0").nominalFrameRate, 0);
    EXPECT_FALSE(rateOf("0/0", "0/0").isVFR);
}

TEST(Probe, AMissingDurationComesFromThePicture)
{
    const FakeTools tools;
    for (const char* format : {"{}", R"({"duration": "0.000"})", R"({"duration": "N/A"})"}) {
        answerMainProbe(tools, QByteArray(R"({"format": )") + format
                                   + R"(, "streams": [{"index": 0, "codec_type": "video",
                                        "duration": "2.5"}]})");
        EXPECT_EQ(probed("/a.avi").durationSeconds, 2.5) << format;
    }
    answerMainProbe(tools, R"({"streams": [{"index": 0, "codec_type": "audio",
                               "duration": "2.5"}]})");
    EXPECT_EQ(probed("/a.wav").durationSeconds, 0);
}

TEST(Probe, APictureWithoutADurationHasTheFiles)
{
    const FakeTools tools;
    answerMainProbe(tools, R"({"format": {"duration": "4.0"},
                               "streams": [{"index": 0, "codec_type": "video"}]})");
    EXPECT_EQ(probedVideo("/a.avi").durationSeconds, 4);
}

TEST(Probe, WhatIsNotToldIsUnknownOrAbsent)
{
    const FakeTools tools;
    answerMainProbe(tools, R"({"streams": [{"index": 0, "codec_type": "video"},
        {"index": 1, "codec_type": "audio"}, {"index": 2, "codec_type": "subtitle"},
        {"index": 3, "codec_type": "data"}, {"index": 4}]})");
    const auto media = probed("/a.avi");
    EXPECT_EQ(media.fileSizeBytes, 0);
    EXPECT_EQ(media.formatName, u"unknown"_s);
    EXPECT_EQ(media.containerKind, u"unknown"_s);
    VideoStreamInfo video;
    video.codec = video.rawCodecName = video.pixFmt = u"unknown"_s;
    video.closedCaptions = false;
    EXPECT_EQ(media.video, video);
    AudioStreamInfo audio;
    audio.codec = audio.rawCodecName = u"unknown"_s;
    audio.streamCount = 1;
    EXPECT_EQ(media.audio, audio);
    EXPECT_THAT(*media.subtitleStreams,
                ElementsAre(SubtitleStreamInfo{2, u"unknown"_s, std::nullopt}));
}

TEST(Probe, AnEmptyAnswerIsAFileWithoutStreams)
{
    const FakeTools tools;
    answerMainProbe(tools, "{}");
    const auto media = probed("/a.mp4");
    EXPECT_EQ(media.video, std::nullopt);
    EXPECT_EQ(media.audio, std::nullopt);
    EXPECT_EQ(media.durationSeconds, 0);
    EXPECT_EQ(media.analysisVersion, 5);
}

TEST(Probe, TheSizeOfAVanishedFileIsTheOneThatWasPrinted)
{
    const FakeTools tools;
    for (const char* size : {"1234", "\"1234\""}) {
        answerMainProbe(tools, QByteArray(R"({"format": {"size": )") + size + "}}");
        EXPECT_EQ(probed("/nowhere/a.mp4").fileSizeBytes, 1234) << size;
    }
}

TEST(Probe, AnUnknownSampleRateIsZero)
{
    const FakeTools tools;
    for (const char* rate : {R"("N/A")", "\"-5\"", "\"48000.5\""}) {
        answerMainProbe(tools, QByteArray(R"({"streams": [{"index": 0, "codec_type": "audio",
                                              "sample_rate": )")
                                   + rate + "}]}");
        EXPECT_EQ(probedAudio("/a.wav").sampleRate, 0) << rate;
    }
}

TEST(Probe, ACoverAloneIsNoPicture)
{
    const FakeTools tools;
    answerMainProbe(tools, R"({"streams": [{"index": 0, "codec_type": "video",
                               "disposition": {"attached_pic": 1}}]})");
    EXPECT_EQ(probed("/a.mp3").video, std::nullopt);
}

TEST(Probe, AMissingTraceOfHeadersCostsOnlyTheHrd)
{
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    const auto video = probedVideo(Clips::plain());
    EXPECT_EQ(video.hrd, std::nullopt);
    EXPECT_EQ(video.frameCount, 25);
}

TEST(Probe, GarbageInsteadOfJsonFailsIt)
{
    const FakeTools tools;
    for (const char* answer : {"", "garbage", "[1, 2]", R"({"streams": [)"}) {
        answerMainProbe(tools, answer);
        EXPECT_NE(problemOf("/a.mp4"), "none") << answer;
    }
}

TEST(Probe, AWrongTypeFailsItAndIsNamed)
{
    const FakeTools tools;
    answerMainProbe(tools, R"({"streams": [{"index": 0, "width": "wide"}]})");
    EXPECT_THAT(problemOf("/a.mp4"), HasSubstr(".streams[0].width"));
}

TEST(Probe, AFailingToolsWordsAreTheError)
{
    const FakeTools tools;
    tools.put("ffprobe", "echo 'this is no film' >&2; exit 7");
    EXPECT_EQ(problemOf("/a.mp4"), "ffprobe exited with status 7: this is no film\n");
}

TEST(Probe, AMissingToolIsNamed)
{
    const TestFolder empty;
    const ScopedVariable folder("VANTROQUE_FFMPEG_DIR", empty.path());
    const ScopedVariable path("PATH", empty.path());
    if (fs::exists("/usr/local/bin/ffprobe"))
        GTEST_SKIP() << "ffprobe is where it is always found";
    EXPECT_EQ(problemOf(Clips::plain()),
              "ffprobe not found. Install ffmpeg (brew install ffmpeg) or bundle it with the app.");
}

TEST(Probe, WhatIsNoMediaFailsInTheToolsWords)
{
    const TestFolder folder;
    EXPECT_THAT(problemOf(folder / "none.mp4"), EndsWith("none.mp4: No such file or directory\n"));
    EXPECT_THAT(problemOf(folder.path()), EndsWith(": Is a directory\n"));
    for (const auto& [name, bytes] :
         {std::pair("empty.mp4", QByteArray()),
          {"noise.mp4", QByteArray("\x01\x9A\xFF\x00qz", 6)},
          {"text.mp4", QByteArray("Dear sir or madam,\nplease find attached\n")}})
        EXPECT_THAT(problemOf(folder.write(name, bytes)),
                    HasSubstr("\nffprobe exited with status 1: "))
            << name;
}

TEST(Probe, AFastStartFileThatIsCutOffIsStillProbed)
{
    const TestFolder folder;
    const auto whole = contents(Clips::plain());
    const auto media = probed(folder.write("cut.mp4", whole.left(whole.size() / 2)));
    EXPECT_EQ(media.video->frameCount, 25);
    EXPECT_EQ(media.moovBeforeMdat, true);
}

TEST(Probe, AFileWithoutItsIndexFails)
{
    const TestFolder folder;
    const auto whole = contents(Clips::indexBehind());
    EXPECT_THAT(problemOf(folder.write("cut.mp4", whole.left(whole.size() / 2))),
                HasSubstr("moov atom not found"));
}

TEST(Probe, APipeASocketOrADeviceIsRefusedAtOnce)
{
    const TestFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe.mp4").c_str(), 0600), 0);
    fs::create_symlink("pipe.mp4", folder / "link.mp4");
    EXPECT_EQ(problemOf(folder / "pipe.mp4"),
              "pipe.mp4 is a pipe, socket or device and not a file.");
    EXPECT_EQ(problemOf(folder / "link.mp4"),
              "link.mp4 is a pipe, socket or device and not a file.");
    EXPECT_EQ(problemOf("/dev/zero"), "zero is a pipe, socket or device and not a file.");
    EXPECT_EQ(Prober::startTimecode(FileUrl::fromPath(folder / "pipe.mp4")), std::nullopt);
}

class OddName : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Names, OddName,
                         testing::Values("a b.mp4", "it's \"it\".mp4", "two\nlines.mp4",
                                         "\xF0\x9F\x8E\xAC.mp4", "a:b.mp4", "100%d %20.mp4",
                                         "-y.mp4", "file:x.mp4", "caf\xE9.mp4", "$HOME`ls`;\\.mp4",
                                         "*?[a].mp4"));

TEST_P(OddName, IsProbedLikeAnyOther)
{
    const TestFolder folder;
    const auto file = folder.write(GetParam(), contents(Clips::plain()));
    auto media = probed(file);
    EXPECT_EQ(media.url, FileUrl::fromPath(file));
    EXPECT_EQ(media.video, probedVideo(Clips::plain()));
    EXPECT_EQ(media.moovBeforeMdat, true);
    EXPECT_EQ(std::exchange(media.stamp, {}), FileStamp::of(media.url)); // It is not stored.
    EXPECT_EQ(Json::read<MediaInfo>(Json::write(media).value()).value(), media);
}

} // namespace
} // namespace vantroque

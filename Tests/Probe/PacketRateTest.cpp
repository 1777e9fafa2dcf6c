#include "Probe/Probed.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

// ffprobe's average is made of a duration that holds more than the frames: the wait for the sound
// at the head of a fragmented file, or a last frame that stands longer.

struct Rate {
    std::string text;
    double fps;
};

void PrintTo(const Rate& rate, std::ostream* out)
{
    *out << rate.text;
}

class FragmentedAt : public testing::TestWithParam<Rate> {};

INSTANTIATE_TEST_SUITE_P(Rates, FragmentedAt,
                         testing::Values(Rate{"24000/1001", 24 / 1.001}, Rate{"24", 24},
                                         Rate{"25", 25}, Rate{"30000/1001", 30 / 1.001},
                                         Rate{"30", 30}, Rate{"50", 50},
                                         Rate{"60000/1001", 60 / 1.001}, Rate{"60", 60}));

TEST_P(FragmentedAt, IsNotTakenForItsNeighbour)
{
    for (const bool hasSound : {false, true}) {
        SCOPED_TRACE(hasSound ? "with sound" : "without sound");
        Words words{"-f", "lavfi", "-i", "testsrc2=s=64x36:d=2:r=" + GetParam().text};
        if (hasSound)
            words.insert(words.end(), {"-f", "lavfi", "-i", "sine=r=48000:d=2", "-c:a", "aac"});
        words.insert(words.end(), {"-c:v", "libx264", "-preset", "ultrafast", "-movflags",
                                   "+frag_keyframe+empty_moov"});
        const auto video =
            probedVideo(Media::make({hasSound ? "fragmented-sound.mp4" : "fragmented.mp4", words}));
        EXPECT_NEAR(video.nominalFrameRate, GetParam().fps, 1e-9);
        EXPECT_FALSE(video.isVFR) << video.vfrDetail.value_or(QString()).toStdString();
        EXPECT_EQ(video.vfrDetail, std::nullopt);
    }
}

/// A file of packets at these times, whose average rate ffprobe gives so.
VideoStreamInfo videoOf(const char* averageRate, const std::vector<double>& times)
{
    const FakeTools tools;
    QStringList packets;
    for (const double time : times)
        packets << u"{\"pts_time\": \"%1\", \"dts_time\": \"%1\", \"size\": \"100\"}"_s.arg(time, 0,
                                                                                            'f', 6);
    tools.put("ffprobe", R"(case "$*" in
*packet=*) echo '{"packets": [)"
                             + packets.join(u',').toUtf8() + R"(]}' ;;
*) echo '{"streams": [{"index": 0, "codec_type": "video", "avg_frame_rate": ")"
                             + averageRate + R"("}]}' ;;
esac)");
    return Prober::probe(FileUrl::fromPath("/nowhere.mp4")).value().video.value();
}

std::vector<double> times(std::size_t count, double rate)
{
    std::vector<double> list;
    for (std::size_t i = 0; i < count; ++i)
        list.push_back(static_cast<double>(i) / rate);
    return list;
}

TEST(PacketRate, CorrectsAnAverageThatIsNoUsualRate)
{
    EXPECT_NEAR(videoOf("18000/607", times(60, 30 / 1.001)).nominalFrameRate, 30 / 1.001, 1e-9);
    EXPECT_NEAR(videoOf("18000/607", times(60, 30)).nominalFrameRate, 30, 1e-9);
    EXPECT_NEAR(videoOf("23/1", times(60, 20)).nominalFrameRate, 20, 1e-4)
        << "also by one that is not usual either";
}

TEST(PacketRate, LeavesAUsualAverageAlone)
{
    EXPECT_EQ(videoOf("25/1", times(60, 24)).nominalFrameRate, 25);
    EXPECT_EQ(videoOf("2997/100", times(60, 30)).nominalFrameRate, 29.97);
    EXPECT_EQ(videoOf("0/1", times(60, 30)).nominalFrameRate, 0);
}

TEST(PacketRate, LeavesAnAverageAloneWhereThePacketsAreNotConstant)
{
    auto wild = times(60, 30);
    for (std::size_t i = 1; i < wild.size(); i += 3)
        wild[i] += 0.01;
    EXPECT_EQ(videoOf("18000/607", wild).nominalFrameRate, 18000 / 607.0);
    EXPECT_TRUE(videoOf("18000/607", wild).isVFR);
    EXPECT_EQ(videoOf("18000/607", times(5, 30)).nominalFrameRate, 18000 / 607.0) << "too few";
}

// Only what is shown counts as a frame.

TEST(FrameCount, LeavesOutWhatLiesAheadOfAnEditList)
{
    const fs::path whole = Media::make(
        {"whole.mp4",
         {"-f", "lavfi", "-i", "testsrc2=s=64x36:d=2:r=25", "-c:v", "libx264", "-g", "50"}});
    const auto cut =
        probedVideo(Media::make({"cut.mp4", {"-ss", "0.4", "-i", whole.native(), "-c", "copy"}}));
    EXPECT_EQ(cut.frameCount, 40);
    EXPECT_EQ(probedVideo(whole).frameCount, 50);
}

} // namespace
} // namespace vantroque

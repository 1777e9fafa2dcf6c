#include "Platform/NumberedClip.h"
#include "Platform/Playing.h"
#include "Support/Media.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QByteArray>

#include <random>

// The frame that is asked for is the frame that comes, whatever the file is made of.

namespace vantroque {
namespace {

using Media::operator+;
using Words = std::vector<std::string>;
namespace fs = std::filesystem;

Words x264(const std::string& parameters, const std::string& format = "yuv420p")
{
    return {"-c:v",     "libx264", "-preset",      "veryfast",
            "-pix_fmt", format,    "-x264-params", parameters};
}

Words x265(const std::string& parameters, const std::string& format)
{
    return {"-c:v",     "libx265", "-preset",      "ultrafast",
            "-pix_fmt", format,    "-x265-params", "log-level=none:" + parameters};
}

struct Clip {
    std::string name;
    std::string rate;
    Words encoder;
    std::string seconds = "2";
    double perSecond = 25;
    int frames = 50;
};

void PrintTo(const Clip& clip, std::ostream* out)
{
    *out << clip.name;
}

std::vector<Clip> clips()
{
    const std::string gop12 = "keyint=12:min-keyint=12:scenecut=0:bframes=2";
    return {
        {"closed-gop.mp4", "25", x264(gop12)},
        {"open-gop.mp4", "25", x264(gop12 + ":open-gop=1")},
        {"open-gop.ts", "25", x264(gop12 + ":open-gop=1")},
        {"open-gop.mkv", "25", x264(gop12 + ":open-gop=1")},
        {"pyramid.mov", "25", x264("keyint=48:scenecut=0:bframes=7:b-pyramid=normal:ref=4")},
        {"long-gop.mp4", "25", x264("keyint=250:scenecut=0:bframes=3"), "12", 25, 300},
        {"all-keys.mp4", "25", x264("keyint=1", "yuv422p10le")},
        {"422.mp4", "25", x264(gop12, "yuv422p")},
        {"10-bit.mp4", "25", x264(gop12, "yuv420p10le")},
        {"444.mkv", "25", x264(gop12, "yuv444p")},
        {"fields.mp4", "25", x264(gop12 + ":tff=1") + Words{"-flags", "+ildct+ilme"}},
        {"23.976.mp4", "24000/1001", x264(gop12), "2", 24000 / 1001.0, 48},
        {"29.97.mkv", "30000/1001", x264(gop12), "2", 30000 / 1001.0, 60},
        {"59.94.ts", "60000/1001", x264(gop12), "1", 60000 / 1001.0, 60},
        {"60.mp4", "60", x264(gop12), "1", 60, 60},
        {"hevc.mp4", "25", x265("keyint=24:bframes=3:open-gop=1", "yuv420p")},
        {"hevc-10-bit.mkv", "25", x265("keyint=24:bframes=3:open-gop=1", "yuv420p10le")},
        {"hevc.ts", "25", x265("keyint=24:bframes=3:open-gop=1", "yuv420p")},
        {"prores.mov", "25", {"-c:v", "prores_ks", "-profile:v", "2", "-pix_fmt", "yuv422p10le"}},
        {"prores-4444.mov",
         "25",
         {"-c:v", "prores_ks", "-profile:v", "4", "-pix_fmt", "yuva444p10le"}},
        {"dnxhr.mxf",
         "25",
         {"-vf", "scale=512:256:flags=neighbor", "-c:v", "dnxhd", "-profile:v", "dnxhr_sq",
          "-pix_fmt", "yuv422p"}},
        {"mpeg2.mxf", "25", {"-c:v", "mpeg2video", "-g", "12", "-bf", "2", "-q:v", "2"}},
        {"mpeg2.ts", "25", {"-c:v", "mpeg2video", "-g", "12", "-bf", "2", "-q:v", "2"}},
        {"mpeg2.mpg", "25", {"-c:v", "mpeg2video", "-g", "12", "-bf", "2", "-q:v", "2"}},
        {"vp9.webm",
         "25",
         {"-c:v", "libvpx-vp9", "-g", "24", "-deadline", "realtime", "-cpu-used", "8", "-b:v",
          "500k"}},
        {"av1.mp4",
         "25",
         {"-c:v", "libaom-av1", "-g", "24", "-cpu-used", "8", "-usage", "realtime", "-b:v",
          "500k"}},
        {"mjpeg.avi", "25", {"-c:v", "mjpeg", "-q:v", "3", "-pix_fmt", "yuvj420p"}},
        {"ffv1.mkv", "25", {"-c:v", "ffv1", "-pix_fmt", "gbrp"}},
        {"late.mp4", "25", x264(gop12) + Words{"-output_ts_offset", "0.74"}},
        {"late.ts", "25", x264(gop12 + ":open-gop=1") + Words{"-output_ts_offset", "12.3"}},
        {"upright.mp4", "25", x264(gop12) + Words{"-metadata:s:v:0", "rotate=90"}},
        {"anamorphic.mp4", "25", x264(gop12) + Words{"-aspect", "16/9"}},
        {"4k.mp4", "25",
         Words{"-vf", "scale=3840:1920:flags=neighbor"} + x264("keyint=5:bframes=2"), "0.4", 25,
         10},
    };
}

/// Few enough for every run of the tests; the environment asks for more.
int seeks()
{
    constexpr int usual = 12;
    const int asked = qEnvironmentVariableIntValue("VANTROQUE_TEST_SEEKS");
    return asked > 0 ? asked : usual;
}

/// Room for a few frames only, so that most of them are decoded when they are asked for.
DecoderEngine::Settings withLittleRoom()
{
    auto settings = Playing::silent();
    settings.mostSlots = 6;
    return settings;
}

class ExactFrames : public testing::TestWithParam<Clip> {
protected:
    Playing m_player{NumberedClip::make(GetParam().name, GetParam().rate, GetParam().encoder,
                                        GetParam().seconds),
                     GetParam().perSecond, withLittleRoom()};
    int m_last = GetParam().frames - 1;
};

TEST_P(ExactFrames, ComeAtRandom)
{
    std::mt19937 chance(7); // The same places in each run.
    std::uniform_int_distribution<int> any(0, m_last);
    ASSERT_EQ(m_player.opened(), PlaybackEngine::State::ready);
    for (int i = 0; i < seeks(); ++i) {
        const int number = any(chance);
        ASSERT_EQ(m_player.shown(number), number);
    }
    EXPECT_EQ(m_player.shown(m_last), m_last);
    EXPECT_EQ(m_player.shown(0), 0);
    // Runs to the end, and says where that is.
    for (int number = 0; number <= m_last; ++number)
        ASSERT_EQ(m_player.shown(number, 1), number);
    EXPECT_EQ(m_player.frame(m_last + 1, 1), nullptr);
    EXPECT_EQ(m_player.engine().lastFrame(), m_last);
    // And back, step by step.
    for (int number = m_last; number >= 0; --number)
        ASSERT_EQ(m_player.shown(number), number);
    // From one end to the other.
    for (const int number : {m_last, m_last / 2, m_last, 1, 0})
        EXPECT_EQ(m_player.shown(number), number);
}

INSTANTIATE_TEST_SUITE_P(Clips, ExactFrames, testing::ValuesIn(clips()), [](const auto& clip) {
    std::string name = clip.param.name;
    std::ranges::replace_if(
        name, [](char c) { return std::isalnum(c) == 0; }, '_');
    return name;
});

} // namespace
} // namespace vantroque

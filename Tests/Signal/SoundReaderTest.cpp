#include "Signal/MeasuredFacts.h"
#include "Signal/SignalPass.h"

namespace vantroque {
namespace {

using Media::operator+;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const SignalAnalyzer::Options scanning{.scanSound = true};

/// Three and a bit seconds of picture and of stereo, with both tones of a warning on the right.
std::filesystem::path warned(const std::string& name, const std::vector<std::string>& coding)
{
    return Media::make(
        {name, Clips::picture("64x64", "25", "3.24")
                   + std::vector<std::string>{"-f", "lavfi", "-i",
                                              "aevalsrc=exprs='0.2*sin(2*PI*300*t)|0.1*(sin(2*PI*"
                                              "853*t)+sin(2*PI*960*t))*"
                                              "between(t\\,1\\,2.5)':s=44100:d=3.21"}
                   + coding});
}

} // namespace

TEST_F(SignalPass, EverySampleOfTheSoundIsLookedAtOnTheWay)
{
    for (const auto& [name, codec] :
         {std::pair("warned.mov", "pcm_s24le"), {"warned.mp4", "aac"}}) {
        const auto file = warned(name, {"-c:v", "mpeg4", "-c:a", codec});
        const SignalInfo found = value(pass(file, scanning));
        EXPECT_EQ(found.soundScanAttempted, true) << name;
        ASSERT_TRUE(found.soundScan) << name;
        ASSERT_THAT(found.soundScan->alertTones, SizeIs(1)) << name;
        const AlertTone& tone = found.soundScan->alertTones[0];
        EXPECT_EQ(tone.kind, AlertTone::Kind::attention);
        EXPECT_EQ(tone.channel, 1);
        EXPECT_NEAR(tone.start, 1, 0.3) << name;
        EXPECT_NEAR(tone.end, 2.5, 0.3) << name;
        EXPECT_EQ(found.soundScan->clippedRunCount, 0) << name;
    }
}

TEST_F(SignalPass, LookingAtTheSoundChangesNothingElse)
{
    const auto file = warned("warned.mov", {"-c:v", "mpeg4", "-c:a", "pcm_s24le"});
    SignalInfo found = value(pass(file, scanning));
    const SignalInfo plain = value(pass(file));
    EXPECT_EQ(plain.soundScan, std::nullopt);
    EXPECT_EQ(plain.soundScanAttempted, std::nullopt);
    EXPECT_NEAR(found.soundEnd.value_or(0), plain.soundEnd.value_or(1), 0.01);
    found.soundScan.reset();
    found.soundScanAttempted.reset();
    found.soundEnd = plain.soundEnd;
    EXPECT_EQ(found, plain);
}

TEST_F(SignalPass, SoundThatIsCutOffIsFoundInTheFile)
{
    const auto file = Media::make(
        {"cut-off.wav",
         {"-f", "lavfi", "-i", "aevalsrc=exprs='clip(1.5*sin(2*PI*100*t)\\,-1\\,1)':d=1:s=48000",
          "-c:a", "pcm_s16le"}});
    const SignalInfo found = value(pass(file, scanning));
    ASSERT_TRUE(found.soundScan);
    EXPECT_EQ(found.soundScan->clippedRunCount, 200);
    EXPECT_THAT(found.soundScan->alertTones, IsEmpty());
}

TEST_F(SignalPass, ADecodeThatBeginsAnewLooksAtTheSoundAnew)
{
    SignalAnalyzer::TextFrameRequest request; // a folder that cannot be made, so a second run
    request.directory = m_folder.write("file", "") / "frames";
    int restarts = 0;
    const auto file = warned("warned.mov", {"-c:v", "mpeg4", "-c:a", "pcm_s24le"});
    const SignalInfo found = value(
        pass(file, {.scanSound = true, .textFrames = request, .onRestart = [&] { ++restarts; }}));
    EXPECT_EQ(restarts, 1);
    ASSERT_TRUE(found.soundScan);
    EXPECT_THAT(found.soundScan->alertTones, SizeIs(1));
}

TEST_F(SignalPass, SoundThatIsNotReadToItsEndIsNotMeasured)
{
    m_tools.put("ffmpeg",
                "echo 'Stream mapping:' >&2\necho '" + QByteArray(window).trimmed() + "' >&2");
    const Outcome outcome = pass(sound(), scanning);
    const SignalInfo found = value(outcome);
    EXPECT_EQ(found.soundScanAttempted, true);
    EXPECT_EQ(found.soundScan, std::nullopt);
}

} // namespace vantroque

#include "Analysis/Analyzer.h"
#include "Base/Numbers.h"
#include "Check/Builders.h"
#include "Check/TwoPop.h"
#include "Signal/SignalAnalyzer.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

// The sync pop of a leader: its tone and its peak, read from the few frames that it lasts.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using namespace std::string_literals;
using Analyzer::measureLeaderToneIfNeeded;
using SignalAnalyzer::measurePop;
using SignalAnalyzer::Pop;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// A leader of three seconds of slate and one of black, so that a pop sits at two seconds.
constexpr double slate = 3;
constexpr double black = 1;

Profile withLeader(std::optional<double> slateSeconds = slate,
                   std::optional<double> blackSeconds = black)
{
    Profile profile = bareProfile();
    profile.content = ContentRule();
    profile.content->slateSeconds = slateSeconds;
    profile.content->slateBlackSeconds = blackSeconds;
    return profile;
}

/// A leader with this sound from two seconds on, and an ad with a tone after it.
fs::path spot(const std::string& name, const std::string& sound, double seconds)
{
    const auto length = Numbers::fixed(seconds, 4).toStdString();
    return Media::make(
        {name,
         {"-f", "lavfi", "-i", "color=gray:s=64x64:r=25:d=6", "-f", "lavfi", "-i",
          "aevalsrc='if(gte(t,2)*lt(t,2+" + length + ")," + sound
              + ",if(gte(t,4),0.1*sin(2*PI*440*t),0))':s=48000:d=6",
          "-vf", "drawbox=color=black:t=fill:enable='between(t,3,3.99)'", "-c:v", "libx264",
          "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "pcm_s16le", "-shortest"}});
}

fs::path popSpot()
{
    return spot("pop.mov", "0.1*sin(2*PI*1000*t)", 0.04);
}

/// The record of a file whose sound was heard in these passages.
MediaInfo heard(const std::vector<TimeSpan>& islands, const fs::path& file = popSpot())
{
    MediaInfo media = hdSpot();
    media.url = FileUrl::fromPath(file);
    media.signal = SignalInfo();
    media.signal->audioIslands = islands;
    return media;
}

SignalInfo measured(MediaInfo media, const std::vector<Profile>& profiles = {withLeader()})
{
    measureLeaderToneIfNeeded(media, profiles);
    return *media.signal;
}

/// An ffmpeg that finds a pop of 1000 Hz and -20 dBFS wherever it looks, and notes where.
class PopEverywhere {
public:
    PopEverywhere()
    {
        m_tools.put("ffmpeg",
                    "printf '%s\\n' \"$@\" '' >> '"
                        + QByteArray::fromStdString((m_tools.folder() / "ffmpeg.log").native())
                        + "'\necho centroid=1000\n"
                          "echo 'max_volume: -20.0 dB' >&2");
    }
    std::size_t runs() const { return m_tools.calls("ffmpeg").size(); }
    /// Start and length of the one passage that was looked at.
    std::pair<std::string, std::string> window() const
    {
        const auto calls = m_tools.calls("ffmpeg");
        return calls.size() == 1 && calls[0].size() > 5 ? std::pair(calls[0][3], calls[0][5])
                                                        : std::pair<std::string, std::string>();
    }

private:
    const FakeTools m_tools;
};

// From a real leader.

TEST(LeaderTone, ASyncPopIsToldByItsToneAndPeak)
{
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(popSpot()), {withLeader()}).value();
    const SignalInfo& signal = *analysis.media.signal;
    EXPECT_EQ(signal.leaderToneChecked, true);
    ASSERT_TRUE(signal.leaderToneHz);
    EXPECT_GT(*signal.leaderToneHz, 950);
    EXPECT_LT(*signal.leaderToneHz, 1300);
    EXPECT_EQ(signal.leaderPopPeakDb, -20);
    EXPECT_TRUE(Checker::isTwoPop(signal));
}

TEST(LeaderTone, AnotherShortSoundIsNoPop)
{
    const auto noise = spot("noise.mov", "0.2*(random(0)-0.5)", 0.04);
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(noise), {withLeader()}).value();
    const SignalInfo& signal = *analysis.media.signal;
    ASSERT_TRUE(signal.leaderToneHz);
    EXPECT_GT(*signal.leaderToneHz, 2000);
    EXPECT_FALSE(Checker::isTwoPop(signal));
}

TEST(LeaderTone, ALongSoundIsNotLookedAt)
{
    const auto longer = spot("long.mov", "0.1*sin(2*PI*1000*t)", 0.2);
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(longer), {withLeader()}).value();
    const SignalInfo& signal = *analysis.media.signal;
    EXPECT_EQ(signal.leaderToneChecked, true);
    EXPECT_EQ(signal.leaderToneHz, std::nullopt);
    EXPECT_EQ(signal.leaderPopPeakDb, std::nullopt);
}

// Which passage.

TEST(LeaderTone, TheIslandAloneIsDecoded)
{
    const PopEverywhere tools;
    const SignalInfo signal = measured(heard({{2.0004, 2.0404}, {4, 6}}));
    EXPECT_EQ(tools.window(), std::pair("2.000"s, "0.040"s));
    EXPECT_EQ(signal.leaderToneHz, 1000);
    EXPECT_EQ(signal.leaderPopPeakDb, -20);
    EXPECT_EQ(signal.leaderToneChecked, true);
}

TEST(LeaderTone, IsSoughtWhereTheFileHasIt)
{
    const PopEverywhere tools;
    MediaInfo media = heard({{2, 2.04}, {4, 6}});
    media.signal->pictureStart = 0.48;
    measured(media);
    EXPECT_EQ(tools.window(), std::pair("2.480"s, "0.040"s)) << "times count from the first frame";
}

TEST(LeaderTone, AnIslandOfOneSampleHasAWindowOfThirtyMilliseconds)
{
    const PopEverywhere tools;
    measured(heard({{2, 2.00002}}));
    EXPECT_EQ(tools.window(), std::pair("2.000"s, "0.030"s));
}

TEST(LeaderTone, AnIslandThatEndsAheadOfItsStartCountsAsNone)
{
    const PopEverywhere tools;
    measured(heard({{2, 1.5}}));
    EXPECT_EQ(tools.window(), std::pair("2.000"s, "0.030"s));
}

TEST(LeaderTone, TwoIslandsAheadOfTheAdAreNoPop)
{
    const PopEverywhere tools;
    const SignalInfo signal = measured(heard({{1, 1.04}, {2, 2.04}, {4, 6}}));
    EXPECT_EQ(tools.runs(), 0U);
    EXPECT_EQ(signal.leaderToneChecked, true);
    EXPECT_EQ(signal.leaderToneHz, std::nullopt);
}

TEST(LeaderTone, ThreeFramesAreAPopAndFourAreNone)
{
    const PopEverywhere tools;
    measured(heard({{2, 2.16}, {4, 6}}));
    EXPECT_EQ(tools.runs(), 0U);
    measured(heard({{1.88, 2}, {4, 6}}));
    EXPECT_EQ(tools.window(), std::pair("1.880"s, "0.120"s));
}

TEST(LeaderTone, FramesAreThoseOfThePicture)
{
    MediaInfo media = heard({{2, 2.06}, {4, 6}});
    media.video->nominalFrameRate = 60;
    const PopEverywhere tools;
    EXPECT_EQ(measured(media).leaderToneHz, std::nullopt);
    media.video.reset(); // 24 a second
    EXPECT_EQ(measured(media).leaderToneHz, 1000);
}

TEST(LeaderTone, TheLongestLeaderOfAllProfilesCounts)
{
    const PopEverywhere tools;
    measured(heard({{2, 2.04}, {4, 6}}), {withLeader(1, 1), withLeader(), withLeader(1, 2)});
    EXPECT_EQ(tools.runs(), 1U);
    measured(heard({{2, 2.04}, {4, 6}}), {withLeader(), withLeader(10, 5)});
    EXPECT_EQ(tools.runs(), 1U) << "two islands before that one's end";
}

// Whether at all.

TEST(LeaderTone, NeedsSoundAndADecode)
{
    const PopEverywhere tools;
    MediaInfo mute = heard({{2, 2.04}});
    mute.audio.reset();
    EXPECT_EQ(measured(mute).leaderToneChecked, std::nullopt);
    MediaInfo undecoded = heard({});
    undecoded.signal.reset();
    measureLeaderToneIfNeeded(undecoded, {withLeader()});
    EXPECT_EQ(undecoded.signal, std::nullopt);
    EXPECT_EQ(tools.runs(), 0U);
}

TEST(LeaderTone, NeedsAProfileWithSlateAndBlack)
{
    const PopEverywhere tools;
    const MediaInfo media = heard({{2, 2.04}, {4, 6}});
    for (const Profile& profile :
         {bareProfile(), withLeader(4, {}), withLeader({}, 4), withLeader({}, {})})
        EXPECT_EQ(measured(media, {profile}), *media.signal);
    EXPECT_EQ(measured(media, {}), *media.signal);
    EXPECT_EQ(tools.runs(), 0U);
}

TEST(LeaderTone, IsMeasuredOnce)
{
    const PopEverywhere tools;
    MediaInfo media = heard({{2, 2.04}, {4, 6}});
    media.signal->leaderToneChecked = true;
    EXPECT_EQ(measured(media), *media.signal) << "checked, no tone found";
    media.signal->leaderToneHz = 440;
    media.signal->leaderPopPeakDb = -10;
    EXPECT_EQ(measured(media), *media.signal) << "tone and peak known";
    EXPECT_EQ(tools.runs(), 0U);
}

TEST(LeaderTone, IsMeasuredOnceMoreWhenThePeakIsMissing)
{
    const PopEverywhere tools;
    MediaInfo media = heard({{2, 2.04}, {4, 6}});
    media.signal->leaderToneChecked = true;
    media.signal->leaderToneHz = 440;
    const SignalInfo signal = measured(media);
    EXPECT_EQ(tools.runs(), 1U);
    EXPECT_EQ(signal.leaderToneHz, 1000);
    EXPECT_EQ(signal.leaderPopPeakDb, -20);
}

TEST(LeaderTone, AFailingToolLeavesBothAbsentAndIsNotAskedAgain)
{
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    MediaInfo media = heard({{2, 2.04}, {4, 6}});
    media.signal->leaderToneHz = 440;
    const SignalInfo signal = measured(media);
    EXPECT_EQ(signal.leaderToneHz, std::nullopt);
    EXPECT_EQ(signal.leaderPopPeakDb, std::nullopt);
    EXPECT_EQ(signal.leaderToneChecked, true);
}

// The run of ffmpeg.

Words popCall(const std::string& start, const std::string& duration, const std::string& spectrum)
{
    return {"-hide_banner",
            "-nostats",
            "-ss",
            start,
            "-t",
            duration,
            "-i",
            popSpot().native(),
            "-af",
            "volumedetect," + spectrum + ",ametadata=mode=print:file=-",
            "-f",
            "null",
            "-"};
}

TEST(MeasurePop, LooksAtThePassageAloneAndAgainWhereTheFilterTakesNoChoice)
{
    const FakeTools tools;
    tools.record("ffmpeg");
    const Pop pop = measurePop(FileUrl::fromPath(popSpot()), 2, 0.04);
    EXPECT_TRUE(pop.centroidHz);
    EXPECT_EQ(pop.peakDb, -20);
    const auto calls = tools.calls("ffmpeg");
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), popCall("2.000", "0.040", "aspectralstats=measure=centroid"));
    // Version 6 knows the choice of a measurement, version 5 does not.
    const bool again = calls.size() == 2;
    EXPECT_EQ(calls.back(), popCall("2.000", "0.040",
                                    again ? "aspectralstats" : "aspectralstats=measure=centroid"));
    EXPECT_LE(calls.size(), 2U);
}

TEST(MeasurePop, StartsAtTheBeginningAtTheEarliest)
{
    const FakeTools tools;
    tools.record("ffmpeg");
    measurePop(FileUrl::fromPath(popSpot()), -1, 0.0301);
    ASSERT_FALSE(tools.calls("ffmpeg").empty());
    EXPECT_EQ(tools.calls("ffmpeg").front(),
              popCall("0.000", "0.030", "aspectralstats=measure=centroid"));
}

Pop popOf(const QByteArray& script)
{
    const FakeTools tools;
    tools.put("ffmpeg", script);
    return measurePop(FileUrl::fromPath("/spots/spot.mov"), 2, 0.04);
}

TEST(MeasurePop, TheLowestCentroidAndTheFirstPeakCount)
{
    EXPECT_EQ(popOf("printf 'lavfi.aspectralstats.1.centroid=1200.5\\n"
                    "lavfi.aspectralstats.2.centroid=1000.25\\ncentroid=1100\\n'\n"
                    "printf 'max_volume: -3.5 dB\\nmax_volume: -9.0 dB\\n' >&2"),
              (Pop{1000.25, -3.5}));
    EXPECT_EQ(popOf("echo centroid=nan; echo 'max_volume:   0.0 dB' >&2"), (Pop{{}, 0.0}));
    EXPECT_EQ(popOf("echo centroid=900"), (Pop{900, {}}));
}

TEST(MeasurePop, AFailedRunStillCountsWithWhatItPrinted)
{
    EXPECT_EQ(popOf("echo centroid=900; exit 1"), (Pop{900, {}}));
    EXPECT_EQ(popOf("exit 1"), Pop());
}

TEST(MeasurePop, WithoutFfmpegFindsNothing)
{
    const ScopedVariable chosen("VANTROQUE_FFMPEG_DIR");
    const TestFolder nothing;
    nothing.writeScript("which", "#!/bin/sh\nexit 1\n");
    const ScopedVariable path("PATH", nothing.path());
    EXPECT_EQ(measurePop(FileUrl::fromPath("/spots/spot.mov"), 2, 0.04), Pop());
}

TEST(MeasurePop, OfAMissingFileFindsNothing)
{
    EXPECT_EQ(measurePop(FileUrl::fromPath("/nowhere.mov"), 2, 0.04), Pop());
}

TEST(MeasurePop, CannotBeForgedByTagsInsideTheFile)
{
    const FileUrl plain = FileUrl::fromPath(popSpot());
    const FileUrl forged =
        FileUrl::fromPath(Media::make({"forged.mov",
                                       {"-i", popSpot().native(), "-c", "copy", "-metadata",
                                        "title=max_volume: -60.0 dB centroid=1"}}));
    EXPECT_EQ(measurePop(forged, 2, 0.04), measurePop(plain, 2, 0.04));
}

} // namespace
} // namespace vantroque

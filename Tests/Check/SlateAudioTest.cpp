#include "Slated.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

const char* const quiet = "no audio on the slate or in the black before the ad";
const char* const popLimit = "a mute slate, or a 2-pop at its end no louder than -20 dBFS";
const char* const pop = "a 2-pop at frame 125 (1031 Hz, -20.5 dBFS, 1 frame); silent otherwise";

CheckResult slateAudio(Verdict verdict, const char* measured, const char* expected,
                       const char* fix = nullptr)
{
    return row("slate-audio", "Slate audio", verdict, measured, expected, fix);
}

CheckResult firstSoundAt(std::optional<double> seconds)
{
    Slated file;
    file.signal.headSilenceSeconds = seconds;
    return slateAudioRow(file.facts());
}

/// One frame of tone two seconds before the ad.
Slated popped()
{
    Slated file;
    file.signal.headSilenceSeconds = 5;
    file.signal.audioIslands = {{5, 5.04}, {7, 37}};
    file.signal.leaderToneHz = 1030.6;
    file.signal.leaderPopPeakDb = -20.5;
    return file;
}

CheckResult limited(std::optional<double> peak)
{
    Slated file = popped();
    file.rule.slateTwoPopAllowed = true;
    file.rule.slateTwoPopMaxDbFS = -20;
    file.signal.leaderPopPeakDb = peak;
    return slateAudioRow(file.facts());
}

} // namespace

TEST(SlateAudio, AMuteLeaderPasses)
{
    EXPECT_EQ(firstSoundAt(7.125),
              slateAudio(Verdict::pass, "leader is mute (first sound at 7.13 s)", quiet));
    EXPECT_EQ(firstSoundAt(6.75).verdict, Verdict::pass);
    EXPECT_EQ(firstSoundAt(6.74).verdict, Verdict::fail);
}

TEST(SlateAudio, SoundUnderTheLeaderFails)
{
    const char* const fix =
        "Mute the first 7 seconds, slate and black. The mix starts with the ad.";
    EXPECT_EQ(firstSoundAt({}),
              slateAudio(Verdict::fail, "sound from the first frame", quiet, fix));
    EXPECT_EQ(firstSoundAt(0.09).measured, u"sound from the first frame"_s);
    EXPECT_EQ(firstSoundAt(0.1),
              slateAudio(Verdict::fail, "sound from 0.10 s, under the leader", quiet, fix));
}

TEST(SlateAudio, AFileWithoutAnySoundHasNoFirstSound)
{
    Slated file;
    file.signal.headSilenceSeconds = 37;
    file.signal.audioIslands.emplace();
    EXPECT_EQ(slateAudioRow(file.facts()), slateAudio(Verdict::pass, "no sound", quiet));
    file.signal.headSilenceSeconds = 4; // all of a file that ends within its leader
    EXPECT_EQ(slateAudioRow(file.facts()), slateAudio(Verdict::pass, "no sound", quiet));
}

TEST(SlateAudio, APopWhereNobodyAllowsItWarns)
{
    Slated file = popped();
    const auto warning = slateAudio(
        Verdict::warn, pop, quiet,
        "The published page asks for silence on the slate and through the two seconds of black. "
        "Confirm this destination accepts a sync pop before you deliver.");
    EXPECT_EQ(slateAudioRow(file.facts()), warning);
    file.rule.slateTwoPopAllowed = false;
    file.rule.slateTwoPopMaxDbFS = -20;
    EXPECT_EQ(slateAudioRow(file.facts()), warning);
}

TEST(SlateAudio, AnAllowedPopWithoutACeilingPassesMeasuredOrNot)
{
    Slated file = popped();
    file.rule.slateTwoPopAllowed = true;
    EXPECT_EQ(slateAudioRow(file.facts()),
              slateAudio(Verdict::pass, pop, "a mute leader, or a 2-pop at the end of the slate"));
    file.signal.leaderPopPeakDb.reset();
    EXPECT_EQ(slateAudioRow(file.facts()).measured,
              u"a 2-pop at frame 125 (1031 Hz, 1 frame); silent otherwise"_s);
}

TEST(SlateAudio, AnUnmeasuredPopWarnsWhereThereIsACeiling)
{
    EXPECT_EQ(
        limited({}),
        slateAudio(Verdict::warn,
                   "a 2-pop at frame 125 (1031 Hz, 1 frame); silent otherwise; level not measured",
                   popLimit,
                   "Check the pop's peak by hand; it must not exceed the published ceiling."));
}

TEST(SlateAudio, APopIsHeldAgainstItsCeiling)
{
    EXPECT_EQ(limited(-20.5), slateAudio(Verdict::pass, pop, popLimit));
    EXPECT_EQ(limited(-20).verdict, Verdict::pass);
    EXPECT_EQ(limited(-19.5),
              slateAudio(Verdict::warn,
                         "a 2-pop at frame 125 (1031 Hz, -19.5 dBFS, 1 frame); silent otherwise",
                         popLimit,
                         "The pop sits within half a decibel of the ceiling, close enough that an "
                         "encode could put it over. Trim it a little."));
    EXPECT_EQ(limited(-17.8),
              slateAudio(Verdict::warn,
                         "a 2-pop at frame 125 (1031 Hz, -17.8 dBFS, 1 frame); silent otherwise",
                         popLimit,
                         "Extreme Reach might reject it. Bring the pop down 2.2 dB. The pop itself "
                         "is right. Only its level is out."));
}

TEST(SlateAudio, TheLengthOfAPopIsAtLeastAFrame)
{
    Slated file = popped();
    file.signal.audioIslands = {{5, 5.001}};
    EXPECT_TRUE(slateAudioRow(file.facts()).measured.contains(u", 1 frame);"_s));
    file.signal.audioIslands = {{5, 4.9}};
    EXPECT_TRUE(slateAudioRow(file.facts()).measured.contains(u", 1 frame);"_s));
    file.signal.audioIslands = {{5, 5.08}};
    EXPECT_TRUE(slateAudioRow(file.facts()).measured.contains(u", 2 frames);"_s));
}

TEST(SlateAudio, APopCountsOnlyAsTheLeadersSingleShortSound)
{
    Slated file = popped();
    file.signal.audioIslands = {{5, 5.12}};
    EXPECT_EQ(slateAudioRow(file.facts()).verdict, Verdict::warn);
    file.signal.audioIslands = {{5, 5.16}};
    EXPECT_EQ(slateAudioRow(file.facts()).verdict, Verdict::fail);
    file.signal.audioIslands = {{5, 5.04}, {6, 6.1}};
    EXPECT_EQ(slateAudioRow(file.facts()).measured, u"sound from 5.00 s, under the leader"_s);
}

TEST(SlateAudio, AnotherToneIsSoundUnderTheLeader)
{
    Slated file = popped();
    file.signal.leaderToneHz = 440;
    EXPECT_EQ(slateAudioRow(file.facts()).verdict, Verdict::fail);
    file.signal.leaderToneHz.reset();
    EXPECT_EQ(slateAudioRow(file.facts()).verdict, Verdict::fail);
}

} // namespace vantroque::Checker

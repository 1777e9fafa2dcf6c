#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

LoudnessRule targeting(double target)
{
    LoudnessRule rule;
    rule.targetLKFS = target;
    return rule;
}

LoudnessRule peaking(double ceiling, std::optional<double> floor = {},
                     std::optional<double> target = {})
{
    LoudnessRule rule;
    rule.maxTruePeakDb = ceiling;
    rule.minTruePeakDb = floor;
    rule.targetLKFS = target;
    return rule;
}

Rows loudnessRows(const LoudnessRule& rule, const std::optional<SignalInfo>& signal)
{
    Profile profile = bareProfile();
    profile.loudness = rule;
    MediaInfo media = hdSpot();
    media.signal = signal;
    return rowsOf(checkLoudness, profile, media);
}

Rows loudnessAt(const LoudnessRule& rule, double integrated)
{
    SignalInfo signal;
    signal.integratedLKFS = integrated;
    return loudnessRows(rule, signal);
}

Rows peakAt(const LoudnessRule& rule, double peak)
{
    SignalInfo signal;
    signal.truePeakDb = peak;
    Rows rows = loudnessRows(rule, signal);
    std::erase_if(rows, [](const CheckResult& each) { return each.id == u"loudness"_s; });
    return rows;
}

/// The frames that rows point at, -1 for none.
std::vector<std::int64_t> momentsOf(const Rows& rows)
{
    std::vector<std::int64_t> frames;
    for (const CheckResult& each : rows)
        frames.push_back(each.moment ? each.moment->frame : -1);
    return frames;
}

Rows silenceOf(double limit, std::optional<double> longest)
{
    LoudnessRule rule;
    rule.maxSilenceSeconds = limit;
    SignalInfo signal;
    signal.longestSilenceSeconds = longest;
    return loudnessRows(rule, signal);
}

CheckResult loudness(Verdict verdict, const char* measured, const char* fix = nullptr,
                     const char* expected = "-23 LKFS ± 2 LU")
{
    return row("loudness", "Loudness", verdict, measured, expected, fix);
}

CheckResult truePeak(Verdict verdict, const char* measured, const char* expected,
                     const char* fix = nullptr)
{
    return row("true-peak", "True peak", verdict, measured, expected, fix);
}

CheckResult silence(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("silence", "Audio silence", verdict, measured, "no silent run over 2.0 s", fix);
}

const char* const adverts = "at most -18 LUFS in any 3 s (EBU R 128 s1, 2016)";

LoudnessRule limitedTo(double shortTerm)
{
    LoudnessRule rule;
    rule.maxShortTerm = LoudnessLimit{shortTerm, {u"EBU R 128 s1"_s, {}, u"2016"_s}};
    return rule;
}

/// Half a minute of sound with that loudest window.
Rows loudestAt(const LoudnessRule& rule, double lufs, double seconds = 30)
{
    SignalInfo signal;
    signal.soundStart = 0;
    signal.soundEnd = seconds;
    if (seconds >= 3)
        signal.maxShortTerm = LoudestWindow{lufs, 8};
    signal.maxMomentary = LoudestWindow{lufs + 2, 9};
    return loudnessRows(rule, signal);
}

CheckResult shortTerm(Verdict verdict, const char* measured)
{
    return row("short-term", "Short-term loudness", verdict, measured, adverts);
}

} // namespace

TEST(LoudnessChecks, AnUnmeasuredFileIsInfoWhereThereIsATarget)
{
    LoudnessRule rule = targeting(-23);
    rule.maxTruePeakDb = -2;
    rule.maxSilenceSeconds = 2;
    EXPECT_THAT(loudnessRows(rule, {}),
                ElementsAre(loudness(Verdict::info, "signal pass skipped")));
    rule.targetLKFS.reset();
    EXPECT_THAT(loudnessRows(rule, {}), IsEmpty());
}

TEST(LoudnessChecks, SoundThatCouldNotBeMeasuredWarnsWhereThereIsATarget)
{
    LoudnessRule rule = targeting(-23);
    rule.maxTruePeakDb = -2;
    EXPECT_THAT(loudnessRows(rule, SignalInfo{}),
                ElementsAre(loudness(Verdict::warn, "could not be measured")));
    rule.targetLKFS.reset();
    EXPECT_THAT(loudnessRows(rule, SignalInfo{}), IsEmpty());
}

TEST(LoudnessChecks, AFileWithoutSoundHasNoRowOnLoudness)
{
    Profile profile = bareProfile();
    profile.loudness = targeting(-23);
    MediaInfo media = measuredSpot();
    media.audio.reset();
    EXPECT_THAT(rowsOf(checkLoudness, profile, media), IsEmpty());
}

TEST(LoudnessChecks, SilenceFromEndToEndFailsAlsoWhereThePlatformNormalizes)
{
    LoudnessRule rule = targeting(-23);
    const auto silent = loudness(Verdict::fail, "-70.0 LKFS (no programme sound)",
                                 "The sound is silent from end to end. Export again with the mix.");
    EXPECT_THAT(loudnessAt(rule, -70), ElementsAre(silent));
    EXPECT_THAT(loudnessAt(rule, -99), ElementsAre(silent));
    rule.autoNormalized = true;
    EXPECT_THAT(loudnessAt(rule, -70), ElementsAre(silent));
    EXPECT_EQ(loudnessAt(rule, -69.9).at(0).verdict, Verdict::warn);
}

TEST(LoudnessChecks, NumbersOfAProfilePrintWithTheDecimalsThatTheyHave)
{
    LoudnessRule rule = targeting(-23.5);
    rule.toleranceLU = 0.5;
    rule.maxTruePeakDb = -0.5;
    EXPECT_THAT(loudnessAt(rule, -20),
                ElementsAre(loudness(Verdict::fail, "-20.0 LKFS (+3.5 LU off target)",
                                     "Adjust the mix by -3.5 dB, or normalize on export (in "
                                     "ffmpeg: -af loudnorm=I=-23.5:TP=-0.5:LRA=7).",
                                     "-23.5 LKFS ± 0.5 LU")));
    EXPECT_THAT(peakAt(peaking(-1.5, -9.5), -4),
                ElementsAre(truePeak(Verdict::pass, "-4.0 dBTP", "-1.5 to -9.5 dBTP")));
    EXPECT_THAT(silenceOf(0.25, 0.0),
                ElementsAre(row("silence", "Audio silence", Verdict::pass, "no silent runs",
                                "no silent run over 0.25 s")));
}

TEST(LoudnessChecks, TheToleranceItselfIsInside)
{
    EXPECT_THAT(loudnessAt(targeting(-23), -25.0),
                ElementsAre(loudness(Verdict::pass, "-25.0 LKFS")));
    EXPECT_THAT(loudnessAt(targeting(-23.1), -25.1),
                ElementsAre(loudness(Verdict::pass, "-25.1 LKFS", nullptr, "-23.1 LKFS ± 2 LU")));
    LoudnessRule narrow = targeting(-24);
    narrow.toleranceLU = 0.5;
    EXPECT_THAT(loudnessAt(narrow, -23.5),
                ElementsAre(loudness(Verdict::pass, "-23.5 LKFS", nullptr, "-24 LKFS ± 0.5 LU")));
}

TEST(LoudnessChecks, OutsideTheToleranceTheFixIsTheGainToApply)
{
    EXPECT_THAT(loudnessAt(targeting(-23), -25.1),
                ElementsAre(loudness(Verdict::fail, "-25.1 LKFS (-2.1 LU off target)",
                                     "Adjust the mix by +2.1 dB, or normalize on export (in "
                                     "ffmpeg: -af loudnorm=I=-23:TP=-2:LRA=7).")));
    LoudnessRule rule = targeting(-23);
    rule.maxTruePeakDb = -1;
    EXPECT_THAT(loudnessAt(rule, -20),
                ElementsAre(loudness(Verdict::fail, "-20.0 LKFS (+3.0 LU off target)",
                                     "Adjust the mix by -3.0 dB, or normalize on export (in "
                                     "ffmpeg: -af loudnorm=I=-23:TP=-1:LRA=7).")));
}

TEST(LoudnessChecks, APlatformThatNormalizesOnlyWarns)
{
    LoudnessRule rule = targeting(-14);
    rule.autoNormalized = true;
    EXPECT_THAT(loudnessAt(rule, -10),
                ElementsAre(loudness(Verdict::warn, "-10.0 LKFS (+4.0 LU off target)",
                                     "Accepted: the platform normalizes it to -14 LKFS, which "
                                     "takes the result out of your hands. Adjust the mix by -4.0 "
                                     "dB to deliver it on target.",
                                     "-14 LKFS ± 2 LU")));
}

TEST(LoudnessChecks, APeakOnTheCeilingPassesAndOneAboveFails)
{
    EXPECT_THAT(peakAt(peaking(-2), -2.0),
                ElementsAre(truePeak(Verdict::pass, "-2.0 dBTP", "≤ -2 dBTP")));
    EXPECT_THAT(peakAt(peaking(-2), -1.9),
                ElementsAre(truePeak(
                    Verdict::fail, "-1.9 dBTP (over the ceiling)", "≤ -2 dBTP",
                    "Apply a true-peak limiter at -2 dBTP in your mix. Lossy encoders overshoot, "
                    "so a file that peaks at the ceiling can clip after the platform re-encodes "
                    "it.")));
}

TEST(LoudnessChecks, APeakAboveTheCeilingWithATargetProposesToNormalize)
{
    EXPECT_THAT(peakAt(peaking(-2, {}, -23), 0.4),
                ElementsAre(truePeak(Verdict::fail, "0.4 dBTP (over the ceiling)", "≤ -2 dBTP",
                                     "Apply a true-peak limiter at -2 dBTP in your mix, or "
                                     "normalize on export (in ffmpeg: -af "
                                     "loudnorm=I=-23:TP=-2:LRA=7).")));
}

TEST(LoudnessChecks, APeakUnderTheFloorFails)
{
    EXPECT_THAT(peakAt(peaking(-2, -6), -6.0),
                ElementsAre(truePeak(Verdict::pass, "-6.0 dBTP", "-2 to -6 dBTP")));
    EXPECT_THAT(peakAt(peaking(-2, -6), -6.5),
                ElementsAre(truePeak(Verdict::fail, "-6.5 dBTP (below the window)", "-2 to -6 dBTP",
                                     "Peaks sit below the required window. Raise the mix so peaks "
                                     "land between -6 and -2 dBTP.")));
    EXPECT_THAT(peakAt(peaking(-2, -6, -24), -7),
                ElementsAre(truePeak(Verdict::fail, "-7.0 dBTP (below the window)", "-2 to -6 dBTP",
                                     "Peaks sit below the required window. Raise the mix so peaks "
                                     "land between -6 and -2 dBTP while integrated loudness stays "
                                     "at -24 LKFS.")));
}

TEST(LoudnessChecks, APeakAboveTheRecommendationWarns)
{
    LoudnessRule rule = peaking(-2, -10);
    rule.recommendedMaxTruePeakDb = -6;
    EXPECT_THAT(peakAt(rule, -6),
                ElementsAre(truePeak(Verdict::pass, "-6.0 dBTP", "-2 to -10 dBTP")));
    EXPECT_THAT(peakAt(rule, -4),
                ElementsAre(truePeak(
                    Verdict::warn, "-4.0 dBTP (within spec, above the recommendation)",
                    "-2 to -10 dBTP, -6 dBTP recommended",
                    "Accepted under the -2 dBTP ceiling. The platform recommends -6 dBTP, which "
                    "downstream digital destinations accept too.")));
}

TEST(LoudnessChecks, FiguresOfAPairOfTracksSaySo)
{
    Profile profile = bareProfile();
    profile.loudness = peaking(-2, {}, -23);
    MediaInfo media = measuredSpot();
    media.audio->tracks = std::vector<AudioTrackInfo>(2, {u"pcm_s24le"_s, 48'000, 1, {}, {}});
    media.signal->integratedLKFS = -20;
    media.signal->truePeakDb = -3;
    const Rows rows = rowsOf(checkLoudness, profile, media);
    EXPECT_EQ(rows.at(0).measured, u"-20.0 LKFS (+3.0 LU off target), tracks 1 and 2"_s);
    EXPECT_EQ(rows.at(1).measured, u"-3.0 dBTP, tracks 1 and 2"_s);
}

TEST(LoudnessChecks, WhatIsTooLoudOrTooHighPointsToWhereItIsWorst)
{
    LoudnessRule rule = peaking(-2, -10, -23);
    rule.recommendedMaxTruePeakDb = -6;
    SignalInfo signal;
    signal.integratedLKFS = -19.6;
    signal.truePeakDb = -1;
    signal.loudestSeconds = 12.32;
    signal.truePeakSeconds = 4.16;
    EXPECT_THAT(momentsOf(loudnessRows(rule, signal)), ElementsAre(308, 104));
    signal.truePeakDb = -4;
    rule.autoNormalized = true;
    EXPECT_THAT(momentsOf(loudnessRows(rule, signal)), ElementsAre(308, 104))
        << "warnings have it as well";
}

TEST(LoudnessChecks, WhatIsRightOrTooQuietPointsNowhere)
{
    SignalInfo signal;
    signal.loudestSeconds = 12.32;
    signal.truePeakSeconds = 4.1;
    for (const double loudness : {-70.0, -30.0, -23.0}) {
        signal.integratedLKFS = loudness;
        signal.truePeakDb = loudness / 3;
        EXPECT_THAT(momentsOf(loudnessRows(peaking(-2, -9, -23), signal)), ElementsAre(-1, -1));
    }
}

TEST(LoudnessChecks, AMomentStandsOnAFrameOfThePicture)
{
    SignalInfo signal;
    signal.integratedLKFS = -10;
    signal.truePeakDb = 1;
    EXPECT_THAT(momentsOf(loudnessRows(peaking(-2, {}, -23), signal)), ElementsAre(-1, -1))
        << "an earlier measurement does not know it";
    signal.loudestSeconds = -0.4;
    signal.truePeakSeconds = 1e300;
    EXPECT_THAT(momentsOf(loudnessRows(peaking(-2, {}, -23), signal)), ElementsAre(0, 749));
    Profile profile = bareProfile();
    profile.loudness = peaking(-2, {}, -23);
    MediaInfo sound = hdSpot();
    sound.video.reset();
    sound.signal = signal;
    EXPECT_THAT(momentsOf(rowsOf(checkLoudness, profile, sound)), ElementsAre(-1, -1));
}

TEST(LoudnessChecks, SilenceOverTheLimitFails)
{
    EXPECT_THAT(silenceOf(2, 2.0), ElementsAre(silence(Verdict::pass, "longest silent run 2.0 s")));
    EXPECT_THAT(silenceOf(2, 2.5),
                ElementsAre(silence(Verdict::fail, "2.5 s of continuous silence",
                                    "Check for a dropped audio region or a silent head/tail. Room "
                                    "tone under the gap is enough to clear this.")));
}

TEST(LoudnessChecks, NoSilenceAtAllPasses)
{
    EXPECT_THAT(silenceOf(2, 0.0), ElementsAre(silence(Verdict::pass, "no silent runs")));
    EXPECT_THAT(silenceOf(2, {}), ElementsAre(silence(Verdict::pass, "no silent runs")));
}

TEST(LoudnessChecks, LoudnessPeakAndSilenceStandInThisOrder)
{
    LoudnessRule rule = peaking(-2, {}, -23);
    rule.maxSilenceSeconds = 2;
    SignalInfo signal;
    signal.integratedLKFS = -23;
    signal.truePeakDb = -3;
    EXPECT_THAT(idsOf(loudnessRows(rule, signal)),
                ElementsAre(u"loudness"_s, u"true-peak"_s, u"silence"_s));
}

TEST(LoudnessChecks, TheLoudestWindowMayReachItsLimitAndNotExceedIt)
{
    const LoudnessRule rule = limitedTo(-18);
    EXPECT_THAT(loudestAt(rule, -18),
                ElementsAre(shortTerm(Verdict::pass, "-18.0 LUFS at its loudest")));
    const Rows over = loudestAt(rule, -17.9);
    ASSERT_EQ(over.size(), 1U);
    EXPECT_EQ(over[0].verdict, Verdict::fail);
    EXPECT_EQ(over[0].measured, u"-17.9 LUFS at its loudest (0.1 LU over)"_s);
    EXPECT_EQ(over[0].moment.value_or(CheckMoment{}).frame, 200);
    EXPECT_TRUE(over[0].fix);
}

TEST(LoudnessChecks, SoundShorterThanAWindowHasNoLoudnessInIt)
{
    EXPECT_THAT(loudestAt(limitedTo(-18), -10, 2.9),
                ElementsAre(shortTerm(Verdict::info, "the sound is shorter than 3 s")));
}

TEST(LoudnessChecks, AWindowThatWasNotMeasuredIsNoPass)
{
    const LoudnessRule rule = limitedTo(-18);
    EXPECT_THAT(loudnessRows(rule, SignalInfo{}),
                ElementsAre(shortTerm(Verdict::warn, "could not be measured")));
    EXPECT_THAT(loudnessRows(rule, {}),
                ElementsAre(shortTerm(Verdict::info, "signal pass skipped")));
    EXPECT_THAT(loudestAt(rule, -99), ElementsAre(shortTerm(Verdict::pass, "silent")));
}

TEST(LoudnessChecks, AMomentHasALimitOfItsOwn)
{
    LoudnessRule rule;
    rule.maxMomentary = LoudnessLimit{
        -15, {u"EBU R 128 s1"_s, u"item b"_s, u"2014"_s, {}, RuleSource::Certainty::secondHand}};
    EXPECT_THAT(loudestAt(rule, -17),
                ElementsAre(row("momentary", "Momentary loudness", Verdict::pass,
                                "-15.0 LUFS at its loudest",
                                "at most -15 LUFS in any 0.4 s (EBU R 128 s1, item b, 2014, at "
                                "second hand)")));
    EXPECT_EQ(loudestAt(rule, -16.5).at(0).verdict, Verdict::fail);
}

} // namespace vantroque::Checker

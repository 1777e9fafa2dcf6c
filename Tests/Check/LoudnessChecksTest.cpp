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
    return loudnessRows(rule, signal);
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

TEST(LoudnessChecks, AMeasurementThatWasNotMadeHasNoRow)
{
    LoudnessRule rule = targeting(-23);
    rule.maxTruePeakDb = -2;
    EXPECT_THAT(loudnessRows(rule, SignalInfo{}), IsEmpty());
}

TEST(LoudnessChecks, TheToleranceItselfIsInside)
{
    EXPECT_THAT(loudnessAt(targeting(-23), -25.0),
                ElementsAre(loudness(Verdict::pass, "-25.0 LKFS")));
    EXPECT_THAT(loudnessAt(targeting(-23.1), -25.1),
                ElementsAre(loudness(Verdict::pass, "-25.1 LKFS")));
    LoudnessRule narrow = targeting(-24);
    narrow.toleranceLU = 0.5;
    EXPECT_THAT(loudnessAt(narrow, -23.5),
                ElementsAre(loudness(Verdict::pass, "-23.5 LKFS", nullptr, "-24 LKFS ± 1 LU")));
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

} // namespace vantroque::Checker

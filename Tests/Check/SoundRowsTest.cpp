#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

const char* const invertedFix =
    "Inverted channels cancel on a TV or phone speaker summing to mono. Check the polarity of one "
    "channel (a flipped cable, an inverted stem) and listen to the mix in mono.";
const char* const oneSidedFix =
    "A silent channel in a stereo pair plays as one-sided audio. Check the export's channel "
    "mapping and the source stems.";

StereoPhase correlated(double mean, double lowest, const std::vector<TimeSpan>& runs = {})
{
    StereoPhase phase;
    phase.meanCorrelation = mean;
    phase.minWindowCorrelation = lowest;
    phase.outOfPhaseRuns = runs;
    phase.audibleSeconds = 30;
    return phase;
}

MediaInfo withPhase(const StereoPhase& phase)
{
    MediaInfo media = measuredSpot();
    media.signal->phase = phase;
    return media;
}

CheckResult graded(const StereoPhase& phase)
{
    return phaseRow(withPhase(phase)).value();
}

CheckResult stereoPhase(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("stereo-phase", "Stereo phase", verdict, measured,
               "left and right add in mono (correlation above 0)", fix);
}

MediaInfo withChannels(const std::vector<ChannelLevel>& levels,
                       const std::optional<QString>& layout = {})
{
    MediaInfo media = measuredSpot();
    media.audio->channels = static_cast<int>(levels.size());
    media.audio->channelLayout = layout;
    media.signal->channelLevels = levels;
    return media;
}

CheckResult channelsOf(const std::vector<ChannelLevel>& levels,
                       const std::optional<QString>& layout = {})
{
    return channelLevelsRow(withChannels(levels, layout)).value();
}

CheckResult channelLevels(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("channel-levels", "Channel levels", verdict, measured,
               "signal on every channel the layout declares", fix);
}

QString inversionsIn(const QString& measured)
{
    return measured.section(u"; "_s, 1);
}

} // namespace

TEST(PhaseRow, OnlyMeasuredSoundOfTwoChannelsHasTheRow)
{
    EXPECT_EQ(phaseRow(hdSpot()), std::nullopt);
    MediaInfo media = withPhase(correlated(0.8, 0.4));
    media.audio->channels = 1;
    EXPECT_EQ(phaseRow(media), std::nullopt);
    media.audio.reset();
    EXPECT_EQ(phaseRow(media), std::nullopt);
}

TEST(PhaseRow, WhatCannotBeJudgedIsInfo)
{
    EXPECT_EQ(phaseRow(measuredSpot()), stereoPhase(Verdict::info, "not measured"));
    StereoPhase phase = correlated(-0.8, -0.9, {{1, 2}});
    phase.audibleSeconds = 0.49;
    EXPECT_EQ(graded(phase), stereoPhase(Verdict::info, "mix is silent"));
    phase.audibleSeconds = 0.5;
    phase.dualMono = true;
    EXPECT_EQ(graded(phase),
              stereoPhase(Verdict::info, "left and right are the same signal (dual mono)"));
}

TEST(PhaseRow, APositiveCorrelationPasses)
{
    EXPECT_EQ(graded(correlated(0.815, -0.125)),
              stereoPhase(Verdict::pass, "left and right add up in mono (correlation +0.81 "
                                         "average, lowest half-second -0.13)"));
    EXPECT_EQ(graded(correlated(0, 0)).verdict, Verdict::pass);
}

TEST(PhaseRow, ANegativeAverageWarns)
{
    EXPECT_EQ(graded(correlated(-0.5, -0.75)),
              stereoPhase(Verdict::warn,
                          "left and right are inverted (correlation -0.50 average, lowest "
                          "half-second -0.75). Summed to mono on a TV, phone or laptop speaker "
                          "they cancel, and the mix drops or disappears",
                          invertedFix));
}

TEST(PhaseRow, AnAverageJustBelowZeroWithoutInversionIsWideStereo)
{
    EXPECT_EQ(graded(correlated(-0.05, -0.25)),
              stereoPhase(Verdict::info, "wide stereo (correlation -0.05 average, lowest "
                                         "half-second -0.25)"));
    EXPECT_EQ(graded(correlated(-0.1, -0.25)).verdict, Verdict::info);
    EXPECT_EQ(graded(correlated(-0.101, -0.25)).verdict, Verdict::warn);
    EXPECT_EQ(graded(correlated(-0.05, -0.5, {{1, 2}})).verdict, Verdict::warn);
}

TEST(PhaseRow, OfSixChannelsInNoKnownOrderSaysSo)
{
    MediaInfo media = withPhase(correlated(0.5, 0.25));
    media.audio->channels = 6;
    EXPECT_TRUE(phaseRow(media)->measured.endsWith(u"), order assumed"_s));
    media.audio->channelLayout = u"5.1"_s;
    EXPECT_FALSE(phaseRow(media)->measured.contains(u"assumed"_s));
}

TEST(PhaseRow, ThreeInvertedPassagesAreListedAndTheRestCounted)
{
    std::vector<TimeSpan> runs{{1, 2}};
    EXPECT_EQ(graded(correlated(0.5, -0.75, runs)),
              stereoPhase(Verdict::warn,
                          "left and right are inverted (correlation +0.50 average, lowest "
                          "half-second -0.75). Summed to mono on a TV, phone or laptop speaker "
                          "they cancel, and the mix drops or disappears; inverted at 00:00:01:00 "
                          "for 1.0 s",
                          invertedFix));
    runs = {{1, 2}, {3.2, 4}, {10, 22}};
    const QString three =
        u"inverted at 00:00:01:00 for 1.0 s, 00:00:03:05 for 0.8 s, 00:00:10:00 for 12 s"_s;
    EXPECT_EQ(inversionsIn(graded(correlated(0.5, 0, runs)).measured), three);
    runs.push_back({25, 26});
    EXPECT_EQ(inversionsIn(graded(correlated(0.5, 0, runs)).measured), three + u" and 1 more"_s);
}

TEST(PhaseRow, PlacesCountAtThePicturesRateAndAtTwentyFourWithoutPicture)
{
    MediaInfo media = withPhase(correlated(0.5, 0, {{1.5, 2}}));
    media.video->nominalFrameRate = 0;
    EXPECT_EQ(inversionsIn(phaseRow(media)->measured), u"inverted at 00:00:00:00 for 0.5 s"_s);
    media.video.reset();
    EXPECT_EQ(inversionsIn(phaseRow(media)->measured), u"inverted at 00:00:01:12 for 0.5 s"_s);
    media.signal->phase->outOfPhaseRuns = {{1e9, 1e9 + 1}};
    EXPECT_EQ(inversionsIn(phaseRow(media)->measured), u"inverted at 120:00:00:00 for 1.0 s"_s);
}

TEST(ChannelLevelsRow, OnlyMeasuredChannelsHaveTheRow)
{
    EXPECT_EQ(channelLevelsRow(hdSpot()), std::nullopt);
    EXPECT_EQ(channelLevelsRow(measuredSpot()), std::nullopt);
    EXPECT_EQ(channelLevelsRow(withChannels({})), std::nullopt);
    MediaInfo media = withChannels({{-20, -3, {}}});
    media.audio.reset();
    EXPECT_EQ(channelLevelsRow(media), std::nullopt);
}

TEST(ChannelLevelsRow, ChannelsThatAllPlayPass)
{
    EXPECT_EQ(channelsOf({{-20.14, -3, {}}, {-21, -3, {}}}),
              channelLevels(Verdict::pass, "L -20.1 dBFS RMS, R -21.0 dBFS RMS"));
    EXPECT_EQ(channelsOf({{-20, {}, {}}}).measured, u"M -20.0 dBFS RMS"_s);
}

TEST(ChannelLevelsRow, ASilentChannelBesideOthersWarns)
{
    EXPECT_EQ(channelsOf({{-20, {}, {}}, {-99, {}, {}}}),
              channelLevels(Verdict::warn,
                            "R silent for the whole file while the rest play (L -20.0 dBFS RMS, R "
                            "silent)",
                            oneSidedFix));
    EXPECT_EQ(channelsOf(
                  {{-20, {}, {}}, {-98.9, {}, {}}, {}, {-40, {}, {}}, {-30, {}, {}}, {-60, {}, {}}},
                  u"5.1"_s)
                  .measured,
              u"R, C silent for the whole file while the rest play (L -20.0 dBFS RMS, R -98.9 "
              u"dBFS RMS, C ?, LFE -40.0 dBFS RMS, Ls -30.0 dBFS RMS, Rs -60.0 dBFS RMS)"_s);
}

TEST(ChannelLevelsRow, AnLFEMayBeSilent)
{
    const ChannelLevel plays{-20, {}, {}};
    for (const auto& rests : {ChannelLevel{-99, {}, {}}, ChannelLevel{-65, {}, {}}, ChannelLevel()})
        EXPECT_EQ(channelsOf({plays, plays, plays, rests, plays, plays}, u"5.1"_s),
                  channelLevels(Verdict::pass, "L -20.0 dBFS RMS, R -20.0 dBFS RMS, C -20.0 dBFS "
                                               "RMS, LFE silent, Ls -20.0 dBFS RMS, Rs -20.0 dBFS "
                                               "RMS"));
}

TEST(ChannelLevelsRow, SixOrEightChannelsWithoutALayoutHaveAnAssumedOrder)
{
    const ChannelLevel plays{-20, {}, {}};
    const ChannelLevel rests{-99, {}, {}};
    EXPECT_EQ(channelsOf({plays, plays, plays, rests, plays, plays}),
              channelLevels(Verdict::pass, "L -20.0 dBFS RMS, R -20.0 dBFS RMS, C -20.0 dBFS RMS, "
                                           "LFE silent, Ls -20.0 dBFS RMS, Rs -20.0 dBFS RMS, "
                                           "order assumed"));
    const auto eight = channelsOf({plays, rests, plays, rests, plays, plays, plays, plays});
    EXPECT_EQ(eight.verdict, Verdict::warn);
    EXPECT_TRUE(eight.measured.startsWith(u"R silent for the whole file"_s));
    EXPECT_TRUE(eight.measured.endsWith(u"), order assumed"_s));
    EXPECT_FALSE(channelsOf({plays, plays, plays}).measured.contains(u"assumed"_s));
    EXPECT_FALSE(channelsOf({plays, plays, plays, plays, plays, plays}, u"hexagonal"_s)
                     .measured.contains(u"assumed"_s));
}

TEST(ChannelLevelsRow, AFileWithoutAnySoundHasNoDeadChannel)
{
    const auto silent =
        channelLevels(Verdict::info, "every channel is silent: the file carries no mix");
    EXPECT_EQ(channelsOf({{-60, {}, {}}, {-99, {}, {}}}), silent);
    EXPECT_EQ(channelsOf({{}, {}}), silent);
}

TEST(ChannelLevelsRow, AQuietFileHasNoDeadChannelEither)
{
    EXPECT_EQ(channelsOf({{-45, {}, {}}, {-70, {}, {}}}),
              channelLevels(Verdict::pass, "L -45.0 dBFS RMS, R -70.0 dBFS RMS"));
}

TEST(ChannelLevelsRow, AChannelThatIsLostOnTheWayWarnsWithItsPlace)
{
    MediaInfo media = withChannels({{-20, {}, {}}, {-23, {}, {}}});
    media.signal->lostChannels = {{1, 2.48}};
    EXPECT_EQ(channelLevelsRow(media),
              channelLevels(Verdict::warn, "right lost from 00:00:02:12",
                            "The channel stops while the others go on. Check the track on the "
                            "timeline from there on, and the export's channel mapping."));
}

TEST(ChannelLevelsRow, OfALossWhatIsKnownBetterIsSaid)
{
    const ChannelLevel plays{-20, {}, {}};
    MediaInfo media = withChannels({plays, {-70, {}, {}}, plays, plays, plays, plays}, u"5.1"_s);
    media.signal->lostChannels = {{1, 2}, {3, 2}, {4, 4}};
    EXPECT_TRUE(channelLevelsRow(media)->measured.startsWith(
        u"R silent for the whole file while the rest play ("_s));
    EXPECT_TRUE(channelLevelsRow(media)->measured.endsWith(u"); Ls lost from 00:00:04:00"_s))
        << "and an LFE may stop";
}

TEST(ChannelLevelsRow, AChannelBeyondTheNamesIsCalledByItsNumber)
{
    MediaInfo media = withChannels({{-20, {}, {}}, {-20, {}, {}}, {-99, {}, {}}});
    media.audio->channels = 2;
    EXPECT_EQ(channelLevelsRow(media)->measured,
              u"3 silent for the whole file while the rest play (L -20.0 dBFS RMS, R -20.0 dBFS "
              u"RMS, 3 silent)"_s);
}

} // namespace vantroque::SignalChecks

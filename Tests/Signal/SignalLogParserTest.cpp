#include "Signal/SignalLogParser.h"
#include "Base/Numbers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque::SignalAnalyzer {

namespace {

using namespace Qt::StringLiterals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A log whose decoding printed this.
SignalLog decoding(const std::string& text)
{
    return SignalLog("Stream mapping:\n" + text);
}

SignalInfo parsed(const std::string& text, double duration = 10)
{
    return parse(decoding(text), duration);
}

SignalInfo measured(const std::string& text, const MediaInfo& media,
                    const SideOutputs& outputs = {})
{
    const SignalLog log = decoding(text);
    SignalInfo info = parse(log, media.durationSeconds, media.audio);
    extend(info, log, media, outputs);
    return info;
}

MediaInfo sound(int channels, const QString& codec = u"pcm"_s)
{
    MediaInfo media;
    media.durationSeconds = 10;
    media.audio = AudioStreamInfo{};
    media.audio->codec = codec;
    media.audio->channels = channels;
    media.audio->sampleRate = 48'000;
    return media;
}

MediaInfo picture(std::optional<int> bitDepth = {})
{
    MediaInfo media;
    media.durationSeconds = 10;
    media.video = VideoStreamInfo{};
    media.video->width = 1920;
    media.video->height = 1080;
    media.video->nominalFrameRate = 25;
    media.video->bitDepth = bitDepth;
    media.video->pixFmt = bitDepth == 10 ? u"yuv420p10le"_s : u"yuv420p"_s;
    return media;
}

ChannelLevelSeries series(const std::string& text, const MediaInfo& media)
{
    return measured(text, media).channelSeries.value_or(ChannelLevelSeries{});
}

std::string windows(int channel, int count, const std::string& value)
{
    const std::string key = "lavfi.astats." + Numbers::fixed(channel, 0).toStdString();
    std::string text;
    for (int i = 0; i < count; ++i)
        text += key + ".RMS_level=" + value + "\n" + key + ".Peak_level=" + value + "\n";
    return text;
}

SideOutputs dumped(int frames, char luma)
{
    constexpr qsizetype pixels = 192 * 108;
    SideOutputs outputs;
    outputs.levelsRate = 4;
    for (int i = 0; i < frames; ++i)
        outputs.levelsDump += QByteArray(pixels, luma) + QByteArray(2 * pixels, '\x80');
    return outputs;
}

} // namespace

TEST(SignalLog, AnEmptyOneGivesZerosAndNoSound)
{
    const SignalInfo info = parse(SignalLog(""), 10);
    EXPECT_EQ(info.headBlackSeconds, 0);
    EXPECT_EQ(info.tailBlackSeconds, 0);
    EXPECT_EQ(info.headFreezeSeconds, 0);
    EXPECT_EQ(info.blackRuns, std::vector<TimeSpan>());
    SignalInfo bare;
    bare.blackRuns.emplace();
    bare.freezeRuns.emplace();
    EXPECT_EQ(info, bare) << "nothing else is set";
}

TEST(SignalLog, WhatCameAheadOfDecodingDoesNotCount)
{
    EXPECT_FALSE(SignalLog("Summary:\n    I: -70.0 LUFS\n").hasSummary());
    const SignalLog log("Summary:\n    I: -70.0 LUFS\nblack_start:0 black_end:1 "
                        "black_duration:1\nStream mapping:\n[x] Summary:\n    I: -23.0 LUFS\n");
    EXPECT_TRUE(log.hasSummary());
    EXPECT_EQ(parse(log, 10).integratedLKFS, -23);
    EXPECT_THAT(*parse(log, 10).blackRuns, IsEmpty());
}

TEST(Loudness, ComesFromTheLastSummary)
{
    const SignalInfo info = parsed("[e] Summary:\n\n  Integrated loudness:\n    I: -70.0 LUFS\n"
                                   "[e] Summary:\n\n  Integrated loudness:\n"
                                   "    I:         -23.4 LUFS\n    Threshold: -33.6 LUFS\n\n"
                                   "  Loudness range:\n    LRA:         5.2 LU\n"
                                   "    LRA low:   -26.0 LUFS\n\n  True peak:\n"
                                   "    Peak:       -1.7 dBFS\n[a] Channel: 1\n");
    EXPECT_EQ(info.integratedLKFS, -23.4);
    EXPECT_EQ(info.loudnessRangeLU, 5.2);
    EXPECT_EQ(info.truePeakDb, -1.7);
}

TEST(Loudness, MinusInfinityIsAValueAndNoAbsence)
{
    const SignalInfo info = parsed("Summary:\n    I: -inf LUFS\n\n  Sample peak:\n    Peak: -3.0 "
                                   "dBFS\n\n  True peak:\n    Peak: -inf dBFS\n");
    EXPECT_EQ(info.integratedLKFS, -99);
    EXPECT_EQ(info.truePeakDb, -99) << "and no other peak is taken for it";
    EXPECT_EQ(info.loudnessRangeLU, std::nullopt);
}

TEST(Loudness, WhatDoesNotConvertIsAbsent)
{
    const SignalInfo info = parsed("Summary:\n    I: . LUFS\n    LRA: 1.2.3 LU\n");
    EXPECT_EQ(info.integratedLKFS, std::nullopt);
    EXPECT_EQ(info.loudnessRangeLU, std::nullopt);
    EXPECT_EQ(info.truePeakDb, std::nullopt);
}

TEST(Loudness, OfFurtherTracksStandsUnderTheirOwnNames)
{
    const std::string sums =
        "[ebur128@track5 @ 0x1] Summary:\n\n    I: -18.0 LUFS\n  True peak:\n    Peak: -3.0 dBFS\n"
        "[Parsed_ebur128_7 @ 0x2] Summary:\n\n    I: -23.0 LUFS\n  True peak:\n    Peak: -9.0 "
        "dBFS\n"
        "[ebur128@track3 @ 0x3] Summary:\n\n    I: -70.0 LUFS\n  True peak:\n    Peak: -inf dBFS\n"
        "[ebur128@trackx @ 0x4] Summary:\n\n    I: -1.0 LUFS\n"
        "[Parsed_astats_1 @ 0x5] Channel: 1\n";
    MediaInfo media = sound(2);
    const AudioTrackInfo mono{u"pcm_s24le"_s, 48'000, 1, {}, {}};
    const AudioTrackInfo stereo{u"pcm_s24le"_s, 48'000, 2, {}, {}};
    media.audio->tracks = {stereo, mono, mono, mono, mono, stereo};
    EXPECT_THAT(*measured(sums, media).audioTracks, IsEmpty()) << "none begins with track 3 or 5";
    media.audio->tracks = {mono, mono, mono, mono, stereo};
    const SignalInfo info = measured(sums, media);
    EXPECT_EQ(info.integratedLKFS, -23);
    EXPECT_EQ(info.truePeakDb, -9);
    EXPECT_THAT(*info.audioTracks,
                ElementsAre(TrackLoudness{2, 2, -70, -99}, TrackLoudness{4, 1, -18, -3}));
    EXPECT_EQ(measured(sums, sound(2)).audioTracks, std::nullopt);
}

TEST(Loudness, AForgedSumOfATrackAheadOfDecodingDoesNotCount)
{
    const SignalLog log("[ebur128@track3 @ 0x1] Summary:\n    I: -5.0 LUFS\nStream mapping:\n"
                        "Input #0, mov, from 'x':\n  Metadata:\n    title: x\n"
                        "[ebur128@track3 @ 0x1] Summary:\n    I: -6.0 LUFS\n  Stream #0:0\n");
    EXPECT_EQ(log.summaryOf(3), "");
    EXPECT_FALSE(log.hasSummary());
}

TEST(Silence, OpenAtTheEndCountsUpToTheEnd)
{
    const SignalInfo info = parsed("[silencedetect @ 0x1] silence_start: 1\n"
                                   "[silencedetect @ 0x1] silence_end: 3 | silence_duration: 2\n"
                                   "[silencedetect @ 0x1] silence_start: 6.5\n");
    EXPECT_EQ(info.longestSilenceSeconds, 3.5);
    EXPECT_THAT(*info.audioIslands, ElementsAre(TimeSpan{0, 1}, TimeSpan{3, 6.5}));
    EXPECT_EQ(info.headSilenceSeconds, 0);
}

TEST(Silence, TheLongestIsAbsentWithoutOne)
{
    const SignalInfo info = parsed("Summary:\n");
    EXPECT_EQ(info.longestSilenceSeconds, std::nullopt);
    EXPECT_EQ(info.headSilenceSeconds, 0);
    EXPECT_THAT(*info.audioIslands, ElementsAre(TimeSpan{0, 10})) << "one island, all of the file";
    EXPECT_THAT(*parsed("Summary:\n", 0).audioIslands, IsEmpty());
}

TEST(Silence, AnAudioFileAloneHasIslands)
{
    EXPECT_EQ(parsed("lavfi.signalstats.YMIN=16\n").audioIslands, std::nullopt);
    EXPECT_EQ(parsed("lavfi.signalstats.YMIN=16\n").headSilenceSeconds, std::nullopt);
    EXPECT_TRUE(parsed("[silencedetect @ 0x1] x\n").audioIslands);
}

TEST(Silence, ThatStartsBeforeTheFileIsTakenWhole)
{
    const SignalInfo info =
        parsed("silence_start: -0.02\nsilence_end: 1.5 | silence_duration: 1.52\n");
    EXPECT_EQ(info.headSilenceSeconds, 1.5);
    EXPECT_THAT(*info.audioIslands, ElementsAre(TimeSpan{1.5, 10}));
    EXPECT_EQ(parsed("silence_start: -0.02\n").longestSilenceSeconds, 10)
        << "open at both ends, it is the whole file";
}

TEST(Silence, AtTheHeadBeginsWithinATenthOfASecond)
{
    const auto head = [](const char* start) {
        return parsed(std::string("silence_start: ") + start + "\nsilence_end: 2\n")
            .headSilenceSeconds;
    };
    EXPECT_EQ(head("0.1"), 1.9);
    EXPECT_EQ(head("0.101"), 0);
    EXPECT_EQ(head("2.08333e-05"), 2 - 2.08333e-05) << "small times have an exponent";
    EXPECT_EQ(parsed("silence_start: 0\n").headSilenceSeconds, 10);
    EXPECT_EQ(parsed("silence_start: 0\n", 0).headSilenceSeconds, 0);
}

TEST(Silence, IslandsOfAMillisecondAreNone)
{
    const SignalInfo info = parsed("silence_start: 0.001\nsilence_end: 9.999\n");
    EXPECT_THAT(*info.audioIslands, IsEmpty());
    EXPECT_THAT(*parsed("silence_start: 0.002\nsilence_end: 9.99\n").audioIslands,
                ElementsAre(TimeSpan{0, 0.002}, TimeSpan{9.99, 10}));
}

TEST(Silence, ATrailingRunNeedsAStartTooManyAndADuration)
{
    EXPECT_EQ(trailingRun({}, 0, 10), std::nullopt);
    EXPECT_EQ(trailingRun({1, 5}, 2, 10), std::nullopt);
    EXPECT_EQ(trailingRun({1, 5}, 1, 0), std::nullopt);
    EXPECT_EQ(trailingRun({1, 5}, 1, 10), 5);
    EXPECT_EQ(trailingRun({1, 12}, 1, 10), std::nullopt);
    EXPECT_EQ(trailingRun({-0.5}, 0, 10), 10);
}

TEST(Black, HeadAndTailHaveEdgesOfTheirOwn)
{
    const auto run = [](const char* start, const char* end) {
        return parsed(std::string("[blackdetect @ 0x1] black_start:") + start + " black_end:" + end
                      + " black_duration:1.25\n");
    };
    EXPECT_EQ(run("0.05", "2").headBlackSeconds, 1.25) << "as reported, not end - start";
    EXPECT_EQ(run("0.051", "2").headBlackSeconds, 0);
    EXPECT_EQ(run("8", "9.9").tailBlackSeconds, 1.25);
    EXPECT_EQ(run("8", "9.899").tailBlackSeconds, 0);
    EXPECT_THAT(*run("8", "9.9").blackRuns, ElementsAre(TimeSpan{8, 9.9}));
    EXPECT_EQ(run("0", "10").headBlackSeconds, 1.25);
    EXPECT_EQ(run("0", "10").tailBlackSeconds, 1.25);
}

TEST(Black, ARunNeedsAllThreeNumbers)
{
    EXPECT_THAT(*parsed("black_start:1 black_end:2\nblack_start:. black_end:2 black_duration:1\n"
                        "black_start:1 black_end:2 black_duration:x\n")
                     .blackRuns,
                IsEmpty());
}

TEST(Freeze, ToTheEndHasNoDurationAndIsMeasuredByTheFile)
{
    const std::string start = "[f] lavfi.freezedetect.freeze_start: 0.04\n";
    EXPECT_EQ(parsed(start).headFreezeSeconds, 10 - 0.04);
    EXPECT_EQ(parsed(start, 0).headFreezeSeconds, 0);
    EXPECT_EQ(parsed("[f] lavfi.freezedetect.freeze_start: 0.06\n").headFreezeSeconds, 0);
}

TEST(Freeze, StartsAndDurationsPairInOrder)
{
    const auto freeze = [](const char* start, const char* duration) {
        return std::string("[f] lavfi.freezedetect.freeze_start: ") + start
               + "\n[f] lavfi.freezedetect.freeze_duration: " + duration
               + "\n[f] lavfi.freezedetect.freeze_end: 9\n";
    };
    EXPECT_EQ(parsed(freeze("0", "2.5") + freeze("5", "4")).headFreezeSeconds, 2.5);
    EXPECT_EQ(parsed(freeze("4.2e-05", "1.5")).headFreezeSeconds, 1.5);
    EXPECT_EQ(
        parsed(freeze("0.05", "2") + "[f] lavfi.freezedetect.freeze_start: 8\n").headFreezeSeconds,
        2)
        << "the second is never closed";
    EXPECT_THAT(*parsed(freeze("1", "2.5") + freeze("5", "4")).freezeRuns,
                ElementsAre(TimeSpan{1, 3.5}, TimeSpan{5, 9}));
    EXPECT_THAT(*parsed(freeze("1", "2") + "[f] lavfi.freezedetect.freeze_start: 8\n").freezeRuns,
                ElementsAre(TimeSpan{1, 3}, TimeSpan{8, 10}))
        << "the last one lasts to the end";
    EXPECT_THAT(*parsed("Summary:\n").freezeRuns, IsEmpty());
}

TEST(Interlace, UndeterminedFramesCountInTheDivisor)
{
    const std::string once = "[i] Multi frame detection: TFF:     0 BFF:     0 Progressive:     0 "
                             "Undetermined:     0\n";
    EXPECT_EQ(parsed(once).interlacedRatio, std::nullopt);
    EXPECT_EQ(parsed(once
                     + "[i] Single frame detection: TFF: 9 BFF: 9 Progressive: 9 Undetermined: 9\n"
                       "[i] Multi frame detection: TFF:    20 BFF:     5 Progressive:    50 "
                       "Undetermined:    25\n")
                  .interlacedRatio,
              0.25);
    EXPECT_EQ(parsed("Multi frame detection: TFF: 1 BFF: x Progressive: 3 Undetermined: 0\n")
                  .interlacedRatio,
              std::nullopt);
}

TEST(ActivePicture, IsTheRectangleSeenMostOften)
{
    EXPECT_EQ(parsed("t:1 crop=1920:800:0:140\nt:2 crop=1920:1080:0:0\nt:3 crop=1920:800:0:140\n")
                  .activePicture,
              (CropRect{1920, 800, 0, 140}));
    EXPECT_EQ(parsed("crop=4:3:2:1\ncrop=8:6:0:0\n").activePicture, (CropRect{4, 3, 2, 1}))
        << "on a tie the first one";
    EXPECT_EQ(parsed("crop=-62:-62:64:64\ncrop=1:2:3\ncrop=99999999999:1:1:1\n").activePicture,
              std::nullopt);
}

TEST(PictureMeasurements, NeedAPicture)
{
    const SignalInfo info = measured("lavfi.signalstats.YMIN=16\n", sound(2));
    EXPECT_EQ(info.levels, std::nullopt);
    EXPECT_EQ(info.cadence, std::nullopt);
    EXPECT_EQ(info.detail, std::nullopt);
}

TEST(PictureMeasurements, LevelsTakeTheirExtremesFromTheLogAndNeedADump)
{
    const std::string log = "[m] lavfi.signalstats.YMIN=20\n[m] lavfi.signalstats.YMAX=200\n"
                            "[m] lavfi.signalstats.YMIN=16\n[m] lavfi.signalstats.YMAX=235\n"
                            "[m] lavfi.signalstats.YMIN=x\n";
    const SignalInfo info = measured(log, picture(), dumped(2, '\x64'));
    ASSERT_TRUE(info.levels);
    EXPECT_EQ(info.levels->yMinPercent, 0);
    EXPECT_EQ(info.levels->yMaxPercent, 100);
    EXPECT_EQ(info.levels->matrix, ColorMatrix::bt709);
    EXPECT_TRUE(info.levels->matrixAssumed);
    EXPECT_EQ(measured(log, picture()).levels, std::nullopt);
    SideOutputs torn = dumped(1, '\x64');
    torn.levelsDump.chop(1);
    EXPECT_EQ(measured(log, picture(), torn).levels, std::nullopt);
    EXPECT_TRUE(measured(log, picture(), torn).cadence) << "without still passages";
}

TEST(PictureMeasurements, TheMatrixFollowsTagAndHeight)
{
    MediaInfo media = picture();
    media.video->height = 576;
    EXPECT_EQ(measured("", media, dumped(1, 'd')).levels->matrix, ColorMatrix::bt601);
    EXPECT_TRUE(measured("", media, dumped(1, 'd')).levels->matrixAssumed);
    media.video->colorSpace = u"bt2020nc"_s;
    EXPECT_EQ(measured("", media, dumped(1, 'd')).levels->matrix, ColorMatrix::bt2020);
    EXPECT_FALSE(measured("", media, dumped(1, 'd')).levels->matrixAssumed);
    media.video->height = 1080;
    media.video->colorSpace = u"fcc"_s;
    EXPECT_EQ(measured("", media, dumped(1, 'd')).levels->matrix, ColorMatrix::bt709);
    EXPECT_TRUE(measured("", media, dumped(1, 'd')).levels->matrixAssumed);
}

TEST(PictureMeasurements, ABlackFirstFrameDoesNotSetTheBitDepth)
{
    const std::string log = "[m] lavfi.signalstats.YMAX=213\n[m] lavfi.signalstats.YBITDEPTH=1\n"
                            "[m] lavfi.signalstats.YBITDEPTH=8\n";
    EXPECT_NEAR(measured(log, picture(), dumped(1, 'd')).levels->yMaxPercent, 89.95, 0.01);
    EXPECT_NEAR(measured(log, picture(10), dumped(1, 'd')).levels->yMaxPercent, 17.01, 0.01);
    EXPECT_NEAR(measured("lavfi.signalstats.YBITDEPTH=10\nlavfi.signalstats.YMAX=940\n", picture(),
                         dumped(1, 'd'))
                    .levels->yMaxPercent,
                100, 1e-9)
        << "and the log can tell more than the file";
}

TEST(PictureMeasurements, FullRangeBlackAndWhiteAreZeroAndAHundred)
{
    MediaInfo media = picture(8);
    media.video->pixFmt = u"yuvj420p"_s;
    media.video->colorRange = u"pc"_s;
    const SignalInfo info = measured("lavfi.signalstats.YMIN=0\nlavfi.signalstats.YMAX=255\n",
                                     media, dumped(1, static_cast<char>(235)));
    EXPECT_EQ(info.levels->yMinPercent, 0);
    EXPECT_EQ(info.levels->yMaxPercent, 100);
    EXPECT_TRUE(info.levels->fullRange);
    EXPECT_THAT(info.levels->strictRuns, IsEmpty());
}

TEST(PictureMeasurements, CadenceCountsTheFramesOfTheLog)
{
    std::string log = "[i] Repeated Fields: Neither:    90 Top:     6 Bottom:     4\n";
    for (int i = 0; i < 250; ++i)
        log += i % 5 == 4 ? "lavfi.signalstats.YDIF=4.24383e-05\n" : "lavfi.signalstats.YDIF=3.5\n";
    log += "lavfi.signalstats.YDIF=.\n";
    const FrameCadence cadence = *measured(log, picture()).cadence;
    EXPECT_EQ(cadence.frameCountSeen, 250);
    EXPECT_EQ(cadence.duplicateCount, 50) << "a tiny difference is none, and is read as tiny";
    EXPECT_EQ(cadence.duplicatePeriod, 5);
    EXPECT_EQ(cadence.repeatedFieldsNeither, 90);
    EXPECT_EQ(cadence.repeatedFieldsTop, 6);
    EXPECT_EQ(cadence.repeatedFieldsBottom, 4);
    MediaInfo media = picture();
    media.video->frameCount = 300;
    EXPECT_EQ(measured(log, media).cadence->frameCountSeen, 300);
    EXPECT_EQ(measured(log, media, dumped(40, 'd')).cadence->duplicateCount, 0)
        << "the dump stands still all the while";
}

TEST(PictureMeasurements, DetailIsStoredWithoutItsBranch)
{
    const SignalInfo info = measured("", picture());
    ASSERT_TRUE(info.detail);
    EXPECT_EQ(info.detail->samplesMeasured, 0);
    EXPECT_EQ(info.detail->halfResPsnrDb, std::nullopt);
    EXPECT_EQ(info.detail->quarterResPsnrDb, std::nullopt);
    EXPECT_EQ(info.detail->lumaBitsInUse, std::nullopt);
    EXPECT_THAT(info.detail->segments, IsEmpty());
}

TEST(PictureMeasurements, DetailComesFromTheSideFiles)
{
    SideOutputs outputs;
    outputs.halfStats = "n:1 psnr_y:40.00\nn:2 psnr_y:inf\nn:3 psnr_y:41.00\n";
    outputs.quarterStats = "n:1 psnr_y:33.00\n";
    outputs.bitsDump = QByteArray("\0\2\0\2", 4);
    const DetailEstimate detail = *measured("", picture(10), outputs).detail;
    EXPECT_EQ(detail.halfResPsnrDb, 41);
    EXPECT_EQ(detail.quarterResPsnrDb, 33);
    EXPECT_EQ(detail.samplesMeasured, 2);
    EXPECT_EQ(detail.lumaBitsInUse, 8);
    EXPECT_THAT(detail.segments, ElementsAre(DetailSegment{0, 0.96, 41, 33}));
}

TEST(SoundMeasurements, LevelsAreThoseOfTheFirstBlocks)
{
    const std::string log =
        "[a] Channel: 1\n[a] Peak level dB: -3.5\n[a] RMS level dB: -20.25\n[a] Bit depth: 16/24\n"
        "[a] Channel: 2\n[a] Peak level dB: -inf\n[a] RMS level dB: -inf\n[a] Bit depth: 0/0\n"
        "[b] Channel: 1\n[b] Peak level dB: -1\n[b] Channel: 2\n";
    EXPECT_THAT(*measured(log, sound(2)).channelLevels,
                ElementsAre(ChannelLevel{-20.25, -3.5, 24}, ChannelLevel{-99, -99, 0}));
    EXPECT_THAT(*measured(log, sound(2, u"aac"_s)).channelLevels,
                ElementsAre(ChannelLevel{-20.25, -3.5, {}}, ChannelLevel{-99, -99, {}}));
    EXPECT_EQ(measured(log, sound(1)).channelLevels->size(), 1U);
    EXPECT_EQ(measured(log, sound(0)).channelLevels->size(), 1U);
    EXPECT_EQ(measured("", sound(2)).channelLevels, std::nullopt);
}

TEST(SoundMeasurements, TheEndFollowsFromTheSizeOfWhatWasPutOut)
{
    const auto end = [](const std::string& kilobytes, int channels) {
        std::string log;
        for (int i = 0; i < 3; ++i) {
            log += "[Parsed_ametadata_3 @ 0x1] frame:0 pts:0 pts_time:"
                   + Numbers::fixed(0.5 + 0.1 * i, 1).toStdString() + "\n";
            for (int channel = 1; channel <= channels; ++channel)
                log += windows(channel, 1, "-20");
        }
        return measured(log + "video:248kB audio:" + kilobytes + "kB subtitle:0kB\n",
                        sound(channels))
            .soundEnd.value_or(0);
    };
    // Levels and phase are 3 windows of 4800 stereo samples each, the sound is 0.25 s.
    EXPECT_NEAR(end("159", 2), 0.75, 0.003);
    EXPECT_NEAR(end("52", 1), 0.75, 0.006);
    EXPECT_DOUBLE_EQ(end("169", 2), 0.8) << "whole windows";
    EXPECT_DOUBLE_EQ(end("9999", 2), 0.8) << "something else was put out too";
    EXPECT_DOUBLE_EQ(end("", 2), 0.8);
}

TEST(SoundMeasurements, TheSeriesOfAnHourIsThinnedOutFourTimes)
{
    const ChannelLevelSeries hour = series(windows(1, 36'000, "-20.123456"), sound(1));
    ASSERT_EQ(hour.rms.size(), 1U);
    EXPECT_EQ(hour.rms[0].size(), 2250U);
    EXPECT_EQ(hour.peak[0].size(), 2250U);
    EXPECT_EQ(hour.sampleHz, 0.625);
    EXPECT_EQ(hour.rms[0][0], -20.1F);
}

TEST(SoundMeasurements, ChannelsBeyondThoseOfTheFileAreIgnored)
{
    const std::string log = windows(1, 3, "-20") + windows(2, 3, "-21") + windows(3, 3, "-22")
                            + windows(0, 3, "-1") + "lavfi.astats.x.RMS_level=-5\n"
                            + "lavfi.astats.Overall.RMS_level=-5\n";
    EXPECT_THAT(series(log, sound(2)).rms,
                ElementsAre(ElementsAre(-20, -20, -20), ElementsAre(-21, -21, -21)));
}

TEST(SoundMeasurements, AllChannelsHaveTheLengthOfTheShortest)
{
    const ChannelLevelSeries cut = series(
        windows(1, 5, "-20") + windows(2, 3, "-21") + "lavfi.astats.2.RMS_level=-1\n", sound(2));
    EXPECT_THAT(cut.rms, Each(SizeIs(3)));
    EXPECT_THAT(cut.peak, Each(SizeIs(3)));
    EXPECT_EQ(measured("", sound(2)).channelSeries, std::nullopt);
}

TEST(SoundMeasurements, WhatIsNoLevelReadsAsTheFloor)
{
    for (const char* value : {"-inf", "inf", "nan", "-nan", "-123.4", "-99.5"})
        EXPECT_THAT(series(windows(1, 1, value), sound(1)).rms, ElementsAre(ElementsAre(-99)))
            << value;
}

TEST(SoundMeasurements, TheRateFollowsTheSampleRate)
{
    MediaInfo media = sound(1);
    EXPECT_EQ(series(windows(1, 1, "-20"), media).sampleHz, 10);
    media.audio->sampleRate = 44'100;
    EXPECT_EQ(series(windows(1, 1, "-20"), media).sampleHz, 9.1875);
    media.audio->sampleRate = 0;
    EXPECT_EQ(series(windows(1, 1, "-20"), media).sampleHz, 10);
}

TEST(SoundMeasurements, PhaseIsOfTwoChannels)
{
    std::string log = "Summary:\n";
    for (int i = 0; i < 20; ++i)
        log += "[p] lavfi.aphasemeter.phase=0.995\n";
    log += "[p] lavfi.aphasemeter.phase=.\n";
    EXPECT_EQ(measured(log, sound(1)).phase, std::nullopt) << "a mono file has none";
    const StereoPhase phase = *measured(log, sound(2)).phase;
    EXPECT_EQ(phase.series.size(), 20U);
    EXPECT_EQ(phase.sampleHz, 10);
    EXPECT_EQ(phase.audibleSeconds, 2);
    EXPECT_TRUE(phase.dualMono);
}

TEST(SoundMeasurements, ASilentFileHasNothingAudible)
{
    const SignalInfo info =
        measured("silence_start: 0\nsilence_end: 10 | silence_duration: 10\nSummary:\n"
                 "lavfi.aphasemeter.phase=1.000000\n",
                 sound(2));
    EXPECT_THAT(*info.audioIslands, IsEmpty());
    EXPECT_EQ(info.phase->audibleSeconds, 0);
    EXPECT_FALSE(info.phase->dualMono);
}

} // namespace vantroque::SignalAnalyzer

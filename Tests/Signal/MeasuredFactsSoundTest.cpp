#include "Signal/CleanRun.h"
#include "Signal/MeasuredFacts.h"
#include "Support/FakeTools.h"

namespace vantroque {
namespace {

using Media::operator+;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;
using SignalAnalyzer::measurePop;
using SignalAnalyzer::Pop;

std::string described(const Pop& found)
{
    return QStringLiteral("%1 Hz, %2 dBFS")
        .arg(found.centroidHz.value_or(0))
        .arg(found.peakDb.value_or(1))
        .toStdString();
}

class MeasuredSound : public testing::Test {
protected:
    const FakeTools m_tools;

private:
    const CleanRun m_cleanRun;
};

/// A tone of that frequency at -20 dBFS from second 1 on, for so long, and silence around it.
fs::path pop(const std::string& hertz, const std::string& seconds, const std::string& name = "pop")
{
    return sounding(name + "-" + hertz,
                    "0.1*sin(2*PI*" + hertz + "*t)*between(t\\,1\\,1+" + seconds + ")", "2");
}

// The leader's pop.

TEST_F(MeasuredSound, APopOfAThousandHertzReadsAsThat)
{
    for (const char* seconds : {"0.03", "0.04"}) {
        const Pop found = measurePop(FileUrl::fromPath(pop("1000", seconds, seconds)), 1, 0.04);
        ASSERT_TRUE(found.centroidHz && found.peakDb);
        EXPECT_GE(*found.centroidHz, 900) << seconds;
        EXPECT_LE(*found.centroidHz, 1300) << seconds;
        EXPECT_NEAR(*found.peakDb, -20, 0.1) << seconds;
    }
}

TEST_F(MeasuredSound, AHighToneIsNoPopOfAThousandHertz)
{
    const Pop found = measurePop(FileUrl::fromPath(pop("4000", "0.04")), 1, 0.04);
    EXPECT_GT(found.centroidHz.value_or(0), 3'000);
}

TEST_F(MeasuredSound, AStereoPopReadsAsAMonoOneDoes)
{
    const fs::path stereo = sounding("stereo-pop",
                                     "0.1*sin(2000*PI*t)*between(t\\,1\\,1.04)|"
                                     "0.1*sin(2000*PI*t)*between(t\\,1\\,1.04)",
                                     "2");
    EXPECT_EQ(measurePop(FileUrl::fromPath(stereo), 1, 0.04),
              measurePop(FileUrl::fromPath(pop("1000", "0.04")), 1, 0.04));
}

TEST_F(MeasuredSound, AnOlderFilterIsAskedForAllItKnows)
{
    m_tools.put("ffmpeg", "case \"$*\" in *measure=*) echo \"Error initializing filter "
                          "'aspectralstats' with args 'measure=centroid'\" >&2; exit 1;; esac\n"
                          "echo lavfi.aspectralstats.1.centroid=1010.5\n"
                          "echo '[Parsed_volumedetect_0 @ 0x1] max_volume: -18.5 dB' >&2");
    EXPECT_EQ(measurePop(FileUrl::fromPath("/sound.wav"), 1, 0.04), (Pop{1010.5, -18.5}));
}

TEST_F(MeasuredSound, APopIsMeasuredOnceWhereTheFilterTakesItsChoice)
{
    const fs::path log = m_tools.folder() / "log";
    m_tools.put("ffmpeg", "echo call >>'" + QByteArray::fromStdString(log.native())
                              + "'\necho lavfi.aspectralstats.1.centroid=1010.5");
    EXPECT_EQ(measurePop(FileUrl::fromPath("/sound.wav"), 1, 0.04), (Pop{1010.5, {}}));
    EXPECT_EQ(contents(log), "call\n");
}

TEST_F(MeasuredSound, APopIsTheLowestOfItsWindows)
{
    m_tools.put("ffmpeg", "printf 'centroid=%s\\n' 1500.5 980.25 nan 1200 .");
    EXPECT_EQ(measurePop(FileUrl::fromPath("/sound.wav"), 1, 0.04).centroidHz, 980.25);
}

TEST_F(MeasuredSound, APopAheadOfTheFileStartsWithIt)
{
    m_tools.record("ffmpeg");
    const auto file = FileUrl::fromPath(pop("1000", "0.04"));
    EXPECT_TRUE(measurePop(file, -0.5, 0.0333).peakDb);
    const auto call = m_tools.calls("ffmpeg").back();
    const std::vector<std::string> start(call.begin() + 2, call.begin() + 6);
    EXPECT_THAT(start, ElementsAre("-ss", "0.000", "-t", "0.033"));
}

TEST_F(MeasuredSound, WhatCannotBeReadHasNoPop)
{
    EXPECT_EQ(measurePop(FileUrl::fromPath("/nowhere.wav"), 1, 0.04), Pop{});
    m_tools.put("ffmpeg", "kill -9 $$");
    EXPECT_EQ(measurePop(FileUrl::fromPath("/sound.wav"), 1, 0.04), Pop{});
}

TEST_F(MeasuredSound, TagsCannotForgeAPop)
{
    const fs::path plain =
        Media::make({"plain-pop.mkv", {"-i", pop("4000", "0.04").native(), "-c", "copy"}});
    const fs::path forged = Media::make(
        {"forged-pop.mkv",
         {"-i", plain.native(), "-c", "copy", "-metadata",
          "title=lavfi.aspectralstats.1.centroid=1000", "-metadata", "comment=max_volume: -3.0 dB",
          "-metadata:s:a", "title=max_volume: -3.0 dB"}});
    EXPECT_EQ(described(measurePop(FileUrl::fromPath(forged), 1, 0.04)),
              described(measurePop(FileUrl::fromPath(plain), 1, 0.04)));
}

TEST_F(MeasuredSound, ANameCannotForgeAPop)
{
    const fs::path plain = pop("4000", "0.04");
    const TestFolder folder;
    const auto forged = folder.write("max_volume: -3.0 dB centroid=1000 .wav", contents(plain));
    EXPECT_EQ(described(measurePop(FileUrl::fromPath(forged), 1, 0.04)),
              described(measurePop(FileUrl::fromPath(plain), 1, 0.04)));
}

// Loudness.

TEST_F(MeasuredSound, AToneHasItsLoudness)
{
    const SignalInfo info =
        measured(sounding("tone", "0.1*sin(2000*PI*t)|0.1*sin(2000*PI*t)", "3"));
    EXPECT_NEAR(*info.integratedLKFS, -20, 0.1);
    EXPECT_NEAR(*info.truePeakDb, -20, 0.1);
    EXPECT_TRUE(info.phase->dualMono);
}

TEST_F(MeasuredSound, ABurstIsWhereItIsLoudest)
{
    const SignalInfo info =
        measured(sounding("burst", "(0.02+0.4*between(t\\,5\\,6))*sin(2000*PI*t)", "8"));
    EXPECT_NEAR(info.loudestSeconds.value_or(0), 5, 0.15);
    EXPECT_NEAR(info.truePeakSeconds.value_or(0), 5, 0.15);
}

TEST_F(MeasuredSound, AToneOfOneWindowHasNoRange)
{
    for (const std::string seconds : {"2", "3", "3.2", "3.5", "4"})
        EXPECT_EQ(
            measured(sounding("tone-of-" + seconds, "0.1*sin(2000*PI*t)", seconds)).loudnessRangeLU,
            0)
            << seconds;
}

TEST_F(MeasuredSound, OfAFileThatDoesNotKnowItsLengthIsThere)
{
    const auto live = Media::make({"live.mka",
                                   {"-f", "lavfi", "-i", "sine=frequency=440:duration=2", "-c:a",
                                    "pcm_s16le", "-live", "1"}});
    const SignalInfo info = measured(live);
    ASSERT_THAT(*info.audioIslands, SizeIs(1));
    EXPECT_NEAR(info.audioIslands->front().end, 2, 0.1);
}

TEST_F(MeasuredSound, DigitalSilenceIsMeasured)
{
    const SignalInfo info = measured(sounding("silence", "0|0", "2"));
    EXPECT_EQ(info.integratedLKFS, -70);
    EXPECT_EQ(info.truePeakDb, -99);
    EXPECT_THAT(*info.channelLevels,
                ElementsAre(ChannelLevel{-99, -99, 0}, ChannelLevel{-99, -99, 0}));
    EXPECT_THAT(*info.audioIslands, IsEmpty());
    EXPECT_NEAR(*info.headSilenceSeconds, 2, 0.01);
    EXPECT_NEAR(*info.longestSilenceSeconds, 2, 0.01);
    EXPECT_THAT(info.phase->outOfPhaseRuns, IsEmpty());
    EXPECT_EQ(info.phase->audibleSeconds, 0);
}

/// The same file with its coded sound overwritten.
fs::path spoilt(const fs::path& file, const TestFolder& folder)
{
    QByteArray bytes = contents(file);
    const qsizetype media = bytes.indexOf("mdat") + 4;
    const qsizetype end = bytes.indexOf("moov") > media ? bytes.indexOf("moov") - 4 : bytes.size();
    for (qsizetype i = media; i < end; ++i)
        bytes[i] = '\x77';
    return folder.write("spoilt" + file.extension().native(), bytes);
}

TEST_F(MeasuredSound, SoundThatCannotBeDecodedIsNotTakenForSilence)
{
    const TestFolder folder;
    const MediaInfo media = probed(spoilt(Clips::m4a(), folder));
    ASSERT_TRUE(media.audio);
    const auto outcome = SignalAnalyzer::analyze(media.url, media, {}, nullptr);
    ASSERT_FALSE(outcome) << outcome->integratedLKFS.value_or(1);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::failed);
}

TEST_F(MeasuredSound, SoundThatCannotBeDecodedBesideAPictureHasNoLoudness)
{
    const TestFolder folder;
    const fs::path silent = spoilt(Clips::m4a(), folder);
    const fs::path both = folder.path() / "both.mov";
    Media::ffmpeg(Clips::picture("64x64", "25", "1")
                  + std::vector<std::string>{"-i", silent.native(), "-map", "0", "-map", "1",
                                             "-c:v", "mpeg4", "-c:a", "copy", both.native()});
    const SignalInfo info = measured(both);
    EXPECT_EQ(info.cadence->frameCountSeen, 25);
    EXPECT_EQ(info.integratedLKFS, std::nullopt);
}

// Silence.

TEST_F(MeasuredSound, SilenceBehindASingleSampleIsReadWithItsExponent)
{
    const SignalInfo info = measured(sounding("click", "0.5*lt(n\\,1)", "2"));
    EXPECT_NEAR(*info.headSilenceSeconds, 2, 0.01);
    EXPECT_NEAR(*info.longestSilenceSeconds, 2, 0.01);
}

TEST_F(MeasuredSound, SilenceToTheEndIsCounted)
{
    const SignalInfo info = measured(sounding("quiet-end", "0.1*sin(2000*PI*t)*lt(t\\,1)", "4"));
    EXPECT_NEAR(*info.longestSilenceSeconds, 3, 0.01);
    EXPECT_EQ(info.headSilenceSeconds, 0);
    ASSERT_THAT(*info.audioIslands, SizeIs(1));
    EXPECT_EQ(info.audioIslands->front().start, 0);
    EXPECT_NEAR(info.audioIslands->front().end, 1, 0.01);
}

TEST_F(MeasuredSound, SilenceThatIsSaidToEndPastTheFileLeavesNoSoundThere)
{
    const fs::path clip = Media::make(
        {"quiet-end.m4a",
         {"-f", "lavfi", "-i", "aevalsrc=exprs='0.1*sin(2000*PI*t)*lt(t\\,1)':s=44100:d=4", "-c:a",
          "aac", "-b:a", "128k"}});
    const double duration = probed(clip).durationSeconds;
    const SignalInfo info = measured(clip);
    ASSERT_THAT(*info.audioIslands, SizeIs(1));
    EXPECT_NEAR(info.audioIslands->front().end, 1, 0.1);
    EXPECT_NEAR(*info.longestSilenceSeconds, duration - info.audioIslands->front().end, 0.05);
}

} // namespace
} // namespace vantroque

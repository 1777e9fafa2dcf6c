#include "Base/Numbers.h"

#include "Signal/CleanRun.h"
#include "Signal/MeasuredFacts.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Files of several audio streams, as broadcasters deliver them.

namespace vantroque {

namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;
using Media::operator+;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string left = "0.1*sin(2000*PI*t)+0.05*sin(880*PI*t)";
const std::string right = "0.02*sin(2000*PI*t)+0.05*sin(880*PI*t)+0.05*sin(660*PI*t)";

/// Two seconds of picture over streams of these expressions; one with a "|" has several channels.
fs::path master(const std::string& name, const std::vector<std::string>& streams,
                const std::vector<std::string>& seconds = {})
{
    std::vector<std::string> arguments{"-f", "lavfi", "-i",
                                       "testsrc2=size=128x72:rate=25:duration=2"};
    std::vector<std::string> maps{"-map", "0"};
    for (std::size_t i = 0; i < streams.size(); ++i) {
        const std::string length = i < seconds.size() ? seconds[i] : "2";
        arguments =
            arguments
            + std::vector<std::string>{"-f", "lavfi", "-i",
                                       "aevalsrc=exprs='" + streams[i] + "':s=48000:d=" + length};
        maps = maps + std::vector<std::string>{"-map", Numbers::wholeText(std::ssize(maps) / 2)};
    }
    return Media::make(
        {name,
         arguments + maps + std::vector<std::string>{"-c:v", "mpeg2video", "-c:a", "pcm_s24le"}});
}

std::vector<std::string> masterTracks(std::size_t count)
{
    std::vector<std::string> tracks{left, right, "0.1*sin(2000*PI*t)", "0"};
    tracks.resize(count, "0");
    return tracks;
}

class TracksOf : public testing::TestWithParam<int> {
protected:
    const CleanRun m_cleanRun;
};
class Tracks : public testing::Test {
protected:
    const CleanRun m_cleanRun;
};

TEST_P(TracksOf, AMasterOfSingleChannelsMeasuresAsTheSamePairInOneStream)
{
    const auto count = static_cast<std::size_t>(GetParam());
    const fs::path file =
        master("tracks-" + Numbers::wholeText(GetParam()) + ".mxf", masterTracks(count));
    const MediaInfo media = probed(file);
    ASSERT_TRUE(media.audio->isPair());
    EXPECT_EQ(media.audio->measuredChannels(), 2);
    const SignalInfo pair = measured(file);
    const SignalInfo stereo = measured(master("one-pair.mxf", {left + "|" + right}));

    EXPECT_NEAR(*pair.integratedLKFS, *stereo.integratedLKFS, 0.1);
    EXPECT_NEAR(*pair.truePeakDb, *stereo.truePeakDb, 0.1);
    EXPECT_NEAR(*pair.loudnessRangeLU, *stereo.loudnessRangeLU, 0.1);
    EXPECT_NEAR(pair.phase->meanCorrelation, stereo.phase->meanCorrelation, 0.005);
    EXPECT_EQ(pair.phase->series.size(), stereo.phase->series.size());
    ASSERT_THAT(*pair.channelLevels, SizeIs(2));
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_NEAR(*pair.channelLevels->at(i).rmsDb, *stereo.channelLevels->at(i).rmsDb, 0.1);
        EXPECT_NEAR(*pair.channelLevels->at(i).peakDb, *stereo.channelLevels->at(i).peakDb, 0.1);
        EXPECT_EQ(pair.channelLevels->at(i).bitsInUse, stereo.channelLevels->at(i).bitsInUse);
    }
    EXPECT_THAT(pair.channelSeries->rms, SizeIs(2));
    EXPECT_NEAR(*pair.soundEnd, 2, 0.005);
    EXPECT_THAT(pair.audioTracks.value_or(std::vector<TrackLoudness>()), SizeIs(count / 2 - 1));
    EXPECT_EQ(stereo.audioTracks, std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Count, TracksOf, testing::Values(2, 4, 8));

TEST_F(Tracks, EachFurtherPairHasItsOwnLoudnessAndPeak)
{
    const auto tracks = *measured(master("tracks-8.mxf", masterTracks(8))).audioTracks;
    ASSERT_THAT(tracks, SizeIs(3));
    EXPECT_EQ(tracks[0].first, 2);
    EXPECT_EQ(tracks[0].count, 2);
    EXPECT_NEAR(*tracks[0].integratedLKFS, -23.0, 0.1)
        << "1 kHz at -20 dBFS in one of two channels";
    EXPECT_NEAR(*tracks[0].truePeakDb, -20, 0.1);
    EXPECT_EQ(tracks[1], (TrackLoudness{4, 2, -70, -99}));
    EXPECT_EQ(tracks[2], (TrackLoudness{6, 2, -70, -99}));
}

TEST_F(Tracks, AStereoStreamAheadOfOthersIsTheOneThatIsGraded)
{
    const fs::path file =
        master("described.mov", {left + "|" + right, "0.1*sin(2000*PI*t)", "0.2*sin(2000*PI*t)|0"});
    const MediaInfo media = probed(file);
    EXPECT_FALSE(media.audio->isPair());
    const SignalInfo info = measured(file);
    const SignalInfo alone = measured(master("one-pair.mxf", {left + "|" + right}));
    EXPECT_EQ(info.integratedLKFS, alone.integratedLKFS);
    EXPECT_EQ(info.truePeakDb, alone.truePeakDb);
    EXPECT_EQ(info.channelLevels, alone.channelLevels);
    EXPECT_EQ(info.phase, alone.phase);
    ASSERT_THAT(*info.audioTracks, SizeIs(2));
    EXPECT_NEAR(*info.audioTracks->at(0).truePeakDb, -20, 0.1);
    EXPECT_NEAR(*info.audioTracks->at(1).truePeakDb, -14, 0.1);
}

TEST_F(Tracks, ATrackThatEndsEarlyIsAChannelThatIsLost)
{
    const fs::path file = master("short-right.mov", {left, right}, {"4", "1"});
    const SignalInfo info = measured(file);
    EXPECT_NEAR(*info.soundEnd, 4, 0.005);
    ASSERT_THAT(*info.lostChannels, SizeIs(1));
    EXPECT_EQ(info.lostChannels->front().channel, 1);
    EXPECT_NEAR(info.lostChannels->front().start, 1, 0.005);
}

TEST_F(Tracks, AStreamThatNobodyCanDecodeDoesNotStopTheRest)
{
    const TestFolder folder;
    QByteArray bytes = contents(master("two.mov", {left + "|" + right, "0"}));
    ASSERT_EQ(bytes.count("in24"), 4) << "each stream is named twice";
    for (int i = 0; i < 2; ++i)
        bytes.replace(bytes.lastIndexOf("in24"), 4, "zzzz");
    const SignalInfo info = measured(folder.write("unknown.mov", bytes));
    EXPECT_TRUE(info.integratedLKFS);
    EXPECT_THAT(*info.audioTracks, IsEmpty());
}

TEST_F(Tracks, APopIsMeasuredInTheStreamThatIsGraded)
{
    const std::string pop = "0.1*sin(2000*PI*t)*between(t,1,1.04)";
    const fs::path file = master("pops.mov", {pop + "|" + pop, "0.5*sin(8000*PI*t)|0|0|0|0|0"});
    const auto found =
        SignalAnalyzer::measurePop(FileUrl::fromPath(file), 1, 0.04, probed(file).audio);
    EXPECT_NEAR(*found.centroidHz, 1000, 60);
    EXPECT_NEAR(*found.peakDb, -20, 0.5);
    const fs::path tracks = master("pop-tracks.mxf", {pop, pop, "0.5*sin(8000*PI*t)", "0"});
    const auto pair =
        SignalAnalyzer::measurePop(FileUrl::fromPath(tracks), 1, 0.04, probed(tracks).audio);
    EXPECT_NEAR(*pair.centroidHz, 1000, 60);
    EXPECT_NEAR(*pair.peakDb, -20, 0.5);
}

TEST_F(Tracks, TheLiveMetersShowThePair)
{
    const MediaInfo media = probed(master("tracks-4.mxf", masterTracks(4)));
    AnalysisProgress progress([](const AnalysisProgress::Snapshot&) {});
    progress.set(media);
    ASSERT_TRUE(SignalAnalyzer::analyze(media.url, media, {}, &progress));
    const auto state = progress.snapshot();
    EXPECT_EQ(state.channelCount, 2);
    EXPECT_EQ(state.channelLayout, u"stereo"_s);
    ASSERT_THAT(state.audio, SizeIs(testing::Ge(19U)));
    for (std::size_t i = 0; i < state.audio.size(); ++i)
        EXPECT_THAT(state.audio[i].levels->rms, SizeIs(2));
}

} // namespace
} // namespace vantroque

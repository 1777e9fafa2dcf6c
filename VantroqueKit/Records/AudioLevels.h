#pragma once

#include "Records/TimeSpan.h"

#include <optional>
#include <vector>

namespace vantroque {

/// Levels of one channel over the whole file, in dBFS; -99 stands for less than can be measured.
struct ChannelLevel {
    std::optional<double> rmsDb;
    std::optional<double> peakDb;
    std::optional<int> bitsInUse; ///< PCM only.

    VANTROQUE_RECORD(ChannelLevel, rmsDb, peakDb, bitsInUse)
};

/// The loudest of all windows of some length (EBU Tech 3341).
struct LoudestWindow {
    double lufs = 0;  ///< -99 where none is above the gate of ITU-R BS.1770.
    double start = 0; ///< Seconds.

    VANTROQUE_RECORD(LoudestWindow, lufs, start)
};

/// A channel that carried sound and is silent from some moment to the end, while others go on.
struct LostChannel {
    int channel = 0;  ///< Counted from 0.
    double start = 0; ///< Seconds.

    VANTROQUE_RECORD(LostChannel, channel, start)
};

/// What one of the further audio streams carries, or two that are a pair.
struct TrackLoudness {
    int first = 0; ///< Counted from 0 among the audio streams.
    int count = 1;
    std::optional<double> integratedLKFS; ///< ITU-R BS.1770 programme loudness.
    std::optional<double> truePeakDb;     ///< dBTP.

    VANTROQUE_RECORD(TrackLoudness, first, count, integratedLKFS, truePeakDb)
};

/// The level history for display: one list a channel, all of one length, in dBFS with one decimal,
/// never below -99.
struct ChannelLevelSeries {
    double sampleHz = 0; ///< Windows a second.
    std::vector<std::vector<float>> rms;
    std::vector<std::vector<float>> peak;

    VANTROQUE_RECORD(ChannelLevelSeries, sampleHz, rms, peak)
};

/// Whether left and right cancel when summed to mono. Correlation runs from -1 to 1.
struct StereoPhase {
    std::vector<float> series;
    double sampleHz = 0; ///< Values a second.
    double meanCorrelation = 0;
    double minWindowCorrelation = 0;
    std::vector<TimeSpan> outOfPhaseRuns;
    bool dualMono = false;
    double audibleSeconds = 0;

    VANTROQUE_RECORD(StereoPhase, series, sampleHz, meanCorrelation, minWindowCorrelation,
                     outOfPhaseRuns, dualMono, audibleSeconds)
};

} // namespace vantroque

#pragma once

#include "Records/AudioLevels.h"
#include "Records/DecodeHealth.h"
#include "Records/DetailEstimate.h"
#include "Records/FlashInfo.h"
#include "Records/FrameCadence.h"
#include "Records/PictureLevels.h"
#include "Records/SoundScan.h"
#include "Records/TextRegion.h"
#include "Records/TimeSpan.h"

#include <QString>

#include <optional>
#include <vector>

namespace vantroque {

/// A picture inside the frame, in pixels from the top left.
struct CropRect {
    int width = 0;
    int height = 0;
    int x = 0;
    int y = 0;

    VANTROQUE_RECORD(CropRect, width, height, x, y)
};

/// What the decoding pass measured. An absent field was never measured, also by an earlier version
/// of this program; an empty list was measured and found nothing.
struct SignalInfo {
    /// Of the first frame, in seconds from the start of the file, where it comes late. All times
    /// below count from it.
    std::optional<double> pictureStart;
    /// Of what was decoded, in seconds.
    std::optional<double> pictureEnd;
    std::optional<double> soundStart;
    std::optional<double> soundEnd;
    std::optional<double> integratedLKFS; ///< ITU-R BS.1770 programme loudness.
    std::optional<double> truePeakDb;     ///< dBTP.
    std::optional<double> loudnessRangeLU;
    std::optional<LoudestWindow> maxShortTerm; ///< Of three seconds; absent in shorter sound.
    std::optional<LoudestWindow> maxMomentary; ///< Of 0.4 seconds.
    std::optional<double> loudestSeconds;  ///< Where it is loudest, of its loudest three seconds.
    std::optional<double> truePeakSeconds; ///< Where the tenth of a second begins that has it.
    std::optional<double> longestSilenceSeconds;
    double headBlackSeconds = 0;
    double tailBlackSeconds = 0;
    double headFreezeSeconds = 0;
    std::optional<CropRect> activePicture;
    std::optional<double> interlacedRatio; ///< Share of sampled frames that are combed.
    std::optional<std::vector<TimeSpan>> blackRuns;
    std::optional<std::vector<TimeSpan>> freezeRuns;   ///< Black pictures that last among them.
    std::optional<std::vector<TimeSpan>> audioIslands; ///< Sound between silences.
    std::optional<double> leaderToneHz;
    std::optional<double> leaderPopPeakDb; ///< dBFS.
    std::optional<bool> leaderToneChecked;
    std::optional<double> headSilenceSeconds;
    std::optional<std::vector<QString>> slateTextLines;
    std::optional<std::vector<TextRegion>> textRegions;
    std::optional<bool> textScanAttempted;
    std::optional<PictureLevels> levels;
    std::optional<FrameCadence> cadence;
    std::optional<StereoPhase> phase;
    std::optional<std::vector<ChannelLevel>> channelLevels; ///< One a channel, in file order.
    std::optional<ChannelLevelSeries> channelSeries;
    std::optional<std::vector<LostChannel>> lostChannels;
    std::optional<SoundScan> soundScan; ///< Only where a profile asks for it.
    std::optional<bool> soundScanAttempted;
    std::optional<std::vector<TrackLoudness>> audioTracks; ///< All but those that are graded.
    std::optional<DetailEstimate> detail;
    std::optional<DecodeHealth> decodeHealth;
    /// One by each light that was asked for; none where that could not be measured.
    std::optional<std::vector<FlashInfo>> flashes;

    VANTROQUE_RECORD(SignalInfo, pictureStart, pictureEnd, soundStart, soundEnd, integratedLKFS,
                     truePeakDb, loudnessRangeLU, maxShortTerm, maxMomentary, loudestSeconds,
                     truePeakSeconds, longestSilenceSeconds, headBlackSeconds, tailBlackSeconds,
                     headFreezeSeconds, activePicture, interlacedRatio, blackRuns, freezeRuns,
                     audioIslands, leaderToneHz, leaderPopPeakDb, leaderToneChecked,
                     headSilenceSeconds, slateTextLines, textRegions, textScanAttempted, levels,
                     cadence, phase, channelLevels, channelSeries, lostChannels, soundScan,
                     soundScanAttempted, audioTracks, detail, decodeHealth, flashes)
};

} // namespace vantroque

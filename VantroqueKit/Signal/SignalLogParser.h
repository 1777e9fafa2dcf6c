#pragma once

#include "Records/MediaInfo.h"
#include "Signal/SignalLog.h"

#include <QByteArray>

#include <optional>

/// From what a decode printed and dumped to measurements. Pure; nothing here can fail: what was not
/// found stays absent.
namespace vantroque::SignalAnalyzer {

/// The run still open at the end of a file: the last of more starts than ends, up to `duration`.
std::optional<double> trailingRun(const std::vector<double>& starts, std::size_t endCount,
                                  double duration);

/// What the log alone tells: loudness, silence, black, freeze, interlace and the active picture.
/// `audio` is the sound that was measured.
SignalInfo parse(const SignalLog& log, double duration,
                 const std::optional<AudioStreamInfo>& audio = {});

/// What a decode writes beside its log.
struct SideOutputs {
    QByteArray levelsDump; ///< 8-bit planar 4:4:4 in video range; empty without picture.
    double levelsRate = 0; ///< Frames a second of the dump.
    QByteArray halfStats;  ///< PSNR statistics; empty without the estimate of detail.
    QByteArray quarterStats;
    std::optional<QByteArray> bitsDump; ///< Luma samples of 16 bits, little endian.
};

/// Adds picture levels, cadence, detail, channel levels and phase.
void extend(SignalInfo& info, const SignalLog& log, const MediaInfo& media,
            const SideOutputs& outputs);

} // namespace vantroque::SignalAnalyzer

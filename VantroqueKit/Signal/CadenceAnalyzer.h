#pragma once

#include "Records/FrameCadence.h"
#include "Signal/RawFrames.h"

#include <optional>
#include <vector>

namespace vantroque {

/// Passages that are really still, such as a held title card, in which repeated frames are no
/// fault.
namespace StillPassages {
std::vector<TimeSpan> spans(const RawFrames& frames);
} // namespace StillPassages

/// What is wrong with the picture's time: repeated frames and why they repeat, stray frames, black
/// inside the picture. Pure.
namespace CadenceAnalyzer {

/// What the cadence is read from.
struct Input {
    std::vector<double> ydif; ///< One frame's difference in luma to the one before, as signalstats
                              ///< gives it at `ydifBitDepth`.
    int ydifBitDepth = 8;
    std::int64_t repeatedTop = 0; ///< Repeated fields as idet counts them.
    std::int64_t repeatedBottom = 0;
    std::int64_t repeatedNeither = 0;
    std::vector<TimeSpan> blackRuns;
    std::vector<TimeSpan> stillSpans;
    double duration = 0; ///< Seconds.
    std::int64_t frameCount = 0;
};

/// The smallest period from 2 to 12 frames in which most of the frames repeat; nothing without one.
std::optional<int> detectPeriod(std::vector<std::int64_t> frames);

/// How many frames show one picture on average when they alternate between two and three, as those
/// of 24 frames a second do at 60; nothing otherwise.
std::optional<double> framesPerPicture(const std::vector<std::int64_t>& repeats);

FrameCadence measure(const Input& input);

} // namespace CadenceAnalyzer
} // namespace vantroque

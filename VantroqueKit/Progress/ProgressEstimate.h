#pragma once

#include "Base/Record.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace vantroque {

/// What an analysis is doing.
enum class AnalysisStage {
    queued,
    probing,
    decoding,
    readingText,
    readingSlate,
    measuringPop,
    scoring,
    done
};
VANTROQUE_ENUM_NAMES(AnalysisStage, queued, probing, decoding, readingText, readingSlate,
                     measuringPop, scoring, done)

/// The share of an analysis that is over. It is no measure of work done but a smoothed estimate of
/// the time used against the time still expected, and never goes backwards. Pure: the time is an
/// argument.
namespace ProgressEstimate {

using TimePoint = std::chrono::steady_clock::time_point;

/// What the estimate is made from.
struct Timing {
    std::optional<TimePoint> started;
    std::optional<TimePoint> decodeStarted;
    double duration = 0;     ///< Of the file, seconds.
    double mediaSeconds = 0; ///< How far the decode has got.
    int textExpected = 0;    ///< Frames that will be read for text.
    int textStep = 1;        ///< Picture frames from one of them to the next.
    int textFramesRead = 0;
    int textFramesExtracted = 0;
    double textReadSeconds = 0; ///< Spent on `textReads` readings.
    int textReads = 0;
    int graphicsSeen = 0; ///< Lines of text that came up so far.
    int lastLines = 0;
    std::optional<TimePoint> edgesStarted; ///< Refining when text comes and goes.
    int edgeUnitsTotal = 0;
    int edgeUnitsDone = 0;
    std::optional<TimePoint> lastRefresh;
};

/// Seconds still expected; nothing while nobody can tell.
std::optional<double> estimateRemaining(TimePoint now, AnalysisStage stage, const Timing& timing);

/// The next value of `fraction`, and the refresh noted in `timing`.
double refreshed(double fraction, TimePoint now, AnalysisStage stage, Timing& timing);

} // namespace ProgressEstimate
} // namespace vantroque

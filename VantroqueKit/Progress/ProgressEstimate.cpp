#include "Progress/ProgressEstimate.h"

#include <algorithm>
#include <cmath>

namespace vantroque::ProgressEstimate {

namespace {

/// Nothing but the end of an analysis gets past this.
constexpr double ceiling = 0.99;
/// What refining one graphic's coming and going takes, in seconds.
constexpr double secondsPerGraphic = 0.3;

double secondsBetween(TimePoint from, TimePoint to)
{
    return std::chrono::duration<double>(to - from).count();
}

double tailSeconds(AnalysisStage stage)
{
    return stage == AnalysisStage::scoring ? 0.05 : 0.4;
}

double secondsPerRead(const Timing& timing)
{
    return timing.textReads >= 1 ? timing.textReadSeconds / timing.textReads : 0.15;
}

double graphicsSeconds(const Timing& timing)
{
    return std::max(timing.graphicsSeen, 1) * secondsPerGraphic;
}

double unreadSeconds(const Timing& timing, int expected)
{
    return secondsPerRead(timing) * std::max(expected - timing.textFramesRead, 0);
}

std::optional<double> decodeRemaining(TimePoint now, const Timing& timing)
{
    constexpr double tooEarly = 0.02;
    if (!timing.decodeStarted || timing.duration <= 0)
        return std::nullopt;
    const double share = std::min(timing.mediaSeconds / timing.duration, 1.0);
    if (share <= tooEarly)
        return std::nullopt;
    const double elapsed = secondsBetween(*timing.decodeStarted, now);
    const double decode = std::max(elapsed * (1 - share) / share, 0.0);
    const double tail = tailSeconds(AnalysisStage::decoding);
    if (timing.textExpected < 1)
        return tail + decode;
    // Reading runs beside the decode, so the slower of the two counts.
    return tail + std::max(decode, unreadSeconds(timing, timing.textExpected))
           + graphicsSeconds(timing);
}

double edgesRemaining(TimePoint now, const Timing& timing)
{
    // Edges are found by halving the step, and a look at each end.
    const double readsPerGraphic = 2 * std::ceil(std::log2(timing.textStep + 1)) + 2;
    const double elapsed = secondsBetween(*timing.edgesStarted, now);
    const double share =
        static_cast<double>(timing.edgeUnitsDone) / std::max(timing.edgeUnitsTotal, 1);
    if (share >= 0.25)
        return elapsed * (1 - share) / share;
    return std::max(timing.edgeUnitsTotal / readsPerGraphic * secondsPerGraphic - elapsed, 0.1);
}

double textRemaining(TimePoint now, const Timing& timing)
{
    const double tail = tailSeconds(AnalysisStage::readingText);
    if (timing.edgesStarted)
        return tail + edgesRemaining(now, timing);
    const int expected = std::max(timing.textExpected, timing.textFramesExtracted);
    return tail + graphicsSeconds(timing) + unreadSeconds(timing, expected);
}

} // namespace

std::optional<double> estimateRemaining(TimePoint now, AnalysisStage stage, const Timing& timing)
{
    switch (stage) {
    case AnalysisStage::queued:
    case AnalysisStage::probing: return std::nullopt;
    case AnalysisStage::decoding: return decodeRemaining(now, timing);
    case AnalysisStage::readingText: return textRemaining(now, timing);
    case AnalysisStage::readingSlate:
    case AnalysisStage::measuringPop:
    case AnalysisStage::scoring: return tailSeconds(stage);
    case AnalysisStage::done: break;
    }
    return 0;
}

double refreshed(double fraction, TimePoint now, AnalysisStage stage, Timing& timing)
{
    if (stage == AnalysisStage::done)
        return 1;
    if (stage == AnalysisStage::queued)
        return 0;
    if (!timing.started)
        return fraction;
    const double elapsed = secondsBetween(*timing.started, now);
    const double floor =
        stage == AnalysisStage::probing ? (1 - std::exp(-elapsed / 0.4)) * 0.05 : 0.04;
    const auto remaining = estimateRemaining(now, stage, timing);
    const double target = remaining ? elapsed / std::max(elapsed + *remaining, 0.001) : 0;
    const double step = timing.lastRefresh ? secondsBetween(*timing.lastRefresh, now) : 0;
    timing.lastRefresh = now;
    if (fraction < target) {
        const double speed = std::max(target / std::max(elapsed, 0.001), 0.05);
        const double toTarget = std::min(step * 4, 1.0) * (target - fraction);
        return std::min(fraction + std::min(2 * step * speed, toTarget), ceiling);
    }
    if (floor < fraction) // a slow creep while the estimate runs behind
        return std::min(fraction + (ceiling - fraction) * 0.004, ceiling);
    return floor;
}

} // namespace vantroque::ProgressEstimate

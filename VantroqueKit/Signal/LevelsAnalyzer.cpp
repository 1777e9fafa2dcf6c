#include "Signal/LevelsAnalyzer.h"

#include "Records/PercentScale.h"

#include <algorithm>
#include <cmath>

namespace vantroque::LevelsAnalyzer {

namespace {

/// How many pixels of a frame are out of each limit.
struct Counts {
    unsigned luma = 0;
    unsigned rgb = 0;
    unsigned strict = 0;
};

unsigned isOutside(float low, float high, float lowest, float highest)
{
    return static_cast<unsigned>(low < lowest) | static_cast<unsigned>(high > highest);
}

/// The one loop over all pixels: branchless and in single precision, so that it runs in vectors.
Counts count(const RawFrames::Planes& planes, std::size_t pixels, const PercentScale& scale)
{
    const auto* y = reinterpret_cast<const unsigned char*>(planes.y.data());
    const auto* cb = reinterpret_cast<const unsigned char*>(planes.cb.data());
    const auto* cr = reinterpret_cast<const unsigned char*>(planes.cr.data());
    unsigned luma = 0;
    unsigned rgb = 0;
    unsigned strict = 0;
    for (std::size_t i = 0; i < pixels; ++i) {
        const auto [yp, r, g, b] = scale.levels(y[i], cb[i], cr[i]);
        const float lower = r < g ? r : g;
        const float higher = r > g ? r : g;
        const float low = lower < b ? lower : b;
        const float high = higher > b ? higher : b;
        luma += isOutside(yp, yp, rejectLow, rejectHigh);
        rgb += isOutside(low, high, rejectLow, rejectHigh);
        strict +=
            isOutside(yp, yp, strictLow, strictHigh) | isOutside(low, high, strictLow, strictHigh);
    }
    return {luma, rgb, strict};
}

} // namespace

double percentOfCode(int code, bool fullRange, int bitDepth)
{
    if (fullRange)
        return code / (std::exp2(bitDepth) - 1) * 100;
    const double scale = std::exp2(bitDepth - 8);
    return (code - 16 * scale) / (235 * scale - 16 * scale) * 100;
}

PictureLevels measure(const RawFrames& frames, ColorMatrix matrix, bool matrixAssumed,
                      bool fullRange, std::optional<int> yMinCode, std::optional<int> yMaxCode,
                      int bitDepth)
{
    const PercentScale scale(matrix, fullRange);
    std::vector<double> luma;
    std::vector<double> rgb;
    std::vector<double> strict;
    for (auto* series : {&luma, &rgb, &strict})
        series->reserve(frames.frameCount());
    const auto pixels = static_cast<double>(frames.pixelsPerFrame());
    for (std::size_t i = 0; i < frames.frameCount(); ++i) {
        const Counts counts = count(frames.planes(i), frames.pixelsPerFrame(), scale);
        luma.push_back(counts.luma / pixels);
        rgb.push_back(counts.rgb / pixels);
        strict.push_back(counts.strict / pixels);
    }

    PictureLevels levels;
    levels.yMinPercent = yMinCode ? percentOfCode(*yMinCode, fullRange, bitDepth) : 0;
    levels.yMaxPercent = yMaxCode ? percentOfCode(*yMaxCode, fullRange, bitDepth) : 100;
    levels.sampleRate = frames.sampleRate();
    levels.sampleWidth = frames.width();
    levels.sampleHeight = frames.height();
    levels.matrix = matrix;
    levels.matrixAssumed = matrixAssumed;
    levels.fullRange = fullRange;
    levels.yRejectRuns = runs(luma, frames.sampleRate(), areaFraction);
    levels.rgbRejectRuns = runs(rgb, frames.sampleRate(), areaFraction);
    levels.strictRuns = runs(strict, frames.sampleRate(), areaFraction);
    levels.areaFraction = areaFraction;
    return levels;
}

std::vector<LevelRun> runs(const std::vector<double>& fractions, double rate, double area)
{
    std::vector<LevelRun> found;
    if (rate <= 0)
        return found;
    bool open = false;
    for (std::size_t i = 0; i < fractions.size(); ++i) {
        if (fractions[i] <= area) {
            open = false;
            continue;
        }
        if (!open)
            found.push_back({static_cast<double>(i) / rate, 0, 0});
        open = true;
        found.back().end = static_cast<double>(i + 1) / rate;
        found.back().worstFraction = std::max(found.back().worstFraction, fractions[i]);
    }
    return found;
}

} // namespace vantroque::LevelsAnalyzer

#pragma once

#include "Records/ColorMatrix.h"

#include <vector>

namespace vantroque {

/// A passage in which part of the picture was out of limits.
struct LevelRun {
    double start = 0; ///< Seconds.
    double end = 0;
    double worstFraction = 0; ///< The largest share of the picture out of limits, 0 to 1.

    VANTROQUE_RECORD(LevelRun, start, end, worstFraction)
};

/// The legal range of the picture against EBU R 103. Percentages are of the nominal range: 0 is
/// black, 100 is white, whatever the bit depth.
struct PictureLevels {
    double yMinPercent = 0; ///< Darkest and brightest luma of all full frames.
    double yMaxPercent = 0;
    double sampleRate = 0; ///< Frames a second of the sampled dump that the runs come from.
    int sampleWidth = 0;
    int sampleHeight = 0;
    ColorMatrix matrix = ColorMatrix::bt709; ///< Used for RGB.
    bool matrixAssumed = false;              ///< The file declares no matrix that is known.
    bool fullRange = false;
    std::vector<LevelRun> yRejectRuns;
    std::vector<LevelRun> rgbRejectRuns;
    std::vector<LevelRun> strictRuns; ///< Beyond the preferred range, inside the tolerance.
    double areaFraction = 0;          ///< Share of the picture that may be out of limits.

    VANTROQUE_RECORD(PictureLevels, yMinPercent, yMaxPercent, sampleRate, sampleWidth, sampleHeight,
                     matrix, matrixAssumed, fullRange, yRejectRuns, rgbRejectRuns, strictRuns,
                     areaFraction)
};

} // namespace vantroque

#pragma once

#include "Base/Record.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

/// Sound of a public warning (47 CFR 11.31), which may be heard in no advert.
struct AlertTone {
    /// `attention`: 853 and 960 Hz together. `header`: data in bursts, before and after a warning.
    enum class Kind { attention, header };

    Kind kind = Kind::attention;
    int channel = 0;  ///< Counted from 0.
    double start = 0; ///< Seconds.
    double end = 0;

    VANTROQUE_RECORD(AlertTone, kind, channel, start, end)
};
VANTROQUE_ENUM_NAMES(AlertTone::Kind, attention, header)

/// Samples in a row at full scale.
struct ClippedRun {
    int channel = 0;  ///< Counted from 0.
    double start = 0; ///< Seconds.
    int samples = 0;

    VANTROQUE_RECORD(ClippedRun, channel, start, samples)
};

/// What was looked for in every sample of the sound that is graded.
struct SoundScan {
    std::vector<AlertTone> alertTones;   ///< In the order of their beginnings.
    std::vector<ClippedRun> clippedRuns; ///< The first of them.
    std::int64_t clippedRunCount = 0;    ///< All of them.

    VANTROQUE_RECORD(SoundScan, alertTones, clippedRuns, clippedRunCount)
};

} // namespace vantroque

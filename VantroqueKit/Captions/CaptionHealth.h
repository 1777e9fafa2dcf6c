#pragma once

#include "Captions/CaptionTrack.h"

#include <QString>

#include <optional>
#include <vector>

namespace vantroque {

/// What is wrong with the structure of a caption track.
struct CaptionHealth {
    int cueCount = 0;
    std::optional<double> first;   ///< Start of the first cue.
    std::optional<double> last;    ///< Latest end of any cue.
    int overlapping = 0;           ///< Cues that begin before an earlier one has finished.
    int beyondPicture = 0;         ///< Cues that begin when the picture is over.
    int zeroLength = 0;            ///< Cues that end no later than they start.
    int empty = 0;                 ///< Cues without visible text.
    int overTwoLines = 0;          ///< Cues of three lines or more, empty ones included.
    std::int64_t shiftedHours = 0; ///< Hours that have been taken off the times.

    /// Of a track over a picture of `duration` seconds; with 0 or less nothing is beyond it.
    static CaptionHealth of(const CaptionTrack& track, double duration);

    /// Short sentences, one for each count that is not 0.
    std::vector<QString> notes() const;
    /// The notes on cues that are at the wrong time.
    std::vector<QString> timingNotes() const;
    /// The notes on cues that look wrong.
    std::vector<QString> layoutNotes() const;

    VANTROQUE_RECORD(CaptionHealth, cueCount, first, last, overlapping, beyondPicture, zeroLength,
                     empty, overTwoLines, shiftedHours)
};

} // namespace vantroque

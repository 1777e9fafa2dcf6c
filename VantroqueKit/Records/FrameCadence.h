#pragma once

#include "Records/TimeSpan.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace vantroque {

/// A single frame that matches neither the one before it nor the one after.
struct FlashFrame {
    std::int64_t frame = 0;
    double ratio = 0; ///< Its difference over the motion around it, one decimal.

    VANTROQUE_RECORD(FlashFrame, frame, ratio)
};

/// Why frames repeat: a regular repeat over most of the file, over a part of it, or none.
enum class DuplicateCause { conversion, retimedShot, scattered };
VANTROQUE_ENUM_NAMES(DuplicateCause, conversion, retimedShot, scattered)

/// What is wrong with the picture's time. Frames count from 0.
struct FrameCadence {
    std::vector<std::int64_t> duplicateFrames; ///< The first 200 at most.
    std::int64_t duplicateCount = 0;           ///< All of them.
    std::optional<int> duplicatePeriod;        ///< 2 to 12 frames.
    std::optional<DuplicateCause> duplicateCause;
    /// First and last duplicate, both inclusive.
    std::optional<std::pair<std::int64_t, std::int64_t>> duplicateSpan;
    std::int64_t repeatedFieldsTop = 0; ///< As ffmpeg's idet counts them.
    std::int64_t repeatedFieldsBottom = 0;
    std::int64_t repeatedFieldsNeither = 0;
    std::vector<FlashFrame> flashFrames; ///< The first 200 at most.
    std::vector<TimeSpan> interiorBlackRuns;
    std::int64_t frameCountSeen = 0;
    /// How many frames show one picture on average, where two and three of them alternate.
    std::optional<double> framesPerPicture;

    /// What a regular repeat over most of the file comes from; nothing without one.
    std::optional<QString> periodDescription() const;
    /// How far a shot that repeats its frames was slowed; nothing when none was.
    std::optional<QString> retimeDescription() const;
    /// "1st", "2nd", "11th".
    static QString ordinal(std::int64_t number);

    VANTROQUE_RECORD(FrameCadence, duplicateFrames, duplicateCount, duplicatePeriod, duplicateCause,
                     duplicateSpan, repeatedFieldsTop, repeatedFieldsBottom, repeatedFieldsNeither,
                     flashFrames, interiorBlackRuns, frameCountSeen, framesPerPicture)
};

} // namespace vantroque

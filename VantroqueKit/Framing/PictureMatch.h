#pragma once

#include "Records/NormalizedRect.h"
#include "Records/Report.h"

#include <QString>

#include <optional>

namespace vantroque {

/// How the picture B is laid over the picture A to see where they differ.
struct PictureMatch {
    /// Where B lies in A's picture as that is shown: as large as it can be, and in the middle.
    NormalizedRect place{0, 0, 1, 1};
    bool isFitted = false; ///< B has another size or shape.
    bool isOtherMatrix = false;
    bool isOtherRange = false;

    static PictureMatch of(const VideoSummary& a, const VideoSummary& b);

    /// What is said of B beside its name where the two share a screen: "fitted into A's picture".
    std::optional<QString> wipeWords() const;
    /// Where samples are compared: "fitted into A's picture, brought to A's matrix and range".
    std::optional<QString> differenceWords() const;
};

} // namespace vantroque

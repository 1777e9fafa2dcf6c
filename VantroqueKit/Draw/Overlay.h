#pragma once

#include "Framing/Guide.h"
#include "Records/CaptionCue.h"
#include "Records/FileReview.h"
#include "Records/Report.h"

#include <QImage>

#include <optional>
#include <vector>

namespace vantroque {

/// The place in the picture that a finding points at.
struct Finding {
    NormalizedRect box;
    Verdict verdict = Verdict::info;
    QString label; ///< A few words; may be empty.
    bool operator==(const Finding&) const = default;
};

/// What lies on a picture, from the bottom up.
struct Overlay {
    QImage outOfRange; ///< A hatch over the whole picture, of any size; null for none.
    std::vector<CaptionCue> captions; ///< Those that show.
    std::vector<Guide> guides;
    std::vector<AnnotationStroke> strokes;
    std::optional<Finding> finding;

    bool isEmpty() const
    {
        return outOfRange.isNull() && captions.empty() && guides.empty() && strokes.empty()
               && !finding;
    }
    bool operator==(const Overlay&) const = default;
};

} // namespace vantroque

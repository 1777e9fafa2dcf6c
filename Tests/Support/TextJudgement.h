#pragma once

#include "Support/TextScenes.h"
#include "Text/TextRecognizer.h"
#include "Text/TextSample.h"

namespace vantroque::TextScenes {

/// How a picture whose text is known was read.
struct Judgement {
    struct Line {
        DrawnLine drawn;
        double overlap = 0; ///< Of the best box with the ink: their intersection over their union.
        double inkOverlap = 0; ///< The same after refinement to the ink.

        bool isFound() const { return overlap >= 0.5; }
    };
    std::vector<Line> lines;
    std::vector<TextSample::Box> boxes;      ///< All, joined to lines.
    std::vector<TextSample::Box> falseBoxes; ///< Those with next to none of the text.
};

Judgement judge(const QImage& picture, const std::vector<RecognizedLine>& read,
                const std::vector<DrawnLine>& lines);

} // namespace vantroque::TextScenes

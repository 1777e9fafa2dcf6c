#pragma once

#include "Records/FileReview.h"

#include <vector>

namespace vantroque {

enum class AnnotationTool { pointer, pen, ellipse, arrow };

/// A note that is being written, and with what.
struct NoteDraft {
    QString text = {};
    std::vector<AnnotationStroke> strokes = {};
    std::vector<AnnotationStroke> undone = {}; ///< Of the strokes; the last one first to come back.
    AnnotationTool tool = AnnotationTool::pointer;
    AnnotationStroke::Ink ink = AnnotationStroke::Ink::red;
    bool isComposing = false; ///< The editor is open.
};

} // namespace vantroque

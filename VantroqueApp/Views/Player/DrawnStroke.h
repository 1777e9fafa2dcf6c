#pragma once

#include "Records/FileReview.h"
#include "VantroqueApp/Model/Playback/Notebook.h"

#include <optional>

/// A stroke while it follows the pointer. Pure.
namespace vantroque::DrawnStroke {

/// Nothing for a tool that draws nothing. A point outside the picture counts as one at its edge.
std::optional<AnnotationStroke> begun(AnnotationTool tool, AnnotationStroke::Ink ink,
                                      NormalizedPoint at);
void extend(AnnotationStroke& stroke, NormalizedPoint to);
/// It can be seen: a pen's dot can, a circle without size cannot.
bool isVisible(const AnnotationStroke& stroke);

} // namespace vantroque::DrawnStroke

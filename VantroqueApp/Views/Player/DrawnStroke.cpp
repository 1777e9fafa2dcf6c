#include "VantroqueApp/Views/Player/DrawnStroke.h"

#include <algorithm>

namespace vantroque::DrawnStroke {

namespace {

NormalizedPoint inside(NormalizedPoint point)
{
    return {.x = std::clamp(point.x, 0.0, 1.0), .y = std::clamp(point.y, 0.0, 1.0)};
}

std::optional<AnnotationStroke::Tool> strokeTool(AnnotationTool tool)
{
    switch (tool) {
    case AnnotationTool::pen: return AnnotationStroke::Tool::pen;
    case AnnotationTool::ellipse: return AnnotationStroke::Tool::ellipse;
    case AnnotationTool::arrow: return AnnotationStroke::Tool::arrow;
    case AnnotationTool::pointer: break;
    }
    return std::nullopt;
}

} // namespace

std::optional<AnnotationStroke> begun(AnnotationTool tool, AnnotationStroke::Ink ink,
                                      NormalizedPoint at)
{
    const auto drawn = strokeTool(tool);
    if (!drawn)
        return std::nullopt;
    return AnnotationStroke{
        .id = QUuid::createUuid(), .tool = *drawn, .points = {inside(at)}, .ink = ink};
}

void extend(AnnotationStroke& stroke, NormalizedPoint to)
{
    const NormalizedPoint point = inside(to);
    if (stroke.points.back() == point)
        return;
    if (stroke.tool != AnnotationStroke::Tool::pen)
        stroke.points.resize(1);
    stroke.points.push_back(point);
}

bool isVisible(const AnnotationStroke& stroke)
{
    return stroke.tool == AnnotationStroke::Tool::pen || stroke.points.size() > 1;
}

} // namespace vantroque::DrawnStroke

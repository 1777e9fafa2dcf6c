#include "Draw/CaptionRenderer.h"

#include "Draw/CaptionStyle.h"
#include "Draw/Colors.h"
#include "Draw/Shadow.h"

#include <algorithm>
#include <cmath>

namespace vantroque::CaptionRenderer {

namespace {

void drawCue(QPainter& painter, const TextShape& shape, const QRectF& block, double fontSize)
{
    constexpr double shadowBlur = 0.15; // of the font's size
    const double blur = std::max(fontSize * shadowBlur, 1.0);
    const double edge = CaptionStyle::edgeWidth * fontSize;
    const auto drawEdge = [&](QPainter& onto) {
        shape.stroke(onto, block.topLeft(), fontSize, painted(Palette::black),
                     CaptionStyle::edgeWidth);
    };
    Shadow::ofDrawing(painter, block.adjusted(-edge, -edge, edge, edge), blur, 1, drawEdge);
    drawEdge(painter);
    shape.fill(painter, block.topLeft(), fontSize, painted(Palette::white));
}

} // namespace

void draw(QPainter& painter, const std::vector<CaptionCue>& cues, const QRectF& picture)
{
    if (cues.empty() || picture.isEmpty())
        return;
    const double fontSize = CaptionStyle::fontSize(picture.height());
    const double margin = CaptionStyle::edgeMargin * picture.height();
    const double width = CaptionStyle::maxWidthFraction * picture.width();
    double top = picture.top() + margin;
    double bottom = picture.bottom() - margin;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const CaptionCue& cue : cues) {
        const bool isTop = cue.placement == CaptionCue::Placement::top;
        if (isTop ? top >= picture.bottom() : bottom <= picture.top())
            continue;
        const TextShape shape = CaptionStyle::styled(cue, picture.size());
        const double height = std::ceil(shape.size().height() * fontSize);
        const QRectF block(picture.center().x() - width / 2, isTop ? top : bottom - height, width,
                           height);
        (isTop ? top : bottom) += isTop ? height : -height;
        drawCue(painter, shape, block, fontSize);
    }
    painter.restore();
}

} // namespace vantroque::CaptionRenderer

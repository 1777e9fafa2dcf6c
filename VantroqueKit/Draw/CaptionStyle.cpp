#include "Draw/CaptionStyle.h"

#include <algorithm>
#include <cmath>

namespace vantroque::CaptionStyle {

double fontSize(double pictureHeight)
{
    return std::max(pictureHeight * fontFraction, leastFontSize);
}

TextShape styled(const CaptionCue& cue, QSizeF pictureSize)
{
    return TextShape::centred(
        cue.runs, maxWidthFraction * pictureSize.width() / fontSize(pictureSize.height()),
        lineSpacing);
}

QRectF blockRect(const CaptionCue& cue, QSizeF pictureSize)
{
    const double width = maxWidthFraction * pictureSize.width();
    const double margin = edgeMargin * pictureSize.height();
    const double height =
        std::ceil(styled(cue, pictureSize).size().height() * fontSize(pictureSize.height()));
    const double y = cue.placement == CaptionCue::Placement::top
                         ? margin
                         : pictureSize.height() - margin - height;
    return {(pictureSize.width() - width) / 2, y, width, height};
}

} // namespace vantroque::CaptionStyle

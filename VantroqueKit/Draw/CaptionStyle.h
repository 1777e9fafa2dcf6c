#pragma once

#include "Draw/TextShape.h"

/// How captions look, on the screen and burnt in.
namespace vantroque::CaptionStyle {

constexpr double fontFraction = 0.042;   ///< Of the picture's height.
constexpr double lineSpacing = 1.18;     ///< Times the font's own.
constexpr double edgeMargin = 0.065;     ///< Above or below the captions, of the height.
constexpr double maxWidthFraction = 0.8; ///< Of the picture's width.
constexpr double edgeWidth = 0.18;       ///< Of the black line along the outlines, of the size.
constexpr double leastFontSize = 6;

double fontSize(double pictureHeight);
/// The lines of a cue, as wide as captions may be.
TextShape styled(const CaptionCue& cue, QSizeF pictureSize);
/// Where a cue stands that is alone, from the picture's top left corner.
QRectF blockRect(const CaptionCue& cue, QSizeF pictureSize);

} // namespace vantroque::CaptionStyle

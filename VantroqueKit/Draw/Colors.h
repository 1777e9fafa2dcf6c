#pragma once

#include "Records/Palette.h"

#include <QColor>

namespace vantroque {

/// A colour of the palette for a painter.
inline QColor painted(Rgba color, double opacity = 1)
{
    QColor shown = QColor::fromRgba(color.argb());
    shown.setAlphaF(shown.alphaF() * static_cast<float>(opacity));
    return shown;
}

} // namespace vantroque

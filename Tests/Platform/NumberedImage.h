#pragma once

#include "Platform/NumberedClip.h"

#include <QImage>

namespace vantroque {

/// The number on a picture of a numbered clip, as a window shows it.
inline std::optional<int> numberOn(const QImage& picture)
{
    const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    return NumberedClip::numberIn({.width = grey.width(),
                                   .height = grey.height(),
                                   .luma = grey.constBits(),
                                   .lumaStride = grey.bytesPerLine()});
}

} // namespace vantroque

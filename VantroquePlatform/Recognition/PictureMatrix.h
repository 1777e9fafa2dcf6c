#pragma once

#include <QImage>

#include <opencv2/core.hpp>

namespace vantroque {

/// The picture as 8-bit RGB of at most `maxHeight` rows and twice that width, transparency over
/// black. Empty for an empty picture; what is larger is scaled down.
cv::Mat3b pictureMatrix(const QImage& picture, int maxHeight);

} // namespace vantroque

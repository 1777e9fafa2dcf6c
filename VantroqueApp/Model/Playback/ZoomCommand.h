#pragma once

namespace vantroque {

/// What a key or a menu does to the size of the picture.
enum class ZoomCommand { fit, actualPixels, zoomIn, zoomOut };

} // namespace vantroque

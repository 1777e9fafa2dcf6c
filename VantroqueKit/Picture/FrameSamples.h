#pragma once

#include "Records/BiPlanarPicture.h"
#include "Records/Orientation.h"
#include "Records/ScopeFrame.h"

#include <optional>

/// Samples of a picture for scopes, by the nearest neighbour: a scope shows samples that there are
/// and no means of them. Any thread.
namespace vantroque::FrameSamples {

/// Of that size; samples of 10 bits are rounded to 8. Nothing when the picture or the size is
/// empty, when planes are missing, or for another depth.
std::optional<ScopeFrame> of(const BiPlanarPicture& picture, int width, int height, bool fullRange,
                             ColorMatrix matrix);
/// Of the picture as it is shown.
std::optional<ScopeFrame> ofShown(const BiPlanarPicture& picture, const Orientation& orientation,
                                  int width, int height, bool fullRange, ColorMatrix matrix);

} // namespace vantroque::FrameSamples

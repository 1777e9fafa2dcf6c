#pragma once

#include "Framing/FrameShape.h"
#include "Framing/Guide.h"
#include "Framing/GuideOptions.h"

#include <optional>
#include <vector>

/// From the operator's choice to what is laid over the picture. Pure.
namespace vantroque::GuideBuilder {

/// In the order in which they are drawn; none for a frame without pixels. `activePicture` is what
/// was found between the bars, in pixels of the same turned frame.
std::vector<Guide> guides(const GuideOptions& options, const FrameShape& frame,
                          const std::optional<CropRect>& activePicture);

/// A zone's areas; the largest one carries its name, of equal ones the first.
std::vector<Guide> guidesOf(const PlatformZone& zone);

} // namespace vantroque::GuideBuilder

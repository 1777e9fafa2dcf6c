#pragma once

#include "Records/BiPlanarPicture.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Clips whose pictures carry their number, as black and white bars with the same bars inverted
/// below, so that what was decoded can be told whatever the codec did to it.
namespace vantroque::NumberedClip {

/// ffmpeg's arguments for such a picture of 192x96.
std::vector<std::string> input(const std::string& rate, const std::string& seconds);

/// A clip of two seconds, encoded by those arguments.
std::filesystem::path make(const std::string& name, const std::string& rate,
                           const std::vector<std::string>& encoder,
                           const std::string& seconds = "2");

/// The number in a picture; nothing when the bars cannot be read. Pictures that are larger hold
/// larger bars.
std::optional<int> numberIn(const BiPlanarPicture& picture);

} // namespace vantroque::NumberedClip

#pragma once

#include "Flashes/FlashPicture.h"

#include <vector>

namespace vantroque::ContentMotion {

/// Whether one picture is mostly the other one, moved: a camera that pans over contrasts changes
/// cells without a flash. Stripes that change places with each other are no motion, since they
/// might have moved either way.
bool isOf(const FlashPicture& picture, const std::vector<float>& before,
          const std::vector<float>& now);

} // namespace vantroque::ContentMotion

#pragma once

#include "Base/Result.h"
#include "Framing/GuideOptions.h"

#include <string>

namespace vantroque {

/// What a list of guides says: "safe,thirds,tiktok". "all" are all there are. Fails with the names
/// there are when one is unknown.
Result<GuideOptions> chooseGuides(const std::string& list);

} // namespace vantroque

#pragma once

#include "Base/Result.h"
#include "Records/Profile.h"
#include "VantroqueCLI/Arguments.h"

#include <vector>

namespace vantroque {

/// All profiles of --profiles-dir, or the installed ones.
Result<std::vector<Profile>> loadProfiles(const Arguments& arguments);

/// Those of `all` that --profile, --group and --all name, or the default selection, in store order.
/// Fails on an id or a group that does not exist.
Result<std::vector<Profile>> chooseProfiles(const std::vector<Profile>& all,
                                            const Arguments& arguments);

} // namespace vantroque

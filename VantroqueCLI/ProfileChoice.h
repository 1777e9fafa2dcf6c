#pragma once

#include "Base/Result.h"
#include "Profiles/OwnProfiles.h"
#include "Records/Profile.h"
#include "VantroqueCLI/Arguments.h"

#include <vector>

namespace vantroque {

struct LoadedProfiles {
    std::vector<Profile> all;
    OwnProfiles::Found own; ///< Those of this user among them.
};

/// All profiles of --profiles-dir, or the installed ones and those of this user. Complains of what
/// this user's folder holds beside profiles, and goes on without it.
Result<LoadedProfiles> loadProfiles(const Arguments& arguments);

/// Those of `all` that --profile, --group and --all name, or the default selection, in store order.
/// Fails on an id or a group that does not exist.
Result<std::vector<Profile>> chooseProfiles(const std::vector<Profile>& all,
                                            const Arguments& arguments);

} // namespace vantroque

#pragma once

#include "Views/Studio.h"

/// The panel of platforms in its states.
namespace vantroque::ProfilesScreenshots {

void shoot(Studio& studio, const QString& look);

} // namespace vantroque::ProfilesScreenshots

#pragma once

#include "Views/Studio.h"

namespace vantroque::QueueScreenshots {

/// The list while a queue runs, filtered, with several selected, and what bars say.
void shoot(Studio& studio, const QString& look);

} // namespace vantroque::QueueScreenshots

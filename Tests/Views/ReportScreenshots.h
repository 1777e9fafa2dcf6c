#pragma once

#include "Views/Studio.h"

/// Pictures of the report of a spot that many platforms refuse, with all shipped platforms chosen.
namespace vantroque::ReportScreenshots {

/// The names of the pictures begin with `look`.
void shoot(Studio& studio, const QString& look);

} // namespace vantroque::ReportScreenshots

#pragma once

#include "Views/Studio.h"

/// Pictures of versions that are compared.
namespace vantroque::CompareScreenshots {

/// The names of the pictures begin with `look`.
void shoot(Studio& studio, const QString& look);

} // namespace vantroque::CompareScreenshots

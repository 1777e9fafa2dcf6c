#pragma once

#include "Base/Record.h"
#include "Base/UserDefaults.h"

namespace vantroque {

/// How the window looks.
enum class AppearanceMode { dark, light, system };
VANTROQUE_ENUM_NAMES(AppearanceMode, dark, light, system)

/// The operator's choice, under "appearance" of the user defaults.
namespace Appearance {

/// Dark unless something else was chosen.
AppearanceMode load(const UserDefaults& defaults);
void save(AppearanceMode mode, UserDefaults& defaults);

} // namespace Appearance
} // namespace vantroque

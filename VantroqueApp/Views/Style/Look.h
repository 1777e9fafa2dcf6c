#pragma once

#include "VantroqueApp/Model/Choices/AppearanceChoice.h"

/// Dresses the whole application.
namespace vantroque::Look {

/// Once, before the first `use`: the base style, and the desktop's own look as it is then.
void begin();
/// Colours, palette and style sheet for that choice, at once.
void use(AppearanceMode mode);

} // namespace vantroque::Look

#pragma once

#include "Views/Studio.h"

/// Pictures of the player of a real film in every state.
namespace vantroque::PlayerScreenshots {

/// The names of the pictures begin with `look`.
void shoot(Studio& studio, const QString& look);
/// The desk for reviewing.
void shootReview(Studio& studio, const QString& look);

} // namespace vantroque::PlayerScreenshots

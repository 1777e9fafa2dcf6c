#pragma once

#include "Views/Studio.h"

/// The pictures of the user's guide: the program as it is, at work on a few films.
namespace vantroque::GuideScreenshots {

/// In the light look. Also guide.pdf, whose first page is one of them.
void shoot(Studio& studio);

} // namespace vantroque::GuideScreenshots

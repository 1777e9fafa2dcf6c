#pragma once

#include "Support/TextScenes.h"

namespace vantroque::TextQuality {

/// Makes whole clips whose text comes and goes, reads them as the program does, and prints how well
/// the text was found and timed.
void runClips(TextScenes::Set set, int perKind);

} // namespace vantroque::TextQuality

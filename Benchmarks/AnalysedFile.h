#pragma once

#include "Review/WorkspaceStore.h"

#include <optional>

namespace vantroque {

/// The first file of what `check --media --format json` printed, as the workspace keeps it; nothing
/// when it was not measured.
std::optional<WorkspaceFile> analysedFile(const char* reportFile);

} // namespace vantroque

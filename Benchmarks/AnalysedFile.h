#pragma once

#include "Review/WorkspaceStore.h"

#include <optional>

namespace vantroque {

/// The first file of what `check --media --format json` printed, as the workspace keeps it; nothing
/// when it was not measured.
std::optional<WorkspaceFile> analysedFile(const char* reportFile);

/// Stores a list of so many files that are there, in `folder`, each with measurements of its own
/// like those of `analysed`.
bool storeMany(const WorkspaceFile& analysed, int count, const std::filesystem::path& folder);

} // namespace vantroque

#pragma once

#include "Base/FileUrl.h"

#include <vector>

class QMimeData;

/// What a file manager drops on the window.
namespace vantroque::DroppedFiles {

/// Whether there is a file in it.
bool holdsFiles(const QMimeData& dropped);
/// The files, in the order of the drop; for a folder those right in it, by name. Names keep their
/// bytes.
std::vector<FileUrl> urls(const QMimeData& dropped);
/// The same for paths, as on a command line; what does not exist is left out.
std::vector<FileUrl> urls(const std::vector<std::filesystem::path>& paths);

} // namespace vantroque::DroppedFiles

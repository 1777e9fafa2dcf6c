#pragma once

#include "Base/FileUrl.h"

#include <vector>

class QMimeData;

/// What a file manager drops on the window.
namespace vantroque::DroppedFiles {

/// Whether there is a file in it.
bool holdsFiles(const QMimeData& dropped);
/// The places in it on this machine, in the order of the drop.
std::vector<std::filesystem::path> paths(const QMimeData& dropped);
/// The files at these places, in that order: for a folder those right in it, by name. What does not
/// exist is left out. Names keep their bytes. Blocks while folders are read; any thread.
std::vector<FileUrl> urls(const std::vector<std::filesystem::path>& paths);

} // namespace vantroque::DroppedFiles

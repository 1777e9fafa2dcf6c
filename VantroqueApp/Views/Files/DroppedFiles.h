#pragma once

#include "Base/FileUrl.h"
#include "VantroqueApp/Model/Files/SkippedFile.h"

#include <vector>

class QMimeData;

/// What a file manager drops on the window.
namespace vantroque::DroppedFiles {

/// Whether there is a file in it.
bool holdsFiles(const QMimeData& dropped);
/// The places in it on this machine, in the order of the drop.
std::vector<std::filesystem::path> paths(const QMimeData& dropped);

struct Found {
    std::vector<FileUrl> files;
    std::vector<SkippedFile> skipped;
};
/// The files at these places, in that order: for a folder those right in it, by name, but for
/// hidden ones. What cannot be looked at is skipped. Names keep their bytes. Blocks as long as a
/// disk does, which may be for ever; any thread.
Found look(const std::vector<std::filesystem::path>& paths);

} // namespace vantroque::DroppedFiles

#pragma once

#include "Base/Result.h"

#include <filesystem>
#include <vector>

/// What Qt's writer of PDF leaves out. Blocking; any thread.
namespace vantroque::PdfFile {

/// A line in the side bar of a reader.
struct Bookmark {
    QString title;
    std::size_t page = 0; ///< From 0.
};

/// Copies a document, with bookmarks and the title in the reader's window, its fonts named as the
/// subsets that they are and knowing their characters. Fails in words when it cannot be read or
/// written.
Result<void> finish(const std::filesystem::path& written, const std::filesystem::path& finished,
                    const std::vector<Bookmark>& bookmarks);

} // namespace vantroque::PdfFile

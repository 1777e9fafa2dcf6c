#pragma once

#include "VantroqueApp/Model/Files/FileAnalysis.h"
#include "VantroqueApp/Model/Files/FileSelection.h"

#include <vector>

namespace vantroque {

/// Entries that were taken out of the list, with what it takes to bring them back.
struct FileRemoval {
    struct Entry {
        std::size_t place = 0; ///< In the list, before.
        FileAnalysis file;
    };

    std::vector<Entry> entries; ///< In the order of the list.
    FileSelection selection;    ///< Before.

    /// Takes these out. A stopped analysis will wait again, as another entry: what still comes of
    /// the stopped one must not find it.
    static FileRemoval takeOut(std::vector<FileAnalysis>& files, const FileIds& ids,
                               FileSelection selection);
    /// Puts them where they were, but for files that are in the list again by now.
    void putBack(std::vector<FileAnalysis>& files) const;
};

} // namespace vantroque

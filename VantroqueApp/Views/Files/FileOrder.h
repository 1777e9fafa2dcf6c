#pragma once

#include "VantroqueApp/Model/Files/FileStanding.h"

#include <vector>

namespace vantroque {

enum class FileFilter { all, failed, warned, notAnalyzed };
enum class FileSort { added, name, verdict, length };

/// Which files the list shows, and in which order.
struct FileOrder {
    FileFilter filter = FileFilter::all;
    FileSort sort = FileSort::added;
    bool operator==(const FileOrder&) const = default;

    struct Ranked {
        const FileAnalysis* file = nullptr;
        FileStanding standing = FileStanding::waiting;
    };

    bool shows(FileStanding standing) const;
    /// `files` in the order of the list.
    std::vector<Ranked> arranged(std::vector<Ranked> files) const;
};

/// As a person sorts names: "spot9" before "spot10", capitals as small letters.
bool comesBefore(const QString& a, const QString& b);

} // namespace vantroque

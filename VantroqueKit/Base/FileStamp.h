#pragma once

#include "Base/FileUrl.h"

#include <cstdint>
#include <optional>

struct stat;

namespace vantroque {

/// Which file a name leads to, and how old it is. Of two that are equal it is the same file with
/// the same bytes, unless somebody forges its time.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t number = 0; ///< Of the file on its device.
    std::int64_t size = 0;    ///< Bytes.
    std::int64_t time = 0;    ///< When its bytes last changed, in nanoseconds.
    bool operator==(const FileStamp&) const = default;

    /// Nothing when no regular file has that name.
    static std::optional<FileStamp> of(const FileUrl& url);
    /// Of what the system says of a file.
    static FileStamp in(const struct stat& status);
    bool isOfSameFile(const FileStamp& other) const;
    /// The same bytes as far as size and time tell, for later: a disk or share that is connected
    /// anew numbers its files afresh.
    bool looksLike(const FileStamp& other) const;
};

} // namespace vantroque

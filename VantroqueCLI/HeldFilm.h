#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"

#include <filesystem>
#include <sys/stat.h>

namespace vantroque {

/// A file that nobody has open to be written: who wants to write to it waits, for a moment at most,
/// until this value is gone. Where the system has no such promise to give, as for files of other
/// users and on most network shares, it is the open file and no more. Links are not followed.
class HeldFilm {
public:
    /// Fails with an error number: EAGAIN when somebody has it open to be written, ELOOP when it is
    /// no regular file.
    static Result<HeldFilm, int> hold(const std::filesystem::path& path);

    const struct stat& status() const { return m_status; }

private:
    FileDescriptor m_file;
    struct stat m_status {};
};

} // namespace vantroque

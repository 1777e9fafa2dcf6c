#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"

#include <filesystem>

namespace vantroque {

/// A new empty folder for intermediate files, removed with all it holds when the value ends. The
/// name carries the owner's process id, and the folder stays locked while the owner lives, so that
/// `sweep` can tell what a killed program left behind.
class ScratchFolder {
public:
    /// Makes "vantroque-{pid}-XXXXXX" in the system's temporary folder or, when that one's path
    /// holds a character that means something in an ffmpeg filter graph or image pattern
    /// (% : ' , [ ] ; \), in /tmp or /var/tmp. Fails when none of them can be written.
    static Result<ScratchFolder> make();
    static Result<ScratchFolder> makeIn(const std::filesystem::path& parent);

    /// Removes the folders of dead owners that belong to this user. Cheap; called at start.
    static void sweep();
    static void sweepIn(const std::filesystem::path& parent);

    /// Removes all folders of this process, for a way out on which no value ends.
    static void removeAll();

    ScratchFolder(ScratchFolder&&) noexcept = default;
    ScratchFolder& operator=(ScratchFolder&&) = delete;
    ~ScratchFolder();

    const std::filesystem::path& path() const { return m_path; }

private:
    ScratchFolder(std::filesystem::path path, FileDescriptor lock)
        : m_path(std::move(path)), m_lock(std::move(lock))
    {
    }

    std::filesystem::path m_path;
    FileDescriptor m_lock; ///< Open exactly while this value owns the folder.
};

} // namespace vantroque

#pragma once

#include "Tools/ProcessTable.h"

#include <filesystem>
#include <iterator>
#include <unistd.h>

namespace vantroque {

/// What this process holds of the machine at this moment.
struct HeldByProcess {
    static long countIn(const std::filesystem::path& folder)
    {
        using Iterator = std::filesystem::directory_iterator;
        return std::distance(Iterator(folder), Iterator());
    }

    long descriptors = countIn("/proc/self/fd");
    long threads = countIn("/proc/self/task");
    qsizetype sharedMemories = processFile(::getpid(), "maps").count("/memfd:vantroque-");
    bool children = hasChildren();

    bool operator==(const HeldByProcess&) const = default;
};

} // namespace vantroque

#include "VantroquePlatform/Playback/SharedMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vantroque::SharedMemory {

Result<FileDescriptor> make(const char* name, std::size_t bytes)
{
    FileDescriptor descriptor(::memfd_create(name, MFD_CLOEXEC | MFD_ALLOW_SEALING));
    constexpr int seals = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;
    if (!descriptor.isOpen() || ::ftruncate(descriptor.get(), static_cast<off_t>(bytes)) != 0
        || ::fcntl(descriptor.get(), F_ADD_SEALS, seals) != 0)
        return failure(QStringLiteral("there is no memory to share"));
    return descriptor;
}

} // namespace vantroque::SharedMemory

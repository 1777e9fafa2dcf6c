#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"

#include <cstddef>

namespace vantroque::SharedMemory {

/// Memory to be mapped by this process and another, whose size nobody can change. Full of zeros.
Result<FileDescriptor> make(const char* name, std::size_t bytes);

} // namespace vantroque::SharedMemory

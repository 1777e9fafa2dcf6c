#include "Base/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>

namespace vantroque::ThreadPriority {

void giveWay()
{
    // Enough to let the decode go first; much more, and other programs would starve the check.
    constexpr int step = 7;
    constexpr int lowest = 19;
    // On Linux the niceness belongs to the thread, and a child begins with that of the thread that
    // started it.
    const auto thread = static_cast<id_t>(::gettid());
    const int usual = ::getpriority(PRIO_PROCESS, thread);
    ::setpriority(PRIO_PROCESS, thread, std::min(usual + step, lowest));
}

} // namespace vantroque::ThreadPriority

#include "Base/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>

namespace vantroque::ThreadPriority {

void giveWay()
{
    constexpr int niceness = 10;
    // On Linux the niceness belongs to the thread, and a child begins with that of the thread that
    // started it.
    const auto thread = static_cast<id_t>(::gettid());
    const int usual = ::getpriority(PRIO_PROCESS, thread);
    ::setpriority(PRIO_PROCESS, thread, std::max(usual, niceness));
}

} // namespace vantroque::ThreadPriority

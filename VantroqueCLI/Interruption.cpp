#include "VantroqueCLI/Interruption.h"

#include "Base/ScratchFolder.h"

#include <csignal>
#include <thread>

namespace vantroque::Interruption {

namespace {

void waitFor(const sigset_t& signals)
{
    int number = 0;
    if (::sigwait(&signals, &number) != 0)
        return;
    ScratchFolder::removeAll();
    std::signal(number, SIG_DFL);
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    static_cast<void>(std::raise(number));
}

} // namespace

void watch()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        ::sigaddset(&signals, number);
    // Blocked in every thread from here on, so that only the one below takes them.
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([signals] { waitFor(signals); }).detach();
}

} // namespace vantroque::Interruption

// vantroque-supervise PARENT_PID MEMORY_BYTES [caged [program|read|write PATH]...] -- TOOL
// [ARGUMENT...]
//
// Runs a tool in a process group of its own, within limits, and sees to it that nothing of the tool
// is left when it ends: not when it leaves children behind, and not when the program that asked for
// it is killed. A parent-death signal alone would spare the tool's own children.

#include "Tools/SuperviseCall.h"
#include "Tools/SuperviseProtocol.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace vantroque;
using namespace vantroque::SuperviseProtocol;

namespace {

void report(Outcome outcome, int value)
{
    const Report message{outcome, value};
    // Fails only when nobody listens any more.
    [[maybe_unused]] const auto written = ::write(reportDescriptor, &message, sizeof message);
}

[[noreturn]] void becomeTool(const SuperviseCall& call, const rlimit& ownMemory, rlim_t memoryBytes,
                             const sigset_t& blocked)
{
    // Before the limit on memory, which is the tool's and not this program's.
    if (call.cage)
        report(Outcome::caged, static_cast<int>(Cage::close(*call.cage)));
    const rlimit limits{memoryBytes, ownMemory.rlim_max};
    ::setrlimit(RLIMIT_AS, &limits);
    constexpr rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    ::signal(SIGXFSZ, SIG_IGN); // Too large a file becomes an error that the tool can tell.
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
    ::execv(call.tool[0], call.tool);
    const int problem = errno;
    ::setrlimit(RLIMIT_AS, &ownMemory); // To report it takes memory of its own.
    report(Outcome::launchFailed, problem);
    ::_exit(127);
}

bool hasEnded(pid_t tool)
{
    siginfo_t info{};
    // WNOWAIT keeps the process id, and so the group's, from being given away before the group is
    // killed.
    return ::waitid(P_PID, static_cast<id_t>(tool), &info, WEXITED | WNOHANG | WNOWAIT) == 0
           && info.si_pid == tool;
}

void waitForEnd(pid_t tool, const sigset_t& signals)
{
    while (!hasEnded(tool)) {
        switch (::sigwaitinfo(&signals, nullptr)) {
        case terminateSignal: ::kill(-tool, SIGTERM); break;
        case killSignal:
        case orphanedSignal: ::kill(-tool, SIGKILL); break;
        default: break;
        }
    }
}

/// Kills the direct children. False when the system does not list them.
bool killChildren()
{
    const int list = ::open("/proc/thread-self/children", O_RDONLY | O_CLOEXEC);
    if (list < 0)
        return false;
    std::string text;
    char chunk[4096];
    for (ssize_t count = 0; (count = ::read(list, chunk, sizeof chunk)) > 0;)
        text.append(chunk, static_cast<std::size_t>(count));
    ::close(list);
    const char* position = text.data();
    const char* end = position + text.size();
    for (pid_t child = 0;;) {
        while (position != end && *position == ' ')
            ++position;
        const auto [next, error] = std::from_chars(position, end, child);
        if (error != std::errc{})
            return true;
        ::kill(child, SIGKILL);
        position = next;
    }
}

/// Kills and reaps what the tool left behind, in groups of its own too. As a subreaper this process
/// becomes the parent of each orphan, but only when the orphan's own parent dies: hence the rounds.
void endChildren(const sigset_t& signals)
{
    constexpr timespec step{0, 10'000'000};
    for (;;) {
        pid_t reaped = 0;
        while ((reaped = ::waitpid(-1, nullptr, WNOHANG)) > 0) {
        }
        if (reaped < 0 || !killChildren())
            return;
        ::sigtimedwait(&signals, nullptr, &step); // The death of a child ends the wait.
    }
}

struct End {
    int status = 0;
    rlim_t residentBytes = 0; ///< The most that the tool had in memory at once.
};

End reap(pid_t tool)
{
    End end;
    rusage usage{};
    while (::wait4(tool, &end.status, 0, &usage) < 0 && errno == EINTR) {
    }
    end.residentBytes = static_cast<rlim_t>(usage.ru_maxrss) * 1024;
    return end;
}

/// A tool may crash when it gets no more memory. How much address space it had taken is not known
/// afterwards, only what of it was in memory: half of the limit is far more than any film needs.
Outcome outcomeOf(const End& end, rlim_t memoryBytes)
{
    if (WIFEXITED(end.status))
        return Outcome::exited;
    const int signal = WTERMSIG(end.status);
    const bool isCrash = signal == SIGABRT || signal == SIGSEGV;
    return isCrash && end.residentBytes >= memoryBytes / 2 ? Outcome::crashedNearMemoryLimit
                                                           : Outcome::signalled;
}

} // namespace

int main(int argc, char** argv)
{
    const auto call = SuperviseCall::of(argc, argv);
    if (!call)
        return EXIT_FAILURE;
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int number : {terminateSignal, killSignal, orphanedSignal, SIGCHLD})
        ::sigaddset(&signals, number);
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    ::prctl(PR_SET_PDEATHSIG, orphanedSignal);
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    rlimit ownMemory{RLIM_INFINITY, RLIM_INFINITY};
    ::getrlimit(RLIMIT_AS, &ownMemory);
    const rlim_t memoryBytes = std::min(ownMemory.rlim_cur, call->memoryBytes);
    if (::getppid() != call->parent) // It died before it could be watched.
        return EXIT_FAILURE;
    ::fcntl(reportDescriptor, F_SETFD, FD_CLOEXEC);

    const pid_t tool = ::fork();
    if (tool == 0)
        becomeTool(*call, ownMemory, memoryBytes, signals);
    if (tool < 0) {
        report(Outcome::launchFailed, errno);
        return EXIT_FAILURE;
    }
    ::setpgid(tool, tool);
    // The readers must see the end of the output when the tool closes it.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::close(descriptor);

    waitForEnd(tool, signals);
    ::kill(-tool, SIGKILL);
    const End end = reap(tool);
    endChildren(signals);
    report(outcomeOf(end, memoryBytes),
           WIFEXITED(end.status) ? WEXITSTATUS(end.status) : WTERMSIG(end.status));
    return EXIT_SUCCESS;
}

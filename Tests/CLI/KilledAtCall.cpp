#include "CLI/KilledAtCall.h"

#include <array>
#include <csignal>
#include <set>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace vantroque {

namespace {

[[noreturn]] void become(const std::vector<std::string>& command)
{
    std::vector<char*> words;
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    ::execv(words[0], words.data());
    std::_Exit(127);
}

bool isCounted(std::uint64_t call)
{
    static const std::set<std::uint64_t> calls{__NR_linkat, __NR_renameat2, __NR_unlink,
                                               __NR_unlinkat, __NR_fsync};
    return calls.contains(call);
}

/// Whether the process stands at the beginning or end of such a call; `isInside` keeps which.
bool isAtCall(pid_t id, bool& isInside)
{
    __ptrace_syscall_info info{};
    ::ptrace(PTRACE_GET_SYSCALL_INFO, id, sizeof info, &info);
    if (info.op == PTRACE_SYSCALL_INFO_ENTRY)
        return isInside = isCounted(info.entry.nr);
    return std::exchange(isInside, false);
}

} // namespace

bool killedAtCall(const std::vector<std::string>& command, int count)
{
    const pid_t id = ::fork();
    if (id == 0)
        become(command);
    int status = 0;
    ::waitpid(id, &status, 0);
    EXPECT_TRUE(WIFSTOPPED(status));
    ::ptrace(PTRACE_SETOPTIONS, id, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    bool isInside = false;
    for (long signal = 0;;) {
        ::ptrace(PTRACE_SYSCALL, id, nullptr, signal);
        if (::waitpid(id, &status, 0) != id || !WIFSTOPPED(status))
            return false;
        const bool isCall = WSTOPSIG(status) == (SIGTRAP | 0x80);
        signal = isCall ? 0 : WSTOPSIG(status);
        if (isCall && isAtCall(id, isInside) && count-- == 0)
            break;
    }
    ::kill(id, SIGKILL);
    ::waitpid(id, &status, 0);
    return true;
}

} // namespace vantroque

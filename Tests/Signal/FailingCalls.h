#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <thread>
#include <vector>

namespace vantroque {

/// The system calls after mkdir and mkfifo; older ones do not exist on every machine.
inline const std::vector<unsigned> makingFolders{
#ifdef SYS_mkdir
    SYS_mkdir,
#endif
    SYS_mkdirat};
inline const std::vector<unsigned> makingFifos{
#ifdef SYS_mknod
    SYS_mknod,
#endif
    SYS_mknodat};

/// Does the work in a thread in which, and in whose children, these system calls fail as on a full
/// disk. Needs no privileges.
inline void whileFailing(const std::vector<unsigned>& calls, const std::function<void()>& work)
{
    std::vector<sock_filter> rules;
    const auto rule = [&](unsigned code, unsigned skipUnlessEqual, unsigned value) {
        rules.push_back({static_cast<std::uint16_t>(code), 0,
                         static_cast<std::uint8_t>(skipUnlessEqual), value});
    };
    rule(BPF_LD | BPF_W | BPF_ABS, 0, offsetof(seccomp_data, nr));
    for (const unsigned call : calls) {
        rule(BPF_JMP | BPF_JEQ | BPF_K, 1, call);
        rule(BPF_RET | BPF_K, 0, SECCOMP_RET_ERRNO | ENOSPC);
    }
    rule(BPF_RET | BPF_K, 0, SECCOMP_RET_ALLOW);
    const sock_fprog program{static_cast<unsigned short>(rules.size()), rules.data()};
    std::jthread([&] {
        if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0
            || ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
            ADD_FAILURE() << "system calls cannot be made to fail here";
        else
            work();
    }).join();
}

} // namespace vantroque

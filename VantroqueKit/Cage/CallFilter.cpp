#include "Cage/CallFilter.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <vector>

namespace vantroque::CallFilter {

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t machine = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t machine = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t machine = 0;
#endif

// Calls that the headers of the oldest system that this builds on do not name all.
constexpr std::uint32_t clone3 = 435;
constexpr std::uint32_t memfdSecret = 447;
constexpr std::uint32_t mempolicyHomeNode = 450;
constexpr std::uint32_t newestKnown = mempolicyHomeNode;

/// What no decoder calls: the network, other processes, the system's set-up, time and identity.
/// Also what Landlock has no right for: names, owners, modes and times of files; and cutting a file
/// short by its path, which it has none for before its version 3.
constexpr auto refused = std::to_array<std::uint32_t>({
    // sockets
    __NR_socket, __NR_socketpair, __NR_bind, __NR_listen, __NR_accept, __NR_accept4, __NR_connect,
        // other processes
        __NR_ptrace, __NR_process_vm_readv, __NR_process_vm_writev, __NR_process_madvise,
        __NR_pidfd_open, __NR_pidfd_getfd, __NR_pidfd_send_signal, __NR_kcmp,
        // what is mounted where, and namespaces
        __NR_mount, __NR_umount2, __NR_pivot_root, __NR_chroot, __NR_open_tree, __NR_move_mount,
        __NR_fsopen, __NR_fsconfig, __NR_fsmount, __NR_fspick, __NR_mount_setattr, __NR_unshare,
        __NR_setns, __NR_personality,
        // parts of the kernel that are often attacked
        __NR_bpf, __NR_perf_event_open, __NR_userfaultfd, __NR_io_uring_setup, __NR_io_uring_enter,
        __NR_io_uring_register, __NR_keyctl, __NR_add_key, __NR_request_key, __NR_vmsplice,
        memfdSecret,
        // the machine
        __NR_init_module, __NR_finit_module, __NR_delete_module, __NR_kexec_load, __NR_reboot,
        __NR_swapon, __NR_swapoff, __NR_acct, __NR_quotactl, __NR_syslog, __NR_settimeofday,
        __NR_clock_settime, __NR_clock_adjtime, __NR_adjtimex, __NR_sethostname, __NR_setdomainname,
#if defined(__x86_64__)
        __NR_kexec_file_load, __NR_ioperm, __NR_iopl, __NR_modify_ldt,
#endif
        // files by other ways than their path
        __NR_name_to_handle_at, __NR_open_by_handle_at, __NR_fanotify_init, __NR_inotify_init1,
        // who it is
        __NR_setuid, __NR_setgid, __NR_setreuid, __NR_setregid, __NR_setresuid, __NR_setresgid,
        __NR_setfsuid, __NR_setfsgid, __NR_setgroups, __NR_capset,
        // what Landlock does not judge
        __NR_fchmod, __NR_fchmodat, __NR_fchown, __NR_fchownat, __NR_setxattr, __NR_lsetxattr,
        __NR_fsetxattr, __NR_removexattr, __NR_lremovexattr, __NR_fremovexattr, __NR_utimensat,
        __NR_truncate,
#if defined(__x86_64__)
        __NR_chmod, __NR_chown, __NR_lchown, __NR_utime, __NR_utimes, __NR_futimesat,
#endif
        // talk between processes
        __NR_mq_open, __NR_msgget, __NR_semget, __NR_shmget,
        // where memory lies
        __NR_mbind, __NR_set_mempolicy, __NR_move_pages, __NR_migrate_pages, mempolicyHomeNode
});

class Program {
public:
    void load(std::size_t offset)
    {
        add(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
    }
    void answer(std::uint32_t action) { add(BPF_RET | BPF_K, action); }
    /// The next instruction runs only if the comparison holds.
    void when(std::uint16_t comparison, std::uint32_t value)
    {
        add(static_cast<std::uint16_t>(BPF_JMP | comparison | BPF_K), value, 0, 1);
    }
    void whenNot(std::uint16_t comparison, std::uint32_t value)
    {
        add(static_cast<std::uint16_t>(BPF_JMP | comparison | BPF_K), value, 1, 0);
    }
    /// The next `count` instructions run only if the comparison holds.
    void block(std::uint16_t comparison, std::uint32_t value, std::uint8_t count)
    {
        add(static_cast<std::uint16_t>(BPF_JMP | comparison | BPF_K), value, 0, count);
    }

    bool install() const
    {
        auto instructions = m_instructions;
        const sock_fprog program{static_cast<unsigned short>(instructions.size()),
                                 instructions.data()};
        return ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
    }

private:
    void add(std::uint16_t code, std::uint32_t value, std::uint8_t yes = 0, std::uint8_t no = 0)
    {
        m_instructions.push_back({code, yes, no, value});
    }

    std::vector<sock_filter> m_instructions;
};

constexpr std::uint32_t error(int number)
{
    return SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(number);
}

/// The lower half of an argument; both machines lay it first.
constexpr std::size_t argument(std::size_t index)
{
    return offsetof(seccomp_data, args) + index * sizeof(std::uint64_t);
}

/// Threads may be made, new namespaces not.
void filterClone(Program& program)
{
    constexpr std::uint32_t namespaces = CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC
                                         | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;
    program.block(BPF_JEQ, __NR_clone, 4);
    program.load(argument(0));
    program.when(BPF_JSET, namespaces);
    program.answer(error(EPERM));
    program.answer(SECCOMP_RET_ALLOW);
}

/// Typing into the terminal that the program was started from would run what is typed.
void filterTerminal(Program& program)
{
    constexpr std::uint32_t paste = 0x541C; // TIOCLINUX
    program.block(BPF_JEQ, __NR_ioctl, 6);
    program.load(argument(1));
    program.when(BPF_JEQ, TIOCSTI);
    program.answer(error(EPERM));
    program.when(BPF_JEQ, paste);
    program.answer(error(EPERM));
    program.answer(SECCOMP_RET_ALLOW);
}

Program filter()
{
    Program program;
    program.load(offsetof(seccomp_data, arch));
    program.whenNot(BPF_JEQ, machine); // calls of another machine's table would pass by this list
    program.answer(SECCOMP_RET_KILL_PROCESS);
    program.load(offsetof(seccomp_data, nr));
#if defined(__x86_64__)
    constexpr std::uint32_t firstOfX32 = 0x40000000;
    program.when(BPF_JGE, firstOfX32);
    program.answer(SECCOMP_RET_KILL_PROCESS);
#endif
    // The C library goes back to older calls only on this error; the flags of clone3 lie in memory,
    // where a filter cannot look.
    program.when(BPF_JGT, newestKnown);
    program.answer(error(ENOSYS));
    program.when(BPF_JEQ, clone3);
    program.answer(error(ENOSYS));
    for (const std::uint32_t call : refused) {
        program.when(BPF_JEQ, call);
        program.answer(error(EPERM));
    }
    filterClone(program);
    filterTerminal(program);
    program.answer(SECCOMP_RET_ALLOW);
    return program;
}

} // namespace

bool install()
{
    return machine != 0 && filter().install();
}

} // namespace vantroque::CallFilter

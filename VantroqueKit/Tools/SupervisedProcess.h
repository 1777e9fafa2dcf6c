#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"
#include "Cage/Cage.h"
#include "Tools/SuperviseProtocol.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vantroque {

/// A tool that runs under vantroque-supervise: in a process group of its own, standard input from
/// the null device, no inherited descriptor but the two outputs. When this value ends the tool and
/// whatever it started are dead and reaped; when this program dies, by whatever signal, they die
/// too. The thread that starts it must outlive it, since the kernel watches that thread.
class SupervisedProcess {
public:
    static constexpr std::uint64_t unlimitedMemory = std::numeric_limits<std::uint64_t>::max();

    /// Starts `executable` with its outputs on the given write ends. It may take `memoryLimit`
    /// bytes of address space, or as many as this program may if that is less; it leaves no core
    /// file, and a limit on the size of files is an error to it and not its death. In a `cage` it
    /// touches nothing beyond those rights, its own program and libraries. Fails with the error
    /// number when the supervisor cannot be started; a tool that cannot be started reports
    /// `launchFailed`.
    static Result<SupervisedProcess, int> start(const std::filesystem::path& executable,
                                                const std::vector<std::string>& arguments,
                                                const FileDescriptor& standardOutput,
                                                const FileDescriptor& standardError,
                                                std::uint64_t memoryLimit = unlimitedMemory,
                                                const std::optional<Cage::Rights>& cage = {});

    SupervisedProcess(SupervisedProcess&& other) noexcept
        : m_supervisor(std::exchange(other.m_supervisor, -1)),
          m_report(std::move(other.m_report)),
          m_held(other.m_held)
    {
    }
    SupervisedProcess& operator=(SupervisedProcess&&) = delete;
    ~SupervisedProcess();

    /// How the tool ended, or nothing when it still runs at the deadline.
    std::optional<SuperviseProtocol::Report>
    waitUntil(std::chrono::steady_clock::time_point deadline);
    /// What of the cage holds, bits of `Cage::Held`. Known when the tool has ended.
    std::uint32_t held() const { return m_held; }
    /// Asks the tool's group to terminate.
    void terminate() const;
    /// Kills the tool's group.
    void kill() const;

private:
    SupervisedProcess(pid_t supervisor, FileDescriptor report)
        : m_supervisor(supervisor), m_report(std::move(report))
    {
    }

    pid_t m_supervisor = -1; ///< -1 when moved from or reaped.
    FileDescriptor m_report;
    std::uint32_t m_held = 0;
};

/// A pipe closed on exec, its ends above the descriptors that the supervisor uses.
struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;

    /// Fails with the error number.
    static Result<Pipe, int> make();
    /// Makes room for a tool that prints much, if the system grants it.
    void widen() const;
};

} // namespace vantroque

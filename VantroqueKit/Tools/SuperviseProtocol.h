#pragma once

#include <csignal>
#include <cstdint>

/// What `SupervisedProcess` and the program vantroque-supervise say to each other.
namespace vantroque::SuperviseProtocol {

/// The descriptor of the supervisor on which it reports, once, how the tool ended.
constexpr int reportDescriptor = 3;

/// Signals to the supervisor: ask the tool to end, end it now, and the kernel's word that the
/// program behind it all has died.
constexpr int terminateSignal = SIGTERM;
constexpr int killSignal = SIGUSR1;
constexpr int orphanedSignal = SIGHUP;

enum class Outcome : std::int32_t {
    launchFailed, ///< `value` is an error number
    exited,       ///< `value` is the exit status
    signalled,    ///< `value` is the signal
    /// `value` is the signal, and the tool had taken most of the memory that it may.
    crashedNearMemoryLimit
};

struct Report {
    Outcome outcome = Outcome::signalled;
    std::int32_t value = SIGKILL;
};

} // namespace vantroque::SuperviseProtocol

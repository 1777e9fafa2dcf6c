#pragma once

#include <csignal>
#include <cstdint>

/// What `SupervisedProcess` and the program vantroque-supervise say to each other.
namespace vantroque::SuperviseProtocol {

/// The descriptor of the supervisor on which it reports how the tool ended.
constexpr int reportDescriptor = 3;

/// Signals to the supervisor: ask the tool to end, end it now, and the kernel's word that the
/// program behind it all has died.
constexpr int terminateSignal = SIGTERM;
constexpr int killSignal = SIGUSR1;
constexpr int orphanedSignal = SIGHUP;

/// The words of the call between the limit of memory and the tool, each before its path, and the
/// one that ends them. Without `caged` the tool may do all that this program may.
constexpr const char* cagedWord = "caged";
constexpr const char* programWord = "program";
constexpr const char* readWord = "read";
constexpr const char* writeWord = "write";
constexpr const char* toolWord = "--";

enum class Outcome : std::int32_t {
    caged,        ///< The first report of a caged tool, before it starts; `value` is `Cage::Held`.
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

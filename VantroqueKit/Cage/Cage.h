#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Takes from a process that reads strangers' files what it does not need for that. Linux only:
/// Landlock (files, TCP, signals) under a seccomp filter (system calls).
namespace vantroque::Cage {

/// What stays open. A path that is not there opens nothing.
struct Rights {
    std::vector<std::string> programs; ///< May be run and read: files, or folders with all in them.
    std::vector<std::string> reads;    ///< Files.
    std::vector<std::string> writes;   ///< Folders in which files may be made, changed and removed.
};

/// What the kernel granted, bits of a number.
enum Held : std::uint32_t {
    files = 1,   ///< Only the paths of `Rights` can be opened.
    network = 2, ///< No TCP (Landlock ABI 4); other sockets are among `calls`.
    signals = 4, ///< None to processes outside (Landlock ABI 6).
    calls = 8    ///< The calls that a decoder never makes are refused, sockets among them.
};

/// The newest version of Landlock's interface whose rights are known here.
constexpr int newestAbi = 7;

/// Closes it around this process and all that it starts, for good. The process must have one thread
/// and no need of capabilities. Nothing of it is a condition: what the kernel does not know or
/// refuses is left out. Gives the bits of `Held` that hold now.
///
/// The variable VANTROQUE_CAGE changes it, to look for the cause of a refusal: "off" leaves it
/// open, a number is the newest version of Landlock that is used.
std::uint32_t close(const Rights& rights);

/// In words for the operator, such as "files, network, signals, calls", or "nothing".
std::string words(std::uint32_t held);

} // namespace vantroque::Cage

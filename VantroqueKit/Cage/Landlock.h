#pragma once

#include "Cage/Cage.h"

/// The kernel's Landlock: rules on files, TCP and signals that a process gives itself.
namespace vantroque::Landlock {

/// Gives the bits of `Cage::Held` that hold now; uses no version of the interface above `mostAbi`.
/// Needs "no new privileges".
std::uint32_t confine(const Cage::Rights& rights, int mostAbi);

} // namespace vantroque::Landlock

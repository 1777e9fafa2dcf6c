#pragma once

/// A seccomp filter that refuses the system calls which a decoder never makes.
namespace vantroque::CallFilter {

/// False when the kernel refuses. Needs "no new privileges".
bool install();

} // namespace vantroque::CallFilter

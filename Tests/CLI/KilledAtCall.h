#pragma once

#include <string>
#include <vector>

namespace vantroque {

/// Runs a program and kills it with SIGKILL at one of the system calls by which its main thread
/// makes names of files and has disks keep them. They are counted from 0, each once as it begins
/// and once when it is done. False when it came to its end before that.
bool killedAtCall(const std::vector<std::string>& command, int count);

} // namespace vantroque

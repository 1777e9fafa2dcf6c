#pragma once

#include "Base/Result.h"

#include <string>
#include <vector>

/// Lists of file names, as other programs make them.
namespace vantroque::NameList {

/// The names in a file, or in what comes over standard input for "-". They end with a NUL when
/// there is one in it, and may then hold line ends; else each line is one. Empty ones are left out.
/// Fails when the list cannot be read or names nothing.
Result<std::vector<std::string>> read(const std::string& list);

} // namespace vantroque::NameList

#pragma once

#include <filesystem>
#include <optional>

/// Where the running program lies and what lies beside it. Callable from any thread.
namespace vantroque::ResourceFolder {

/// The folder that holds the program's file, symbolic links resolved.
std::filesystem::path executableFolder();

/// The program's read-only data: "share/vantroque" beside the executable's folder, in the build
/// tree as when installed under a prefix. Nothing when there is no such folder.
std::optional<std::filesystem::path> path();

} // namespace vantroque::ResourceFolder

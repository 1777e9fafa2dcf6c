#pragma once

#include <filesystem>

/// The place of what this user makes with the program.
namespace vantroque::SupportFolder {

/// The "Vantroque" folder under the XDG data home, or under the temporary folder when the user has
/// no home. It need not exist. Reads the environment at each call.
std::filesystem::path path();

} // namespace vantroque::SupportFolder

#pragma once

#include <QByteArray>

#include <optional>
#include <string>

/// Scripts that complete the words of a call in a shell: commands, their options, the profiles that
/// are installed when the key is pressed, and files.
namespace vantroque::Completion {

/// For "bash", "zsh" or "fish"; nothing for any other.
std::optional<QByteArray> script(const std::string& shell);

} // namespace vantroque::Completion

#pragma once

#include "Base/FileUrl.h"
#include "Base/Result.h"

#include <QByteArray>

#include <filesystem>

/// Whole files in and out. Blocking, callable from any thread.
namespace vantroque::Files {

/// The bytes of a regular file of at most `maxBytes`. An error names the path and the reason.
Result<QByteArray> read(const std::filesystem::path& path, qint64 maxBytes);

/// Writes to a file under no name, or under one that nobody has, flushes it to disk and swaps it
/// in: a crash or a full disk leaves the old file whole, and on failure nothing else is left.
Result<void> writeAtomically(const std::filesystem::path& path, const QByteArray& bytes);

/// The same where nothing has that name yet: never replaces anything. False when something has it.
Result<bool> writeNew(const std::filesystem::path& path, const QByteArray& bytes);

/// Gives a file another name on the same file system, and never replaces anything. False when
/// something has that name. Where only links refuse that, as on NFS, it is linked there first: a
/// kill in between leaves it with both names.
Result<bool> moveToNew(const std::filesystem::path& from, const std::filesystem::path& to);

/// Makes the folder, and those that it lies in, where they are missing. An error names the path.
Result<void> makeFolder(const std::filesystem::path& path);

/// The words of the system for an error number.
QString systemMessage(int errorNumber);

} // namespace vantroque::Files

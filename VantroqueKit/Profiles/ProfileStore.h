#pragma once

#include "Base/Result.h"
#include "Records/Profile.h"

#include <filesystem>
#include <optional>
#include <vector>

/// Finds and reads the platforms' specifications: one JSON file each, in the resource folder.
/// Blocking, callable from any thread.
namespace vantroque::ProfileStore {

/// What the operator reads when the folder of profiles holds none.
QString noneFoundText();

struct Directory {
    std::optional<std::filesystem::path> url;    ///< The first candidate that is a folder.
    std::vector<std::filesystem::path> searched; ///< All candidates, found or not.
};

/// Where the profiles of this program are.
Directory profilesDirectory();
/// The same search from other roots, in that order.
Directory profilesDirectory(const std::vector<std::filesystem::path>& roots);

/// All profiles of this program, by group and then by name. Fails when their folder is missing or
/// as `loadFrom` does.
Result<std::vector<Profile>> loadAll();
Result<std::vector<Profile>> loadAll(const std::vector<std::filesystem::path>& roots);
/// All profiles in a folder's files with the extension "json", by group and then by name. One file
/// that cannot be read, or whose pattern for file names is none, fails the whole, since the data
/// ships with the program; the error names the file and the place in it. Fails when the folder
/// cannot be listed.
Result<std::vector<Profile>> loadFrom(const std::filesystem::path& directory);

/// The profile in a file's text. Fails, with the place, as `loadFrom` does.
Result<Profile> parse(const QByteArray& text);
/// The profile in a file. An error names the file, the place in it and what to do next.
Result<Profile> readFile(const std::filesystem::path& file);
/// What is typed to hear all that is wrong with a file.
QString checkCommand(const std::filesystem::path& file);
/// The files of a folder with the extension "json" in the order of their names, so that the first
/// damaged one is the same on every machine. Fails when the folder cannot be listed.
Result<std::vector<std::filesystem::path>> filesIn(const std::filesystem::path& directory);
/// By group and then by name; each is told of the leaders of all.
std::vector<Profile> arranged(std::vector<Profile> profiles);
/// The profile with that id out of a new `loadAll`.
Result<std::optional<Profile>> profile(const QString& id);

} // namespace vantroque::ProfileStore

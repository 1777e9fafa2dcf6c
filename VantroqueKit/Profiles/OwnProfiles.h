#pragma once

#include "Base/Result.h"
#include "Records/Profile.h"

#include <filesystem>
#include <vector>

/// The profiles that this user wrote, which are read beside the shipped ones: the JSON files of a
/// folder among what else the user makes with the program. Blocking, callable from any thread.
namespace vantroque::OwnProfiles {

struct Own {
    Profile profile;
    std::filesystem::path file;
    bool standsIn = false; ///< Takes the place of a shipped one, whose id it has.

    bool operator==(const Own&) const = default;
};

struct Found {
    std::vector<Own> profiles; ///< In the order of the files' names.
    /// What could not be read: the file, what is wrong with it and what to do next.
    std::vector<QString> problems;

    bool operator==(const Found&) const = default;
};

/// "Profiles" in the support folder. It need not exist.
std::filesystem::path folder();

/// What lies there. A file that cannot be read, or whose profile has the id of an earlier one, is
/// a problem and takes no other along. A missing folder is an empty one; hidden files are left to
/// the editors that make them.
Found readBeside(const std::vector<Profile>& shipped);

/// The one of that id; null when it is a shipped one or none.
const Own* find(const Found& own, const QString& id);

/// The shipped ones that none of these stands in for, and these, as `ProfileStore` arranges them.
std::vector<Profile> joined(std::vector<Profile> shipped, const Found& own);

} // namespace vantroque::OwnProfiles

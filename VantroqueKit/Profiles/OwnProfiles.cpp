#include "Profiles/OwnProfiles.h"

#include "Base/FileUrl.h"
#include "Base/SupportFolder.h"
#include "Profiles/ProfileStore.h"

#include <algorithm>
#include <system_error>

namespace vantroque::OwnProfiles {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

bool isHidden(const fs::path& file)
{
    return file.filename().native().starts_with('.');
}

QString sameId(const fs::path& file, const Own& other)
{
    return u"%1: .id: \"%2\" is the id of %3, too\nGive one of them another id."_s.arg(
        FileUrl::fromPath(file).displayPath(), other.profile.id,
        FileUrl::fromPath(other.file).fileName());
}

} // namespace

fs::path folder()
{
    return SupportFolder::path() / "Profiles";
}

Found readBeside(const std::vector<Profile>& shipped)
{
    Found found;
    std::error_code unknown;
    if (!fs::exists(folder(), unknown) && !unknown)
        return found;
    const auto files = ProfileStore::filesIn(folder());
    if (!files) {
        found.problems.push_back(
            files.error().description
            + u"\nProfiles of your own are read from there: make it a folder that you may read."_s);
        return found;
    }
    for (const fs::path& file : *files) {
        if (isHidden(file))
            continue;
        auto profile = ProfileStore::readFile(file);
        if (!profile)
            found.problems.push_back(profile.error().description);
        else if (const Own* other = find(found, profile->id))
            found.problems.push_back(sameId(file, *other));
        else
            found.profiles.push_back(
                {.profile = *profile,
                 .file = file,
                 .standsIn = std::ranges::count(shipped, profile->id, &Profile::id) > 0});
    }
    return found;
}

const Own* find(const Found& own, const QString& id)
{
    const auto found =
        std::ranges::find_if(own.profiles, [&](const Own& each) { return each.profile.id == id; });
    return found == own.profiles.end() ? nullptr : &*found;
}

std::vector<Profile> joined(std::vector<Profile> shipped, const Found& own)
{
    std::erase_if(shipped,
                  [&](const Profile& profile) { return find(own, profile.id) != nullptr; });
    for (const Own& each : own.profiles)
        shipped.push_back(each.profile);
    return ProfileStore::arranged(std::move(shipped));
}

} // namespace vantroque::OwnProfiles

#include "VantroqueCLI/ProfileChoice.h"

#include "Profiles/ProfileSelection.h"
#include "Profiles/ProfileStore.h"
#include "VantroqueCLI/Output.h"

#include <algorithm>
#include <set>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

Result<void> addGroup(const QString& group, const std::vector<Profile>& all, std::set<QString>& ids)
{
    const auto names = enumNames(ProfileGroup{});
    if (std::ranges::find(names, group.toStdString()) == names.end())
        return failure(
            u"unknown group \"%1\": one of digital, broadcast, recommendation"_s.arg(group));
    for (const Profile& profile : all)
        if (enumName(profile.group) == group.toStdString())
            ids.insert(profile.id);
    return {};
}

} // namespace

Result<LoadedProfiles> loadProfiles(const Arguments& arguments)
{
    LoadedProfiles loaded;
    if (arguments.has("profiles-dir")) {
        loaded.all = TRY(ProfileStore::loadFrom(arguments.value("profiles-dir", {})));
    } else {
        auto shipped = TRY(ProfileStore::loadAll());
        loaded.own = OwnProfiles::readBeside(shipped);
        loaded.all = OwnProfiles::joined(std::move(shipped), loaded.own);
    }
    for (const QString& problem : loaded.own.problems)
        Output::complain(problem);
    if (loaded.all.empty())
        return failure(ProfileStore::noneFoundText());
    return loaded;
}

Result<std::vector<Profile>> chooseProfiles(const std::vector<Profile>& all,
                                            const Arguments& arguments)
{
    if (arguments.has("all"))
        return all;
    std::set<QString> ids;
    for (const std::string& id : arguments.values("profile")) {
        const QString wanted = QString::fromStdString(id);
        if (std::ranges::find(all, wanted, &Profile::id) == all.end())
            return failure(
                u"unknown profile \"%1\": vantroque-cli profiles lists them"_s.arg(wanted));
        ids.insert(wanted);
    }
    for (const std::string& group : arguments.values("group"))
        TRY(addGroup(QString::fromStdString(group), all, ids));
    if (!arguments.has("profile") && !arguments.has("group"))
        ids = ProfileSelectionStore::defaultSelection(all);
    std::vector<Profile> chosen;
    std::ranges::copy_if(all, std::back_inserter(chosen),
                         [&](const Profile& profile) { return ids.contains(profile.id); });
    return chosen;
}

} // namespace vantroque

#include "VantroqueApp/Model/Choices/ProfileChoice.h"

#include "Profiles/ProfileSelection.h"
#include "Profiles/ProfileStore.h"

namespace vantroque {

ProfileChoice::ProfileChoice(UserDefaults& defaults, Result<std::vector<Profile>> profiles)
    : m_defaults(defaults)
{
    if (!profiles)
        m_profilesError = profiles.error().description;
    else if (profiles->empty())
        m_profilesError = ProfileStore::noneFoundText();
    else
        m_profiles = *std::move(profiles);
    take(ProfileSelectionStore(m_defaults).load(m_profiles));
}

void ProfileChoice::take(const std::set<QString>& ids)
{
    m_enabledProfileIDs = ids;
    auto enabled = std::make_shared<std::vector<Profile>>();
    for (const Profile& profile : m_profiles)
        if (ids.contains(profile.id))
            enabled->push_back(profile);
    m_enabledProfiles = std::move(enabled);
    ++m_number;
}

void ProfileChoice::setEnabledProfileIDs(const std::set<QString>& ids)
{
    if (ids == m_enabledProfileIDs)
        return;
    take(ids);
    ProfileSelectionStore(m_defaults).save(ids, m_profiles);
    Q_EMIT changed();
}

void ProfileChoice::toggle(const QString& profileID)
{
    std::set<QString> ids = m_enabledProfileIDs;
    if (ids.erase(profileID) == 0)
        ids.insert(profileID);
    setEnabledProfileIDs(ids);
}

} // namespace vantroque

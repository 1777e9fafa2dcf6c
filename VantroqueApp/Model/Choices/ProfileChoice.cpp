#include "VantroqueApp/Model/Choices/ProfileChoice.h"

#include "Profiles/ProfileSelection.h"
#include "Profiles/ProfileStore.h"

namespace vantroque {

ProfileChoice::ProfileChoice(UserDefaults& defaults, Result<std::vector<Profile>> shipped)
    : m_defaults(defaults)
{
    if (!shipped)
        m_profilesError = shipped.error().description;
    else if (shipped->empty())
        m_profilesError = ProfileStore::noneFoundText();
    else
        m_shipped = *std::move(shipped);
    m_profiles = m_shipped;
    if (!m_profilesError)
        m_own = OwnProfiles::readBeside(m_shipped);
    if (!m_own.profiles.empty())
        m_profiles = OwnProfiles::joined(m_shipped, m_own);
    take(ProfileSelectionStore(m_defaults).load(m_profiles));
}

void ProfileChoice::renew(OwnProfiles::Found own)
{
    if (m_profilesError || own == m_own)
        return;
    const bool areOthers = own.profiles != m_own.profiles;
    m_own = std::move(own);
    if (areOthers) {
        m_profiles = OwnProfiles::joined(m_shipped, m_own);
        take(ProfileSelectionStore(m_defaults).load(m_profiles));
    }
    Q_EMIT renewed();
    if (areOthers)
        Q_EMIT changed();
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

#include "Profiles/ProfileSelection.h"

#include <QStringList>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr auto enabledKey = "profiles.enabled"_L1;
constexpr auto knownKey = "profiles.known"_L1;

std::set<QString> idsOf(const std::vector<Profile>& profiles)
{
    std::set<QString> ids;
    for (const Profile& profile : profiles)
        ids.insert(profile.id);
    return ids;
}

QStringList toList(const std::set<QString>& ids)
{
    return QStringList(ids.begin(), ids.end());
}

} // namespace

std::set<QString> ProfileSelectionStore::defaultSelection(const std::vector<Profile>& profiles)
{
    std::set<QString> ids;
    for (const Profile& profile : profiles)
        if (profile.group == ProfileGroup::digital)
            ids.insert(profile.id);
    return ids;
}

std::set<QString> ProfileSelectionStore::load(const std::vector<Profile>& available) const
{
    std::set<QString> selection = defaultSelection(available);
    const auto enabled = m_defaults.textList(enabledKey);
    if (!enabled)
        return selection;
    const QStringList known = m_defaults.textList(knownKey).value_or(toList(idsOf(available)));
    for (const QString& id : idsOf(available)) {
        if (enabled->contains(id))
            selection.insert(id);
        else if (known.contains(id))
            selection.erase(id);
    }
    return selection;
}

void ProfileSelectionStore::save(const std::set<QString>& ids, const std::vector<Profile>& known)
{
    m_defaults.setTextList(enabledKey, toList(ids));
    m_defaults.setTextList(knownKey, toList(idsOf(known)));
}

} // namespace vantroque

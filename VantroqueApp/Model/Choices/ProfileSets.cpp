#include "VantroqueApp/Model/Choices/ProfileSets.h"

#include "Base/RecordCoding.h"

#include <QJsonDocument>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString key()
{
    return u"profiles.sets"_s;
}

QString plain(const QString& name)
{
    return name.simplified().left(ProfileSets::longestName);
}

bool isSame(const QString& name, const QString& other)
{
    return name.compare(other, Qt::CaseInsensitive) == 0;
}

/// Each element by itself: one that is damaged takes no other along.
std::vector<ProfileSet> stored(const UserDefaults& defaults)
{
    std::vector<ProfileSet> sets;
    const QByteArray text = defaults.text(key()).value_or(QString()).toUtf8();
    for (const QJsonValue& element : QJsonDocument::fromJson(text).array()) {
        auto set = RecordCoding::decode<ProfileSet>(element);
        if (!set || sets.size() == ProfileSets::most)
            continue;
        set->name = plain(set->name);
        const bool isTaken = std::ranges::any_of(
            sets, [&](const ProfileSet& other) { return isSame(other.name, set->name); });
        if (!set->name.isEmpty() && !isTaken)
            sets.push_back(*std::move(set));
    }
    return sets;
}

} // namespace

ProfileSets::ProfileSets(UserDefaults& defaults, ProfileChoice& choice)
    : m_defaults(defaults), m_choice(choice), m_sets(stored(defaults))
{
    connect(&choice, &ProfileChoice::changed, this, &ProfileSets::changed);
}

std::set<QString> ProfileSets::known(std::size_t index) const
{
    const std::vector<QString>& listed = m_sets.at(index).profileIDs;
    const std::set<QString> ids(listed.begin(), listed.end());
    std::set<QString> known;
    for (const Profile& profile : m_choice.profiles())
        if (ids.contains(profile.id))
            known.insert(profile.id);
    return known;
}

std::optional<std::size_t> ProfileSets::current() const
{
    for (std::size_t i = 0; i < m_sets.size(); ++i)
        if (const auto ids = known(i); !ids.empty() && ids == m_choice.enabledProfileIDs())
            return i;
    return std::nullopt;
}

bool ProfileSets::canSave() const
{
    return !m_choice.enabledProfileIDs().empty() && !current() && m_sets.size() < most;
}

std::optional<std::size_t> ProfileSets::indexOf(const QString& name) const
{
    const auto found =
        std::ranges::find_if(m_sets, [&](const ProfileSet& set) { return isSame(set.name, name); });
    return found == m_sets.end() ? std::nullopt
                                 : std::optional(static_cast<std::size_t>(found - m_sets.begin()));
}

/// The ids of the choice, and those that the set had and this version does not know.
std::vector<QString> ProfileSets::chosen(const ProfileSet* before) const
{
    const auto& enabled = m_choice.enabledProfileIDs();
    std::vector<QString> ids(enabled.begin(), enabled.end());
    if (before != nullptr)
        for (const QString& id : before->profileIDs)
            if (std::ranges::count(m_choice.profiles(), id, &Profile::id) == 0)
                ids.push_back(id);
    return ids;
}

void ProfileSets::save(const QString& name)
{
    const QString given = plain(name);
    if (given.isEmpty() || !canSave())
        return;
    if (const auto index = indexOf(given))
        return update(*index);
    m_sets.push_back({.name = given, .profileIDs = chosen(nullptr)});
    store();
}

void ProfileSets::choose(std::size_t index)
{
    m_choice.setEnabledProfileIDs(known(index));
}

void ProfileSets::rename(std::size_t index, const QString& name)
{
    const QString given = plain(name);
    const auto same = indexOf(given);
    if (given.isEmpty() || (same && *same != index) || given == m_sets.at(index).name)
        return;
    m_sets[index].name = given;
    store();
}

void ProfileSets::update(std::size_t index)
{
    m_sets.at(index).profileIDs = chosen(&m_sets[index]);
    store();
}

void ProfileSets::remove(std::size_t index)
{
    m_sets.erase(m_sets.begin() + static_cast<std::ptrdiff_t>(index));
    store();
}

void ProfileSets::store()
{
    // Texts and lists of them always have a JSON form.
    if (const auto json = RecordCoding::encode(m_sets))
        m_defaults.setText(
            key(),
            QString::fromUtf8(QJsonDocument(json->toArray()).toJson(QJsonDocument::Compact)));
    Q_EMIT changed();
}

} // namespace vantroque

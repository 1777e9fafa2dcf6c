#include "VantroqueApp/Views/Profiles/ProfileRows.h"

#include "Base/FileUrl.h"

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString ageInWords(SpecFreshness freshness, std::int64_t days)
{
    switch (freshness) {
    case SpecFreshness::fresh: return {};
    case SpecFreshness::stale: return u"stale %1d"_s.arg(days);
    case SpecFreshness::expired: return u"expired %1d"_s.arg(days);
    case SpecFreshness::unreadable: break;
    }
    return u"unreadable"_s;
}

/// For those who do not see the signs.
QString inWords(const ProfileRows::Spec& spec)
{
    QString text = spec.profile->name;
    if (!spec.tag.isEmpty())
        text += u", "_s + spec.tag;
    return text + u", "_s + (spec.words.isEmpty() ? u"fresh"_s : spec.words);
}

QString tagOf(const Profile& profile, const OwnProfiles::Own* own)
{
    QStringList tags;
    if (own != nullptr)
        tags << (own->standsIn ? u"yours, stands in"_s : u"yours"_s);
    if (profile.inferred == true)
        tags << u"spec inferred"_s;
    return tags.join(u", "_s);
}

QString source(const Profile& profile, const OwnProfiles::Own* own)
{
    QString text = profile.sourceURL + u"\nVerified "_s + profile.verifiedDate;
    if (own != nullptr)
        text += u"\nYours: "_s + FileUrl::fromPath(own->file).displayPath();
    if (own != nullptr && own->standsIn)
        text += u"\nIt stands in for the one that came with the program."_s;
    return text;
}

} // namespace

ProfileRows::ProfileRows(ProfileChoice& choice, QObject* parent)
    : QAbstractListModel(parent), m_choice(choice)
{
    connect(&choice, &ProfileChoice::changed, this, [this] {
        if (!m_rows.empty())
            Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
    });
    connect(&choice, &ProfileChoice::renewed, this, [this] { judge(m_now); });
}

QString ProfileRows::title(ProfileGroup group)
{
    switch (group) {
    case ProfileGroup::digital: return u"Digital / CTV"_s;
    case ProfileGroup::broadcast: return u"Broadcast"_s;
    case ProfileGroup::recommendation: break;
    }
    return u"Recommendations"_s;
}

int ProfileRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ProfileRows::data(const QModelIndex& index, int role) const
{
    const Spec* of = spec(index);
    if (of == nullptr) {
        const Count counted = count(group(index));
        if (role == Qt::AccessibleTextRole)
            return u"%1, %2 of %3"_s.arg(title(group(index))).arg(counted.chosen).arg(counted.all);
        return role == Qt::DisplayRole ? title(group(index)) : QVariant();
    }
    switch (role) {
    case Qt::DisplayRole: return of->profile->name;
    case Qt::AccessibleTextRole: return inWords(*of);
    case Qt::ToolTipRole:
        return source(*of->profile, OwnProfiles::find(m_choice.own(), of->profile->id));
    case Qt::CheckStateRole: return isChosen(*of->profile) ? Qt::Checked : Qt::Unchecked;
    default: return {};
    }
}

bool ProfileRows::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const Spec* of = spec(index);
    if (of == nullptr || role != Qt::CheckStateRole)
        return false;
    if (isChosen(*of->profile) != (value.toInt() == Qt::Checked))
        m_choice.toggle(of->profile->id);
    return true;
}

Qt::ItemFlags ProfileRows::flags(const QModelIndex& index) const
{
    return spec(index) != nullptr ? Qt::ItemIsEnabled | Qt::ItemIsSelectable
                                        | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren
                                  : Qt::ItemNeverHasChildren;
}

void ProfileRows::judge(const QDateTime& now)
{
    m_now = now;
    beginResetModel();
    m_specs = specs();
    fill();
    endResetModel();
}

std::vector<ProfileRows::Spec> ProfileRows::specs() const
{
    std::vector<Spec> specs;
    for (const Profile& profile : m_choice.profiles()) {
        const SpecFreshness is = freshness(profile, m_now);
        specs.push_back({&profile, is,
                         ageInWords(is, daysSinceVerified(profile, m_now).value_or(0)),
                         tagOf(profile, OwnProfiles::find(m_choice.own(), profile.id))});
    }
    return specs;
}

void ProfileRows::setSearch(const QString& text)
{
    m_search = text.simplified();
    refill();
}

void ProfileRows::setFolded(ProfileGroup group, bool folded)
{
    if (folded)
        m_folded.insert(group);
    else
        m_folded.erase(group);
    refill();
}

void ProfileRows::refill()
{
    beginResetModel();
    fill();
    endResetModel();
}

void ProfileRows::fill()
{
    m_rows.clear();
    for (const ProfileGroup group : groups) {
        std::vector<Row> found;
        for (const Spec& spec : m_specs)
            if (spec.profile->group == group && isHit(*spec.profile))
                found.push_back({group, &spec});
        if (found.empty())
            continue;
        m_rows.push_back({group, nullptr});
        if (!isFolded(group) || isSearching())
            m_rows.insert(m_rows.end(), found.begin(), found.end());
    }
}

bool ProfileRows::isHit(const Profile& profile) const
{
    return profile.name.contains(m_search, Qt::CaseInsensitive)
           || profile.shortName.value_or(QString()).contains(m_search, Qt::CaseInsensitive);
}

bool ProfileRows::isChosen(const Profile& profile) const
{
    return m_choice.enabledProfileIDs().contains(profile.id);
}

const ProfileRows::Spec* ProfileRows::spec(const QModelIndex& index) const
{
    return index.isValid() ? m_rows.at(static_cast<std::size_t>(index.row())).spec : nullptr;
}

ProfileGroup ProfileRows::group(const QModelIndex& index) const
{
    return m_rows.at(static_cast<std::size_t>(index.row())).group;
}

QModelIndex ProfileRows::heading(ProfileGroup group) const
{
    const auto found = std::ranges::find(m_rows, group, &Row::group);
    return found == m_rows.end() ? QModelIndex() : index(static_cast<int>(found - m_rows.begin()));
}

ProfileRows::Count ProfileRows::count(ProfileGroup group) const
{
    Count counted;
    for (const Profile& profile : m_choice.profiles())
        if (profile.group == group) {
            ++counted.all;
            counted.chosen += isChosen(profile) ? 1 : 0;
        }
    return counted;
}

int ProfileRows::hits() const
{
    return static_cast<int>(std::ranges::count_if(
        m_choice.profiles(), [this](const Profile& profile) { return isHit(profile); }));
}

void ProfileRows::choose(ProfileGroup group, bool on)
{
    std::set<QString> ids = m_choice.enabledProfileIDs();
    for (const Profile& profile : m_choice.profiles())
        if (profile.group == group && isHit(profile)) {
            if (on)
                ids.insert(profile.id);
            else
                ids.erase(profile.id);
        }
    m_choice.setEnabledProfileIDs(ids);
}

bool ProfileRows::canChoose(ProfileGroup group, bool on) const
{
    return std::ranges::any_of(m_choice.profiles(), [&](const Profile& profile) {
        return profile.group == group && isHit(profile) && isChosen(profile) != on;
    });
}

} // namespace vantroque

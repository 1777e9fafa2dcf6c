#pragma once

#include "Profiles/SpecFreshness.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"

#include <QAbstractListModel>

#include <array>
#include <set>
#include <vector>

namespace vantroque {

/// The rows of the list of platforms: each group's heading, then its profiles, as far as they are
/// searched for and their group is not folded. A profile's row is checked when it was chosen.
class ProfileRows : public QAbstractListModel {
public:
    static constexpr std::array groups{ProfileGroup::digital, ProfileGroup::broadcast,
                                       ProfileGroup::recommendation};

    /// What the delegate paints of a profile.
    struct Spec {
        const Profile* profile = nullptr;
        SpecFreshness freshness = SpecFreshness::unreadable;
        /// All but fresh ones say so in words.
        QString words;
        /// What is to know of it, such as that it is the operator's own; mostly empty.
        QString tag;
    };
    struct Count {
        int chosen = 0;
        int all = 0;
    };

    /// `choice` must outlive it.
    explicit ProfileRows(ProfileChoice& choice, QObject* parent = nullptr);

    static QString title(ProfileGroup group);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// How old each specification is at that time, also of profiles that come later.
    void judge(const QDateTime& now);
    void setSearch(const QString& text);
    bool isSearching() const { return !m_search.isEmpty(); }
    /// A search shows what it finds in folded groups, too.
    void setFolded(ProfileGroup group, bool folded);
    bool isFolded(ProfileGroup group) const { return m_folded.contains(group); }

    /// Null for a heading.
    const Spec* spec(const QModelIndex& index) const;
    ProfileGroup group(const QModelIndex& index) const;
    /// Not valid where the search finds nothing in the group.
    QModelIndex heading(ProfileGroup group) const;
    /// Of all profiles of the group.
    Count count(ProfileGroup group) const;
    /// Those that the search finds, in any group.
    int hits() const;
    /// Chooses those of a group that the search finds, or lets them go.
    void choose(ProfileGroup group, bool on);
    /// That would change something.
    bool canChoose(ProfileGroup group, bool on) const;

private:
    struct Row {
        ProfileGroup group = ProfileGroup::digital;
        const Spec* spec = nullptr;
    };

    std::vector<Spec> specs() const;
    bool isHit(const Profile& profile) const;
    bool isChosen(const Profile& profile) const;
    void refill();
    void fill();

    ProfileChoice& m_choice;
    QDateTime m_now; ///< When they were judged.
    std::vector<Spec> m_specs;
    std::vector<Row> m_rows;
    std::set<ProfileGroup> m_folded;
    QString m_search;
};

} // namespace vantroque

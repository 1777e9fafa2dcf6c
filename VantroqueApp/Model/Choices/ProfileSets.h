#pragma once

#include "Base/Record.h"
#include "Base/UserDefaults.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"

#include <QObject>

#include <cstddef>
#include <optional>
#include <set>
#include <vector>

namespace vantroque {

/// A choice of platforms under a name.
struct ProfileSet {
    QString name;
    /// Also of profiles that this version does not have: another may have them again.
    std::vector<QString> profileIDs;

    VANTROQUE_RECORD(ProfileSet, name, profileIDs)
};

/// The choices that the operator named, under "profiles.sets" of the user defaults. What cannot be
/// read there is ignored. Names are told apart without regard to case. Main thread.
class ProfileSets : public QObject {
    Q_OBJECT

public:
    static constexpr int longestName = 60;
    static constexpr std::size_t most = 100;

    /// Both must outlive it.
    ProfileSets(UserDefaults& defaults, ProfileChoice& choice);

    const std::vector<ProfileSet>& sets() const { return m_sets; }
    /// How many of its profiles there are.
    std::size_t count(std::size_t index) const { return known(index).size(); }
    /// The set that equals the choice.
    std::optional<std::size_t> current() const;
    /// The choice is worth a name: it is not empty, and no set equals it.
    bool canSave() const;

    /// Keeps the choice under that name, in place of a set that has it.
    void save(const QString& name);
    /// Chooses the profiles of a set and no others.
    void choose(std::size_t index);
    /// Unless the name is empty or another set has it.
    void rename(std::size_t index, const QString& name);
    /// Makes a set of the present choice.
    void update(std::size_t index);
    void remove(std::size_t index);

Q_SIGNALS:
    void changed(); ///< The sets, or which of them equals the choice.

private:
    std::set<QString> known(std::size_t index) const;
    std::vector<QString> chosen(const ProfileSet* before) const;
    std::optional<std::size_t> indexOf(const QString& name) const;
    void store();

    UserDefaults& m_defaults;
    ProfileChoice& m_choice;
    std::vector<ProfileSet> m_sets;
};

} // namespace vantroque

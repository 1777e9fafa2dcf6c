#pragma once

#include "Base/UserDefaults.h"
#include "Records/Profile.h"

#include <QString>

#include <set>
#include <vector>

namespace vantroque {

/// Remembers which profiles the operator switched on. A profile that comes with a new version
/// follows the default, and one that the operator switched off stays off. Cannot fail. One thread.
class ProfileSelectionStore {
public:
    /// Reads and writes "profiles.enabled" and "profiles.known" of `defaults`, which must outlive
    /// the store.
    explicit ProfileSelectionStore(UserDefaults& defaults) : m_defaults(defaults) {}

    /// The ids of the digital profiles.
    static std::set<QString> defaultSelection(const std::vector<Profile>& profiles);

    /// The ids to switch on out of `available`.
    std::set<QString> load(const std::vector<Profile>& available) const;
    /// Keeps the choice `ids`, made among the profiles `known`.
    void save(const std::set<QString>& ids, const std::vector<Profile>& known);

private:
    UserDefaults& m_defaults;
};

} // namespace vantroque

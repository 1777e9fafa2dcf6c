#pragma once

#include "Base/Result.h"
#include "Base/UserDefaults.h"
#include "Profiles/OwnProfiles.h"
#include "Records/Profile.h"

#include <QObject>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace vantroque {

/// The profiles, the shipped ones with the operator's own, and which of them the operator chose to
/// check against. Choices are counted, so that a report can say for which of them it was made. Main
/// thread, but for `number`.
class ProfileChoice : public QObject {
    Q_OBJECT

public:
    /// With what was chosen last. Reads the operator's own. `defaults` must outlive it.
    ProfileChoice(UserDefaults& defaults, Result<std::vector<Profile>> shipped);

    const std::vector<Profile>& profiles() const { return m_profiles; }
    const std::vector<Profile>& shipped() const { return m_shipped; }
    /// The operator's own among the profiles, and what kept others out.
    const OwnProfiles::Found& own() const { return m_own; }
    /// Why there are no profiles; for the operator.
    const std::optional<QString>& profilesError() const { return m_profilesError; }
    const std::set<QString>& enabledProfileIDs() const { return m_enabledProfileIDs; }
    /// In the order of `profiles`.
    const std::vector<Profile>& enabledProfiles() const { return *m_enabledProfiles; }
    /// The same, to be kept: another choice leaves it as it is.
    std::shared_ptr<const std::vector<Profile>> shared() const { return m_enabledProfiles; }
    /// Of the present choice, from 1. Any thread.
    std::uint64_t number() const { return m_number; }

    /// Takes what the operator's own are by now. What was chosen stays so, as at another start.
    void renew(OwnProfiles::Found own);
    /// Remembers another choice.
    void setEnabledProfileIDs(const std::set<QString>& ids);
    void toggle(const QString& profileID);

Q_SIGNALS:
    void changed();
    void renewed(); ///< The profiles are others, or what kept some out; `changed` comes after it.

private:
    void take(const std::set<QString>& ids);

    UserDefaults& m_defaults;
    std::vector<Profile> m_shipped;
    OwnProfiles::Found m_own;
    std::vector<Profile> m_profiles;
    std::optional<QString> m_profilesError;
    std::set<QString> m_enabledProfileIDs;
    std::shared_ptr<const std::vector<Profile>> m_enabledProfiles;
    std::atomic<std::uint64_t> m_number = 0;
};

} // namespace vantroque

#pragma once

#include "Base/Result.h"
#include "Base/UserDefaults.h"
#include "Records/Profile.h"

#include <QObject>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace vantroque {

/// The profiles, and which of them the operator chose to check against. Choices are counted, so
/// that a report can say for which of them it was made. Main thread, but for `number`.
class ProfileChoice : public QObject {
    Q_OBJECT

public:
    /// With what was chosen last. `defaults` must outlive it.
    ProfileChoice(UserDefaults& defaults, Result<std::vector<Profile>> profiles);

    const std::vector<Profile>& profiles() const { return m_profiles; }
    /// Why there are no profiles; for the operator.
    const std::optional<QString>& profilesError() const { return m_profilesError; }
    const std::set<QString>& enabledProfileIDs() const { return m_enabledProfileIDs; }
    /// In the order of `profiles`.
    const std::vector<Profile>& enabledProfiles() const { return *m_enabledProfiles; }
    /// The same, to be kept: another choice leaves it as it is.
    std::shared_ptr<const std::vector<Profile>> shared() const { return m_enabledProfiles; }
    /// Of the present choice, from 1. Any thread.
    std::uint64_t number() const { return m_number; }

    /// Remembers another choice.
    void setEnabledProfileIDs(const std::set<QString>& ids);
    void toggle(const QString& profileID);

Q_SIGNALS:
    void changed();

private:
    void take(const std::set<QString>& ids);

    UserDefaults& m_defaults;
    std::vector<Profile> m_profiles;
    std::optional<QString> m_profilesError;
    std::set<QString> m_enabledProfileIDs;
    std::shared_ptr<const std::vector<Profile>> m_enabledProfiles;
    std::atomic<std::uint64_t> m_number = 0;
};

} // namespace vantroque

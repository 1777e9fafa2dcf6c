#pragma once

#include "Base/Record.h"
#include "Records/Profile.h"

#include <QDate>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

/// How long ago a specification was last compared with its source.
enum class SpecFreshness { fresh, stale, expired, unreadable };
VANTROQUE_ENUM_NAMES(SpecFreshness, fresh, stale, expired, unreadable)

/// The day that `verifiedDate` names; nothing when it is not four, two and two digits or no real
/// day.
std::optional<QDate> verifiedOn(const Profile& profile);
/// Whole days from the start of that day to `now`, both in UTC, cut toward zero; negative for a day
/// to come.
std::optional<std::int64_t> daysSinceVerified(const Profile& profile, const QDateTime& now);
/// `fresh` up to 180 days, `stale` up to 365, then `expired`; `unreadable` without a day.
SpecFreshness freshness(const Profile& profile, const QDateTime& now);

struct SpecFreshnessRow {
    QString id;
    QString name;
    QString sourceURL;
    QString verifiedDate;
    std::optional<std::int64_t> days;
    SpecFreshness state = SpecFreshness::unreadable;

    VANTROQUE_RECORD(SpecFreshnessRow, id, name, sourceURL, verifiedDate, days, state)
};

/// For the upkeep of the profiles. Pure.
namespace SpecFreshnessReport {

/// The longest unverified first, those without a readable day before all.
std::vector<SpecFreshnessRow> rows(const std::vector<Profile>& profiles, const QDateTime& now);
/// One line a row: state, days, day, name.
QString summary(const std::vector<Profile>& profiles, const QDateTime& now);

} // namespace SpecFreshnessReport
} // namespace vantroque

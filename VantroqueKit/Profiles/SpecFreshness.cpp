#include "Profiles/SpecFreshness.h"

#include "Base/Text.h"

#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>
#include <limits>

namespace vantroque {

using namespace Qt::StringLiterals;

std::optional<QDate> verifiedOn(const Profile& profile)
{
    static const QRegularExpression form(uR"(\A[0-9]{4}-[0-9]{2}-[0-9]{2}\z)"_s);
    const QDate day = QDate::fromString(profile.verifiedDate, Qt::ISODate);
    if (!day.isValid() || !form.match(profile.verifiedDate).hasMatch())
        return std::nullopt;
    return day;
}

std::optional<std::int64_t> daysSinceVerified(const Profile& profile, const QDateTime& now)
{
    constexpr std::int64_t millisecondsPerDay = 86'400'000;
    const auto day = verifiedOn(profile);
    if (!day)
        return std::nullopt;
    return day->startOfDay(QTimeZone::utc()).msecsTo(now) / millisecondsPerDay;
}

SpecFreshness freshness(const Profile& profile, const QDateTime& now)
{
    const auto days = daysSinceVerified(profile, now);
    if (!days)
        return SpecFreshness::unreadable;
    if (*days > 365)
        return SpecFreshness::expired;
    return *days > 180 ? SpecFreshness::stale : SpecFreshness::fresh;
}

namespace SpecFreshnessReport {

std::vector<SpecFreshnessRow> rows(const std::vector<Profile>& profiles, const QDateTime& now)
{
    std::vector<SpecFreshnessRow> rows;
    for (const Profile& profile : profiles)
        rows.push_back({profile.id, profile.name, profile.sourceURL, profile.verifiedDate,
                        daysSinceVerified(profile, now), freshness(profile, now)});
    std::ranges::stable_sort(rows, std::greater(), [](const SpecFreshnessRow& row) {
        return row.days.value_or(std::numeric_limits<std::int64_t>::max());
    });
    return rows;
}

QString summary(const std::vector<Profile>& profiles, const QDateTime& now)
{
    return Text::joined(rows(profiles, now), u"\n"_s, [](const SpecFreshnessRow& row) {
        const std::string_view state = enumName(row.state);
        const QString days = row.days ? QString::number(*row.days) + u'd' : u"unreadable"_s;
        return u"  "_s + Text::fitted(QLatin1String(state.data(), qsizetype(state.size())), 10)
               + Text::fitted(days, 12) + Text::printable(row.verifiedDate) + u"  "_s
               + Text::printable(row.name);
    });
}

} // namespace SpecFreshnessReport
} // namespace vantroque

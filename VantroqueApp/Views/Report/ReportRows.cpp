#include "VantroqueApp/Views/Report/ReportRows.h"

#include "Base/Timecode.h"
#include "Check/RowMoments.h"
#include "Profiles/SpecFreshness.h"
#include "VantroqueApp/Views/Style/Icons.h"

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString freshnessOf(const ProfileReport& report, const std::vector<Profile>& profiles)
{
    const auto profile = std::ranges::find(profiles, report.profileID, &Profile::id);
    if (profile == profiles.end())
        return {};
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const std::string_view state = enumName(freshness(*profile, now));
    QStringList parts{QString::fromLatin1(state.data(), std::ssize(state))};
    if (const auto days = daysSinceVerified(*profile, now))
        parts << u"%1d"_s.arg(*days);
    parts << profile->verifiedDate;
    return parts.join(u" · "_s);
}

} // namespace

void ReportRows::show(std::vector<ProfileReport> reports, const std::vector<Profile>& profiles,
                      bool fresh)
{
    m_profiles = &profiles;
    if (!fresh && reports == m_reports)
        return;
    beginResetModel();
    m_reports = std::move(reports);
    m_freshness.clear();
    for (const ProfileReport& one : m_reports)
        m_freshness.push_back(freshnessOf(one, profiles));
    if (fresh) {
        m_open.clear();
        // What is refused is what the operator came for.
        for (const ProfileReport& one : m_reports)
            if (one.displayVerdict() == Verdict::fail)
                m_open.insert(one.profileID);
    }
    refill();
    endResetModel();
}

void ReportRows::setEvents(std::vector<SignalEvent> events, double frameRate)
{
    m_events = std::move(events);
    m_frameRate = frameRate;
}

std::optional<SignalEvent> ReportRows::moment(const QModelIndex& index) const
{
    const CheckResult* result = check(index);
    if (result == nullptr || m_events.empty())
        return std::nullopt;
    const auto profile = std::ranges::find(*m_profiles, report(index).profileID, &Profile::id);
    return RowMoments::of(*result, profile == m_profiles->end() ? nullptr : &*profile, m_events);
}

QString ReportRows::momentTime(const QModelIndex& index) const
{
    const auto event = moment(index);
    return event ? Timecode(event->frame, m_frameRate).text() : QString();
}

void ReportRows::refill()
{
    m_rows.clear();
    for (std::size_t i = 0; i < m_reports.size(); ++i) {
        m_rows.push_back({.report = i, .check = {}});
        if (m_open.contains(m_reports[i].profileID))
            for (std::size_t j = 0; j < m_reports[i].checks.size(); ++j)
                m_rows.push_back({.report = i, .check = j});
    }
}

void ReportRows::toggle(const QModelIndex& index)
{
    const QString toggled = key(index);
    if (!m_open.remove(toggled))
        m_open.insert(toggled);
    if (check(index) == nullptr) {
        const int count = static_cast<int>(report(index).checks.size());
        const bool opens = m_open.contains(toggled);
        if (opens && count > 0)
            beginInsertRows({}, index.row() + 1, index.row() + count);
        else if (count > 0)
            beginRemoveRows({}, index.row() + 1, index.row() + count);
        refill();
        if (opens && count > 0)
            endInsertRows();
        else if (count > 0)
            endRemoveRows();
    }
    Q_EMIT dataChanged(index, index);
}

int ReportRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ReportRows::data(const QModelIndex& index, int role) const
{
    if (role == Qt::DisplayRole) {
        const CheckResult* result = check(index);
        return result != nullptr ? result->title : report(index).profileName;
    }
    if (role == Qt::AccessibleTextRole)
        return text(index);
    return {};
}

const ReportRows::Row& ReportRows::row(const QModelIndex& index) const
{
    return m_rows.at(static_cast<std::size_t>(index.row()));
}

const ProfileReport& ReportRows::report(const QModelIndex& index) const
{
    return m_reports.at(row(index).report);
}

const CheckResult* ReportRows::check(const QModelIndex& index) const
{
    const auto& number = row(index).check;
    return number ? &report(index).checks.at(*number) : nullptr;
}

Verdict ReportRows::verdict(const QModelIndex& index) const
{
    const CheckResult* result = check(index);
    return result != nullptr
               ? ProfileReport::displayVerdict(result->verdict, report(index).isAdvisory())
               : report(index).displayVerdict();
}

QString ReportRows::freshnessLine(const QModelIndex& index) const
{
    return m_freshness.at(row(index).report);
}

QString ReportRows::key(const QModelIndex& index) const
{
    const CheckResult* result = check(index);
    return result != nullptr ? report(index).profileID + u'/' + result->id
                             : report(index).profileID;
}

QModelIndex ReportRows::indexOf(const QString& key) const
{
    for (int row = 0; row < rowCount(); ++row)
        if (this->key(index(row)) == key)
            return index(row);
    return {};
}

QString ReportRows::text(const QModelIndex& index) const
{
    QStringList parts{Icons::word(verdict(index))};
    if (const CheckResult* result = check(index)) {
        parts << result->title << result->measured;
        if (const QString time = momentTime(index); !time.isEmpty())
            parts << u"at %1"_s.arg(time);
        if (isOpen(index)) {
            parts << u"Expected: %1"_s.arg(result->expected);
            if (result->fix)
                parts << *result->fix;
        }
    } else {
        parts << report(index).profileName << report(index).statusSummary();
        if (report(index).inferred)
            parts << u"spec inferred"_s;
        if (isOpen(index) && !freshnessLine(index).isEmpty())
            parts << freshnessLine(index);
    }
    return parts.join(u", "_s);
}

} // namespace vantroque

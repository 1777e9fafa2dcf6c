#include "VantroqueApp/Views/Report/ReportRows.h"

#include "Base/Timecode.h"
#include "Check/TextRenderer.h"
#include "Profiles/SpecFreshness.h"
#include "VantroqueApp/Views/Style/Icons.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace vantroque {

using namespace Qt::StringLiterals;
using Kind = ReportRows::Row::Kind;

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

/// Failing before warning before passing.
int gravity(const ProfileReport& report)
{
    switch (report.displayVerdict()) {
    case Verdict::fail: return 0;
    case Verdict::warn: return 1;
    default: return 2;
    }
}

bool isProblem(const CheckResult& row)
{
    return row.verdict == Verdict::fail || row.verdict == Verdict::warn;
}

} // namespace

std::vector<ReportRows::Part> ReportRows::parts(const FileReport& report,
                                                const std::vector<Profile>& profiles)
{
    std::vector<Part> parts;
    const auto add = [&](const std::vector<ProfileReport>& reports, Group group) {
        for (const ProfileReport& one : reports)
            parts.push_back({one, group, freshnessOf(one, profiles)});
    };
    auto gates = report.gateProfiles();
    std::ranges::stable_sort(gates, {}, gravity);
    add(gates, Group::platforms);
    add(report.advisoryProfiles(), Group::recommendations);
    if (report.sections)
        add(*report.sections, Group::sections);
    return parts;
}

void ReportRows::show(const FileReport& report, const std::vector<Profile>& profiles,
                      double frameRate, OpenRows& open)
{
    auto reports = parts(report, profiles);
    if (&open == m_open && reports == m_reports && frameRate == m_frameRate)
        return;
    beginResetModel();
    m_open = &open;
    m_frameRate = frameRate;
    m_reports = std::move(reports);
    for (const auto& [one, group, freshness] : m_reports) {
        const bool isNew = !open.seen.contains(one.profileID);
        open.seen.insert(one.profileID);
        // What is refused is what the operator came for.
        if (isNew && one.displayVerdict() == Verdict::fail)
            open.rows.insert(one.profileID);
    }
    m_rows = filled();
    endResetModel();
}

std::vector<ReportRows::Row> ReportRows::filled() const
{
    std::vector<Row> rows;
    for (std::size_t i = 0; i < m_reports.size(); ++i) {
        const Group group = m_reports[i].group;
        if (group != Group::platforms && (i == 0 || m_reports[i - 1].group != group))
            rows.push_back({.kind = Kind::heading, .report = i});
        rows.push_back({.kind = Kind::report, .report = i});
        if (open().contains(m_reports[i].report.profileID))
            append(rows, i);
    }
    return rows;
}

/// What an open report shows. Where nothing is wrong nothing is folded.
void ReportRows::append(std::vector<Row>& rows, std::size_t report) const
{
    const ProfileReport& one = m_reports[report].report;
    const bool tellsInfo = m_reports[report].group == Group::sections;
    const auto isFolded = [&](const CheckResult& row) {
        return !isProblem(row) && !(tellsInfo && row.verdict == Verdict::info);
    };
    const auto add = [&](auto wanted) {
        for (std::size_t i = 0; i < one.checks.size(); ++i)
            if (wanted(one.checks[i]))
                rows.push_back({.kind = Kind::check, .report = report, .check = i});
    };
    for (const Verdict verdict : {Verdict::fail, Verdict::warn})
        add([verdict](const CheckResult& row) { return row.verdict == verdict; });
    if (tellsInfo)
        add([](const CheckResult& row) { return row.verdict == Verdict::info; });
    if (std::ranges::none_of(one.checks, isFolded))
        return;
    if (std::ranges::none_of(one.checks, std::not_fn(isFolded)))
        return add(isFolded);
    rows.push_back({.kind = Kind::passed, .report = report});
    if (open().contains(key(rows.back())))
        add(isFolded);
}

void ReportRows::toggle(const QModelIndex& index)
{
    const QString toggled = key(index);
    if (!m_open->rows.remove(toggled))
        m_open->rows.insert(toggled);
    m_open->isChosen = true;
    if (kind(index) != Kind::check) {
        auto rows = filled();
        const int more = static_cast<int>(std::ssize(rows) - std::ssize(m_rows));
        if (more > 0) {
            beginInsertRows({}, index.row() + 1, index.row() + more);
            m_rows = std::move(rows);
            endInsertRows();
        } else if (more < 0) {
            beginRemoveRows({}, index.row() + 1, index.row() - more);
            m_rows = std::move(rows);
            endRemoveRows();
        }
    }
    Q_EMIT dataChanged(index, index);
}

QModelIndex ReportRows::reveal(const QString& profile, const QString& check)
{
    const QModelIndex platform = indexOf(profile);
    if (!platform.isValid())
        return {};
    if (!isOpen(platform))
        toggle(platform);
    QModelIndex row = indexOf(profile + u'/' + check);
    if (const QModelIndex fold = indexOf(profile + u'/'); !row.isValid() && fold.isValid()) {
        toggle(fold);
        row = indexOf(profile + u'/' + check);
    }
    return row.isValid() ? row : platform;
}

int ReportRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ReportRows::data(const QModelIndex& index, int role) const
{
    if (role == Qt::DisplayRole) {
        const CheckResult* result = check(index);
        return result != nullptr             ? result->title
               : kind(index) == Kind::report ? report(index).profileName
                                             : label(index);
    }
    if (role == Qt::AccessibleTextRole)
        return accessibleText(index);
    return {};
}

Qt::ItemFlags ReportRows::flags(const QModelIndex& index) const
{
    return kind(index) == Kind::heading ? Qt::NoItemFlags : QAbstractListModel::flags(index);
}

const ReportRows::Row& ReportRows::row(const QModelIndex& index) const
{
    return m_rows.at(static_cast<std::size_t>(index.row()));
}

const ProfileReport& ReportRows::report(const QModelIndex& index) const
{
    return m_reports.at(row(index).report).report;
}

const CheckResult* ReportRows::check(const QModelIndex& index) const
{
    return kind(index) == Kind::check ? &report(index).checks.at(row(index).check) : nullptr;
}

Verdict ReportRows::verdict(const QModelIndex& index) const
{
    const CheckResult* result = check(index);
    return result != nullptr
               ? ProfileReport::displayVerdict(result->verdict, report(index).isAdvisory())
               : report(index).displayVerdict();
}

std::optional<CheckMoment> ReportRows::moment(const QModelIndex& index) const
{
    const CheckResult* result = check(index);
    return result != nullptr ? result->moment : std::nullopt;
}

QString ReportRows::momentTime(const QModelIndex& index) const
{
    const auto where = moment(index);
    return where ? Timecode(where->frame, m_frameRate).text() : QString();
}

QString ReportRows::freshnessLine(const QModelIndex& index) const
{
    return m_reports.at(row(index).report).freshness;
}

QString ReportRows::label(const QModelIndex& index) const
{
    if (kind(index) == Kind::heading)
        return group(index) == Group::recommendations ? u"Recommendations"_s : u"The file itself"_s;
    const auto& checks = report(index).checks;
    const auto passed = std::ranges::count(checks, Verdict::pass, &CheckResult::verdict);
    const auto unscored = group(index) == Group::sections
                              ? 0
                              : std::ranges::count(checks, Verdict::info, &CheckResult::verdict);
    QStringList parts;
    if (passed > 0)
        parts << u"%1 passed"_s.arg(passed);
    if (unscored > 0)
        parts << u"%1 not scored"_s.arg(unscored);
    return parts.join(u", "_s);
}

QString ReportRows::textToCopy(const QModelIndex& index) const
{
    const CheckResult* result = check(index);
    return result != nullptr ? TextRenderer::render(*result, report(index).isAdvisory())
                             : TextRenderer::render(report(index));
}

QString ReportRows::key(const Row& row) const
{
    const ProfileReport& one = m_reports.at(row.report).report;
    switch (row.kind) {
    case Kind::heading: return u"/"_s + one.profileID;
    case Kind::report: return one.profileID;
    case Kind::check: return one.profileID + u'/' + one.checks.at(row.check).id;
    case Kind::passed: break;
    }
    return one.profileID + u'/';
}

QModelIndex ReportRows::indexOf(const QString& key) const
{
    for (int row = 0; row < rowCount(); ++row)
        if (this->key(index(row)) == key)
            return index(row);
    return {};
}

QString ReportRows::accessibleText(const QModelIndex& index) const
{
    if (kind(index) == Kind::heading)
        return label(index);
    if (kind(index) == Kind::passed)
        return label(index) + (isOpen(index) ? u", open"_s : u", folded"_s);
    QStringList parts{Icons::word(verdict(index))};
    if (const CheckResult* result = check(index)) {
        parts << result->title << result->measured;
        if (isOpen(index) || isProblem(*result))
            parts << u"Expected: %1"_s.arg(result->expected);
        if (isOpen(index) && result->fix)
            parts << *result->fix;
        if (const QString time = momentTime(index); !time.isEmpty())
            parts << u"at %1"_s.arg(time);
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

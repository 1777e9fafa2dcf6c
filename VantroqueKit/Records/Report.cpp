#include "Records/Report.h"

#include "Base/Text.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

template<typename T, typename Predicate>
std::vector<T> filtered(const std::vector<T>& list, Predicate predicate)
{
    std::vector<T> kept;
    std::ranges::copy_if(list, std::back_inserter(kept), predicate);
    return kept;
}

bool has(const ProfileReport& report, Verdict verdict)
{
    return std::ranges::any_of(report.checks,
                               [&](const CheckResult& row) { return row.verdict == verdict; });
}

bool fails(const ProfileReport& report)
{
    return has(report, Verdict::fail);
}

bool warns(const ProfileReport& report)
{
    return has(report, Verdict::warn);
}

// Of a platform, which may refuse the file, or of one that only gives advice.

bool isGate(const ProfileReport& report)
{
    return !report.isAdvisory();
}

bool refuses(const ProfileReport& report)
{
    return isGate(report) && fails(report);
}

bool passesWithWarnings(const ProfileReport& report)
{
    return isGate(report) && !fails(report) && warns(report);
}

bool advisesAgainst(const ProfileReport& report)
{
    return report.isAdvisory() && fails(report);
}

template<typename Predicate>
std::size_t count(const std::vector<ProfileReport>& list, Predicate predicate)
{
    return static_cast<std::size_t>(std::ranges::count_if(list, predicate));
}

std::vector<CheckResult> rowsWith(const ProfileReport& report, Verdict verdict)
{
    return filtered(report.checks, [&](const CheckResult& row) { return row.verdict == verdict; });
}

std::vector<ProfileReport> advisoriesBelow(const FileReport& report)
{
    return filtered(report.profiles, advisesAgainst);
}

const auto title = [](const CheckResult& row) { return row.title; };
const auto shortName = [](const ProfileReport& report) { return report.profileShortName; };
const auto name = [](const ProfileReport& report) { return report.profileName; };

QString advisoryHeadline(const FileReport& report)
{
    const auto below = advisoriesBelow(report);
    if (below.size() > 1)
        return u"Below recommendations"_s;
    if (below.size() == 1)
        return u"Below %1 recommendations"_s.arg(below.front().profileShortName);
    if (report.profiles.size() > 1)
        return u"Meets all recommendations"_s;
    return u"Meets %1 recommendations"_s.arg(report.profiles.front().profileShortName);
}

/// The distinct titles of what fails, in order, at most `maxNamed` of them.
QString failedTitles(const std::vector<ProfileReport>& reports, std::size_t maxNamed)
{
    QStringList titles;
    for (const ProfileReport& report : reports)
        for (const CheckResult& row : report.failedChecks())
            titles << row.title;
    titles.removeDuplicates();
    return titles.mid(0, static_cast<qsizetype>(maxNamed)).join(u", "_s);
}

} // namespace

Verdict ProfileReport::verdict() const
{
    if (fails(*this))
        return Verdict::fail;
    return warns(*this) ? Verdict::warn : Verdict::pass;
}

Verdict ProfileReport::displayVerdict(Verdict verdict, bool advisory)
{
    return advisory && verdict == Verdict::fail ? Verdict::warn : verdict;
}

std::vector<CheckResult> ProfileReport::failedChecks() const
{
    return rowsWith(*this, Verdict::fail);
}

std::vector<CheckResult> ProfileReport::warnedChecks() const
{
    return rowsWith(*this, Verdict::warn);
}

QString ProfileReport::statusSummary() const
{
    const auto failed = failedChecks();
    if (!failed.empty())
        return Text::joined(failed, u", "_s, title);
    const auto warned = warnedChecks();
    if (warned.empty())
        return passedSummary.value_or(isAdvisory() ? u"Meets recommendations"_s : u"Passed"_s);
    if (warned.size() == 1)
        return warned.front().title;
    return u"%1 to review"_s.arg(warned.size());
}

std::vector<ProfileReport> FileReport::allRows() const
{
    auto rows = profiles;
    if (sections)
        rows.insert(rows.end(), sections->begin(), sections->end());
    return rows;
}

bool FileReport::sectionsWarn() const
{
    return sections && std::ranges::any_of(*sections, [](const ProfileReport& section) {
               return fails(section) || warns(section);
           });
}

std::vector<ProfileReport> FileReport::gateProfiles() const
{
    return filtered(profiles, isGate);
}

std::vector<ProfileReport> FileReport::advisoryProfiles() const
{
    return filtered(profiles, [](const ProfileReport& report) { return report.isAdvisory(); });
}

std::vector<ProfileReport> FileReport::failingProfiles() const
{
    return filtered(profiles, refuses);
}

std::vector<ProfileReport> FileReport::warningProfiles() const
{
    return filtered(profiles, passesWithWarnings);
}

// What follows is asked for each row of a list that is painted, so it counts and copies little.

std::size_t FileReport::passingProfileCount() const
{
    return count(profiles, isGate) - count(profiles, refuses);
}

Verdict FileReport::summaryVerdict() const
{
    if (std::ranges::any_of(profiles, isGate))
        return std::ranges::any_of(profiles, refuses) ? Verdict::fail : Verdict::pass;
    return std::ranges::any_of(profiles, advisesAgainst) ? Verdict::warn : Verdict::pass;
}

QString FileReport::summaryHeadline() const
{
    if (profiles.empty())
        return u"No platforms selected"_s;
    const auto total = count(profiles, isGate);
    if (total == 0)
        return advisoryHeadline(*this);
    if (passingProfileCount() < total)
        return u"Passes %1 of %2 platforms"_s.arg(passingProfileCount()).arg(total);
    return total == 1 ? u"Passes"_s : u"Passes all %1 platforms"_s.arg(total);
}

std::optional<QString> FileReport::advisoryNote() const
{
    const auto below = advisoriesBelow(*this);
    if (below.empty() || std::ranges::none_of(profiles, isGate))
        return std::nullopt;
    if (below.size() == 1)
        return u"Below %1 recommendations"_s.arg(below.front().profileShortName);
    return u"Below recommendations: "_s + Text::joined(below, u", "_s, name);
}

QString FileReport::summarySubhead(std::size_t maxNamed) const
{
    const auto total = count(profiles, isGate);
    if (total == 0)
        return failedTitles(advisoriesBelow(*this), maxNamed);
    const auto failing = count(profiles, refuses);
    if (failing > maxNamed)
        return u"Fails %1 of %2 platforms"_s.arg(failing).arg(total);
    if (failing > 0)
        return u"Fails "_s + Text::joined(failingProfiles(), u", "_s, shortName);
    if (const auto warning = count(profiles, passesWithWarnings); warning > 0)
        return u"%1 platform%2 passed with something worth a look"_s.arg(
            QString::number(warning), Text::plural(static_cast<qint64>(warning)));
    return sectionsWarn() ? u"Picture and sound worth a look"_s : QString();
}

} // namespace vantroque

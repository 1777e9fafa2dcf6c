#include "Check/Problems.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/RowMoments.h"
#include "Check/ShortTexts.h"
#include "Profiles/LoudnessTarget.h"

#include <algorithm>
#include <limits>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

bool isProblem(const CheckResult& row)
{
    return row.verdict == Verdict::fail || row.verdict == Verdict::warn;
}

/// Failing before warning.
bool isGraver(Verdict one, Verdict other)
{
    return one == Verdict::fail && other == Verdict::warn;
}

/// Gathers the rows of a report under their checks.
class Gathering {
public:
    Gathering(const FileReport& report, const std::vector<Profile>& profiles)
        : m_events(report.events.value_or(std::vector<SignalEvent>())), m_profiles(profiles)
    {
    }

    void add(const ProfileReport& from, bool isPlatform)
    {
        for (const CheckResult& row : from.checks)
            if (isProblem(row))
                add(row, from, isPlatform);
    }
    std::vector<Problem> sorted() &&
    {
        for (Problem& problem : m_problems)
            std::ranges::stable_sort(problem.limits, [](const Problem::Limit& one,
                                                        const Problem::Limit& other) {
                return one.verdict != other.verdict ? isGraver(one.verdict, other.verdict)
                                                    : one.platforms.size() > other.platforms.size();
            });
        std::ranges::stable_sort(m_problems, [](const Problem& one, const Problem& other) {
            return one.verdict != other.verdict ? isGraver(one.verdict, other.verdict)
                                                : one.platforms().size() > other.platforms().size();
        });
        return std::move(m_problems);
    }

private:
    void add(const CheckResult& row, const ProfileReport& from, bool isPlatform)
    {
        Problem& problem = problemOf(row);
        if (isPlatform)
            problem.section.reset();
        else if (problem.limits.empty())
            problem.section = from.profileName;
        const bool isWorse = isGraver(row.verdict, problem.verdict);
        if (isWorse)
            problem.verdict = row.verdict;
        if (isWorse || !problem.moment)
            if (const auto moment = RowMoments::of(row, profileOf(from), m_events))
                problem.moment = moment;
        Problem::Limit& limit = limitOf(problem, row);
        if (isPlatform && std::ranges::count(limit.platforms, from.profileShortName) == 0)
            limit.platforms.push_back(from.profileShortName);
    }
    Problem& problemOf(const CheckResult& row)
    {
        const auto found = std::ranges::find(m_problems, row.id, &Problem::checkID);
        if (found != m_problems.end())
            return *found;
        m_problems.push_back({.checkID = row.id, .title = row.title, .verdict = row.verdict});
        return m_problems.back();
    }
    static Problem::Limit& limitOf(Problem& problem, const CheckResult& row)
    {
        const QString measured = ShortTexts::ofMeasured(row.measured);
        const QString expected = ShortTexts::ofExpected(row.expected);
        const auto found = std::ranges::find_if(problem.limits, [&](const Problem::Limit& limit) {
            return limit.verdict == row.verdict && limit.measured == measured
                   && limit.expected == expected;
        });
        if (found != problem.limits.end())
            return *found;
        problem.limits.push_back({.verdict = row.verdict,
                                  .measured = measured,
                                  .expected = expected,
                                  .fix = row.fix,
                                  .platforms = {}});
        return problem.limits.back();
    }
    const Profile* profileOf(const ProfileReport& from) const
    {
        const auto found = std::ranges::find(m_profiles, from.profileID, &Profile::id);
        return found == m_profiles.end() ? nullptr : &*found;
    }

    const std::vector<SignalEvent> m_events;
    const std::vector<Profile>& m_profiles;
    std::vector<Problem> m_problems;
};

} // namespace

std::vector<QString> Problem::platforms() const
{
    std::vector<QString> all;
    for (const Limit& limit : limits)
        if (limit.verdict == verdict)
            all.insert(all.end(), limit.platforms.begin(), limit.platforms.end());
    return all;
}

QString Problem::whose() const
{
    const std::size_t count = platforms().size();
    return section && count == 0 ? *section
                                 : u"%1 platform%2"_s.arg(QString::number(count),
                                                          Text::plural(static_cast<qint64>(count)));
}

namespace Problems {

std::vector<Problem> of(const FileReport& report, const std::vector<Profile>& profiles)
{
    Gathering gathering(report, profiles);
    for (const ProfileReport& platform : report.gateProfiles())
        gathering.add(platform, true);
    for (const ProfileReport& section : report.sections.value_or(std::vector<ProfileReport>()))
        gathering.add(section, false);
    return std::move(gathering).sorted();
}

QString headline(const std::vector<Problem>& problems)
{
    const auto failing = std::ranges::count(problems, Verdict::fail, &Problem::verdict);
    const auto warning = std::ssize(problems) - failing;
    QStringList parts;
    if (failing > 0)
        parts << u"%1 problem%2 to fix"_s.arg(QString::number(failing), Text::plural(failing));
    if (warning > 0)
        parts << u"%1 to review"_s.arg(warning);
    return parts.join(u", "_s);
}

std::optional<QString> conflict(const std::vector<Profile>& profiles)
{
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
    std::vector<double> targets;
    for (const Profile& profile : profiles) {
        const auto& rule = profile.loudness;
        if (profile.group == ProfileGroup::recommendation || !rule || !rule->targetLKFS
            || rule->autoNormalized.value_or(false))
            continue;
        const double tolerance = rule->toleranceLU.value_or(LoudnessTarget::defaultTolerance);
        lowest = std::max(lowest, *rule->targetLKFS - tolerance);
        highest = std::min(highest, *rule->targetLKFS + tolerance);
        if (std::ranges::count(targets, *rule->targetLKFS) == 0)
            targets.push_back(*rule->targetLKFS);
    }
    if (!Numbers::above(lowest, highest))
        return std::nullopt;
    std::ranges::sort(targets);
    const double last = targets.back();
    targets.pop_back();
    const auto words = [](double target) { return Numbers::given(target, 0); };
    return u"No single file can pass all of these: %1 and %2 LKFS"_s.arg(
        Text::joined(targets, u", "_s, words), words(last));
}

} // namespace Problems
} // namespace vantroque

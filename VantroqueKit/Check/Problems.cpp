#include "Check/Problems.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
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

int gravity(Verdict verdict)
{
    switch (verdict) {
    case Verdict::fail: return 3;
    case Verdict::warn: return 2;
    case Verdict::pass: return 1;
    case Verdict::info: break;
    }
    return 0;
}

bool isGraver(Verdict one, Verdict other)
{
    return gravity(one) > gravity(other);
}

/// Gathers the rows of a report under their checks.
class Gathering {
public:
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
        if (row.moment && (isWorse || !problem.moment))
            problem.moment = row.moment;
        Problem::Limit& limit = limitOf(problem, row);
        const Problem::Platform platform{from.profileID, from.profileShortName};
        if (isPlatform && std::ranges::count(limit.platforms, platform) == 0)
            limit.platforms.push_back(platform);
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

    std::vector<Problem> m_problems;
};

} // namespace

std::vector<Problem::Platform> Problem::platforms() const
{
    std::vector<Platform> all;
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

std::vector<Problem> of(const FileReport& report)
{
    Gathering gathering;
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

std::optional<Verdict> verdictOf(const FileReport& report, const QString& check)
{
    std::optional<Verdict> worst;
    for (const ProfileReport& platform : report.profiles)
        for (const CheckResult& row : platform.checks) {
            const Verdict found = ProfileReport::displayVerdict(row.verdict, platform.isAdvisory());
            if (row.id == check && (!worst || gravity(found) > gravity(*worst)))
                worst = found;
        }
    return worst;
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

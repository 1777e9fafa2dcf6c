#include "Check/SharedProblems.h"

#include "Base/Text.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <tuple>

namespace vantroque::SharedProblems {

using namespace Qt::StringLiterals;

namespace {

/// The problems of one check.
struct Gathered {
    SharedProblem shared;
    std::vector<QString> measured;                     ///< What was measured in so many ways.
    std::set<QString> platforms;                       ///< By id.
    std::map<QString, std::vector<std::size_t>> fixes; ///< The files of each.
    std::vector<QString> order;                        ///< Of the fixes.

    void add(std::size_t file, const Problem& problem)
    {
        const Problem::Limit& limit = problem.limits.front();
        shared.files.push_back({file, problem.verdict, limit.measured, limit.expected});
        if (problem.verdict == Verdict::fail)
            shared.verdict = Verdict::fail;
        if (std::ranges::find(measured, limit.measured) == measured.end())
            measured.push_back(limit.measured);
        for (const Problem::Limit& one : problem.limits) {
            if (one.fix)
                addFix(file, *one.fix);
            if (one.verdict == problem.verdict)
                for (const Problem::Platform& platform : one.platforms)
                    platforms.insert(platform.id);
        }
    }
    void addFix(std::size_t file, const QString& text)
    {
        auto& files = fixes[text];
        if (files.empty())
            order.push_back(text);
        if (files.empty() || files.back() != file)
            files.push_back(file);
    }
    SharedProblem whole() const
    {
        SharedProblem whole = shared;
        whole.measured = measured.front();
        if (measured.size() > 1)
            whole.measured +=
                u" and %1 other%2"_s.arg(QString::number(measured.size() - 1),
                                         Text::plural(static_cast<qint64>(measured.size()) - 1));
        if (!platforms.empty())
            whole.whose =
                u"%1 platform%2"_s.arg(QString::number(platforms.size()),
                                       Text::plural(static_cast<qint64>(platforms.size())));
        for (const QString& text : order)
            whole.fixes.push_back({text, fixes.at(text)});
        std::ranges::stable_sort(whole.fixes, std::greater<>(),
                                 [](const SharedProblem::Fix& fix) { return fix.files.size(); });
        return whole;
    }
};

} // namespace

std::vector<SharedProblem> of(const std::vector<std::vector<Problem>>& files)
{
    std::vector<Gathered> all;
    for (std::size_t file = 0; file < files.size(); ++file)
        for (const Problem& problem : files[file]) {
            auto found = std::ranges::find(all, problem.checkID,
                                           [](const Gathered& one) { return one.shared.checkID; });
            if (found == all.end())
                found =
                    all.insert(all.end(), {.shared = {.checkID = problem.checkID,
                                                      .title = problem.title,
                                                      .verdict = problem.verdict,
                                                      .measured = {},
                                                      .expected = problem.limits.front().expected,
                                                      .files = {},
                                                      .fixes = {},
                                                      .whose = problem.whose()},
                                           .measured = {},
                                           .platforms = {},
                                           .fixes = {},
                                           .order = {}});
            found->add(file, problem);
        }
    std::ranges::stable_sort(all, std::greater<>(), [](const Gathered& one) {
        return std::tuple(one.shared.verdict == Verdict::fail, one.shared.files.size(),
                          one.platforms.size());
    });
    std::vector<SharedProblem> shared;
    for (const Gathered& one : all)
        shared.push_back(one.whole());
    return shared;
}

} // namespace vantroque::SharedProblems

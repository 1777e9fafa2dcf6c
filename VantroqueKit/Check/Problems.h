#pragma once

#include "Records/Profile.h"
#include "Records/Report.h"

#include <optional>
#include <vector>

namespace vantroque {

/// One thing that is wrong with a file, however many platforms say so.
struct Problem {
    /// What some of the platforms ask for in the same words.
    struct Limit {
        Verdict verdict = Verdict::fail; ///< `fail` or `warn`.
        QString measured;                ///< Short.
        QString expected;                ///< Short.
        std::optional<QString> fix;
        std::vector<QString> platforms; ///< Their short names, in the order of the report.
        bool operator==(const Limit&) const = default;
    };

    QString checkID;
    QString title;
    Verdict verdict = Verdict::fail; ///< The worst of its limits.
    std::vector<Limit> limits;       ///< Worst first, then the one of most platforms. At least one.
    /// Of the part of the report that tells of it, when no platform does.
    std::optional<QString> section;
    std::optional<SignalEvent> moment; ///< Where to look.
    bool operator==(const Problem&) const = default;

    /// Which platforms are lost, or only uneasy when none is: those of its own verdict.
    std::vector<QString> platforms() const;
    /// "3 platforms", or the part of the report.
    QString whose() const;
};

/// A report by cause instead of by platform. Recommendations gate nothing and are left out. Pure.
namespace Problems {

/// Failing ones first, then those that cost most platforms, then in the order of the checks.
/// `profiles` are those of the report.
std::vector<Problem> of(const FileReport& report, const std::vector<Profile>& profiles);
/// "7 problems to fix, 2 to review"; empty when there are none.
QString headline(const std::vector<Problem>& problems);
/// That the platforms exclude one another, when they do: their loudness windows have nothing in
/// common. Platforms that bring a file to their loudness themselves take any.
std::optional<QString> conflict(const std::vector<Profile>& profiles);

} // namespace Problems
} // namespace vantroque

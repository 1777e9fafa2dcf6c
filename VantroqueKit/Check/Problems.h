#pragma once

#include "Records/Profile.h"
#include "Records/Report.h"

#include <optional>
#include <vector>

namespace vantroque {

/// One thing that is wrong with a file, however many platforms say so.
struct Problem {
    struct Platform {
        QString id;
        QString name; ///< Short.
        bool operator==(const Platform&) const = default;
    };
    /// What some of the platforms ask for in the same words.
    struct Limit {
        Verdict verdict = Verdict::fail; ///< `fail` or `warn`.
        QString measured;                ///< Short.
        QString expected;                ///< Short.
        std::optional<QString> fix;
        std::vector<Platform> platforms; ///< In the order of the report.
        bool operator==(const Limit&) const = default;
    };

    QString checkID;
    QString title;
    Verdict verdict = Verdict::fail; ///< The worst of its limits.
    std::vector<Limit> limits;       ///< Worst first, then the one of most platforms. At least one.
    /// Of the part of the report that tells of it, when no platform does.
    std::optional<QString> section;
    std::optional<CheckMoment> moment; ///< Where to look.
    bool operator==(const Problem&) const = default;

    /// Which platforms are lost, or only uneasy when none is: those of its own verdict.
    std::vector<Platform> platforms() const;
    /// "3 platforms", or the part of the report.
    QString whose() const;
};

/// A report by cause instead of by platform. Recommendations gate nothing and are left out. Pure.
namespace Problems {

/// Failing ones first, then those that cost most platforms, then in the order of the checks.
std::vector<Problem> of(const FileReport& report);
/// "7 problems to fix, 2 to review"; empty when there are none.
QString headline(const std::vector<Problem>& problems);
/// The gravest verdict that platforms give in a check, `info` when it is scored by none of them; a
/// recommendation warns at most. Nothing where no platform has the check.
std::optional<Verdict> verdictOf(const FileReport& report, const QString& check);
/// That the platforms exclude one another, when they do: their loudness windows have nothing in
/// common. Platforms that bring a file to their loudness themselves take any.
std::optional<QString> conflict(const std::vector<Profile>& profiles);

} // namespace Problems
} // namespace vantroque

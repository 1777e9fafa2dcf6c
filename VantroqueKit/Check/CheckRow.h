#pragma once

#include "Records/Report.h"

namespace vantroque {

/// What all outcomes of one check share. Each operation makes the finished row.
struct CheckRow {
    QString id;
    QString title;
    QString expected;

    CheckResult pass(const QString& measured) const { return outcome(Verdict::pass, measured, {}); }
    CheckResult info(const QString& measured) const { return outcome(Verdict::info, measured, {}); }
    CheckResult warn(const QString& measured, const std::optional<QString>& fix = {}) const
    {
        return outcome(Verdict::warn, measured, fix);
    }
    CheckResult fail(const QString& measured, const std::optional<QString>& fix = {}) const
    {
        return outcome(Verdict::fail, measured, fix);
    }
    /// The same row, for an outcome that states another expectation.
    CheckRow expecting(const QString& other) const { return {id, title, other}; }

    CheckResult outcome(Verdict verdict, const QString& measured,
                        const std::optional<QString>& fix) const
    {
        return {id, title, verdict, measured, expected, fix};
    }
};

} // namespace vantroque

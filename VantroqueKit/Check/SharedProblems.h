#pragma once

#include "Check/Problems.h"

namespace vantroque {

/// What is wrong with some of several files.
struct SharedProblem {
    /// One of them.
    struct File {
        std::size_t file = 0; ///< Its place among all that were asked about.
        Verdict verdict = Verdict::fail;
        QString measured;
        QString expected;
        bool operator==(const File&) const = default;
    };
    /// What mends some of them.
    struct Fix {
        QString text;
        std::vector<std::size_t> files;
        bool operator==(const Fix&) const = default;
    };

    QString checkID;
    QString title;
    Verdict verdict = Verdict::fail; ///< The worst.
    QString measured;        ///< Of the first file, and how many files were measured otherwise.
    QString expected;        ///< Of the first file.
    std::vector<File> files; ///< In their order.
    std::vector<Fix> fixes;  ///< Those of most files first.
    QString whose;           ///< "8 platforms", or the part of the report.
    bool operator==(const SharedProblem&) const = default;
};

/// The problems of several files together. Pure.
namespace SharedProblems {

/// Failing ones first, then those of most files, then those that cost most platforms.
std::vector<SharedProblem> of(const std::vector<std::vector<Problem>>& files);

} // namespace SharedProblems
} // namespace vantroque

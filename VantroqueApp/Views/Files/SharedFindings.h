#pragma once

#include "Check/SharedProblems.h"

#include <QUuid>

#include <vector>

namespace vantroque {

/// What is wrong with the selected files together.
struct SharedFindings {
    std::vector<SharedProblem> problems;
    // Of the files that were asked about.
    std::vector<QString> names;
    std::vector<QUuid> ids;
    std::size_t selected = 0; ///< Files, also those without a report.

    bool operator==(const SharedFindings&) const = default;
};

} // namespace vantroque

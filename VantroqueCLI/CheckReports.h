#pragma once

#include "Analysis/Analyzer.h"
#include "Base/Result.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace vantroque {

/// One file of a call, and what became of it.
struct CheckedFile {
    QString path; ///< As it was given.
    Result<Analyzer::Analysis> outcome = failure({});
};

/// The forms in which `check` tells its results, with a final line feed.
namespace CheckReports {

QByteArray text(const std::vector<CheckedFile>& files, bool color);
/// Fails when a record has no JSON form. `withMedia` adds all that is known of each file.
Result<QByteArray> json(const std::vector<CheckedFile>& files, bool withMedia);
/// One suite a file, one case a row. A failing row is a failure unless it belongs to a
/// recommendation, which never fails a file; a file that could not be analysed is an error.
QByteArray junit(const std::vector<CheckedFile>& files);

} // namespace CheckReports
} // namespace vantroque

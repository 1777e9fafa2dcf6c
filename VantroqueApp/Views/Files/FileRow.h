#pragma once

#include "Progress/AnalysisProgress.h"
#include "VantroqueApp/Model/Files/FileAnalysis.h"

/// What a row of the list says of a file.
namespace vantroque::FileRow {

using Snapshot = AnalysisProgress::Snapshot;

/// The line under the name. `progress` may be null.
QString statusLine(const FileAnalysis& file, const Snapshot* progress);
/// The decision of the review; empty without one.
QString badge(const FileAnalysis& file);
/// What there is to tell beside the name: the line and, of a file that failed, the first words of
/// why.
QString help(const FileAnalysis& file, const Snapshot* progress);
/// All of the row in words.
QString accessibleText(const FileAnalysis& file, const Snapshot* progress);

} // namespace vantroque::FileRow

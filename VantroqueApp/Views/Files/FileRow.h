#pragma once

#include "Progress/AnalysisProgress.h"
#include "VantroqueApp/Model/FileAnalysis.h"

/// What a row of the list says of a file.
namespace vantroque::FileRow {

using Snapshot = AnalysisProgress::Snapshot;

/// The line under the name. `progress` may be null.
QString statusLine(const FileAnalysis& file, const Snapshot* progress);
/// The decision of the review; empty without one.
QString badge(const FileAnalysis& file);
/// All of the row in words.
QString accessibleText(const FileAnalysis& file, const Snapshot* progress);

} // namespace vantroque::FileRow

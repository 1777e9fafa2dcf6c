#pragma once

#include "Records/Report.h"

/// The plain text form of a report. Pure, callable from any thread.
namespace vantroque::TextRenderer {

/// Lines joined by line feeds; the last one is empty. `color` adds the ANSI sequences of a
/// terminal.
QString render(const FileReport& report, bool color);

// What one platform says, or one of its checks, as in the report. Each line ends with a line feed.

QString render(const ProfileReport& report);
/// `advisory`: of a recommendation.
QString render(const CheckResult& row, bool advisory);

/// What stands between the texts of several files.
QString separator();

} // namespace vantroque::TextRenderer

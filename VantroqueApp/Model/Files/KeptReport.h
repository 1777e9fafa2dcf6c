#pragma once

#include "Records/Report.h"

#include <memory>

/// Reports for as long as the list has them.
namespace vantroque::KeptReport {

/// The report, its texts in the same memory as equal ones of other reports: hundreds of rows of
/// each of thousands of films say the same. Any thread.
std::shared_ptr<const FileReport> of(FileReport report);

} // namespace vantroque::KeptReport

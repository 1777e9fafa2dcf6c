#pragma once

#include "VantroqueApp/Model/Analyzing/QueueRun.h"

/// The line that says how far the queue has come.
namespace vantroque::QueueLine {

/// "This run: 12 of 208 · 3 fail · 1 could not be analyzed · about 4 min"; parts of 0 are left out.
QString running(const QueueRun::Counts& counts, std::optional<QueueRun::Seconds> left);
/// "208 files checked · 3 fail"
QString ended(const QueueRun::Counts& counts);

} // namespace vantroque::QueueLine

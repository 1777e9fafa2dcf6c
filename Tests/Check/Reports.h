#pragma once

#include "Builders.h"

// Reports as small as they come.

namespace vantroque {

/// Of a platform whose name is that in every form.
inline ProfileReport reportOf(const QString& name, const std::vector<CheckResult>& checks,
                              bool advisory = false)
{
    ProfileReport report;
    report.profileID = name.toLower();
    report.profileName = name;
    report.profileShortName = name;
    if (advisory)
        report.advisory = true;
    report.checks = checks;
    return report;
}

inline FileReport fileOf(const std::vector<ProfileReport>& profiles)
{
    FileReport file;
    file.fileName = QStringLiteral("spot.mp4");
    file.summaryLine = QStringLiteral("1.2 MB · 30.0s");
    file.profiles = profiles;
    return file;
}

} // namespace vantroque

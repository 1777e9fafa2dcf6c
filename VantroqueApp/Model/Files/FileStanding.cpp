#include "VantroqueApp/Model/Files/FileStanding.h"

#include <algorithm>

namespace vantroque {

namespace {

bool warns(const FileReport& report)
{
    return report.sectionsWarn()
           || std::ranges::any_of(report.profiles, [](const ProfileReport& profile) {
                  return !profile.isAdvisory() && profile.verdict() == Verdict::warn;
              });
}

} // namespace

FileStanding standingOf(const FileAnalysis& file)
{
    if (const FileReport* report = file.report()) {
        const Verdict verdict = report->summaryVerdict();
        return verdict == Verdict::fail                     ? FileStanding::failed
               : verdict == Verdict::warn || warns(*report) ? FileStanding::warned
                                                            : FileStanding::passed;
    }
    if (file.is<FileAnalysis::Failed>())
        return FileStanding::notAnalyzed;
    if (file.is<FileAnalysis::Missing>())
        return FileStanding::missing;
    return file.is<FileAnalysis::Running>() ? FileStanding::running : FileStanding::waiting;
}

} // namespace vantroque

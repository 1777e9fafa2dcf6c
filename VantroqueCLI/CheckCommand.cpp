#include "Check/CaptionCheck.h"
#include "VantroqueCLI/CheckCall.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/CheckRun.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/ProfileChoice.h"
#include "VantroqueCLI/ReportWriter.h"
#include "VantroquePlatform/Spelling/EnchantSpeller.h"

#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// What is wrong with the call itself, if anything.
std::optional<QString> problemWith(const Arguments& arguments)
{
    const std::string format = arguments.value("format", "text");
    if (format != "text" && format != "json" && format != "junit")
        return u"unknown format \"%1\": one of text, json, junit"_s.arg(
            QString::fromStdString(format));
    if (arguments.has("summary") && format != "text")
        return u"--summary has the format text only"_s;
    return std::nullopt;
}

ReportForm formOf(const Arguments& arguments, const OutputTarget& target,
                  const std::vector<Profile>& profiles)
{
    const std::string format = arguments.value("format", "text");
    if (format == "json")
        return CheckReports::json(arguments.has("media"));
    if (format == "junit")
        return CheckReports::junit();
    if (arguments.has("summary"))
        return CheckReports::summary(profiles);
    return CheckReports::text(target.name().empty() && Output::isColorTerminal());
}

/// Whether somebody reads along.
bool isReadAlong(const Arguments& arguments, const OutputTarget& target)
{
    return arguments.value("format", "text") == "text" && target.name().empty()
           && ::isatty(STDOUT_FILENO) == 1;
}

/// The profiles of the call. Without any the files are still analysed, only not scored, and
/// `status` says so.
Result<std::vector<Profile>> profilesOf(const Arguments& arguments, ExitStatus& status)
{
    const auto all = loadProfiles(arguments);
    if (all)
        return chooseProfiles(*all, arguments);
    Output::complain(all.error().description);
    status = ExitStatus::trouble;
    return std::vector<Profile>();
}

Result<ExitStatus> checkAll(const Arguments& arguments)
{
    if (const auto problem = problemWith(arguments))
        return failure(*problem);
    const std::size_t jobs = TRY(CheckCall::jobCount(arguments));
    const auto files = TRY(CheckCall::files(arguments));
    const auto target = TRY(OutputTarget::of(arguments, CheckCall::inputs(arguments, files)));
    ExitStatus status = ExitStatus::passed;
    const auto profiles = TRY(profilesOf(arguments, status));
    const auto captions = TRY(CheckCall::givenCaptions(arguments));
    ReportWriter report(formOf(arguments, target, profiles), target);
    EnchantSpeller speller;
    CheckRun run(arguments, files, jobs, profiles, [&](std::size_t index, CheckedFile& file) {
        if (file.outcome && captions)
            CaptionCheck::add(*captions, file.outcome->media.url, file.outcome->report, speller);
        return report.add(index, file);
    });
    if (isReadAlong(arguments, target))
        report.tellAtOnce([&](const QByteArray& bytes) {
            return run.display().aside([&] { return Output::print(bytes); });
        });
    else
        TRY(report.open());
    status = worse(status, TRY(run.run()));
    // A report in a file must not hide that some file is missing from it.
    if (arguments.has("output"))
        for (const auto& [index, problem] : run.problems())
            Output::complain(problem);
    TRY(report.finish());
    return status;
}

} // namespace

ExitStatus check(const Arguments& arguments)
{
    const auto status = checkAll(arguments);
    if (status)
        return *status;
    Output::complain(status.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque

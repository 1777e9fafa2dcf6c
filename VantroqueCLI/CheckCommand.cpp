#include "Base/Numbers.h"
#include "VantroqueCLI/CaptionCheck.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/CheckRun.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/ProfileChoice.h"
#include "VantroqueCLI/ReportWriter.h"

#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// More at once would only take turns.
constexpr std::int64_t maxJobs = 64;

std::optional<std::size_t> jobCount(const Arguments& arguments)
{
    const auto jobs = Numbers::toInt(QString::fromStdString(arguments.value("jobs", "1")));
    if (!jobs || *jobs < 1 || *jobs > maxJobs)
        return std::nullopt;
    return static_cast<std::size_t>(*jobs);
}

/// What is wrong with the call itself, if anything.
std::optional<QString> problemWith(const Arguments& arguments)
{
    const std::string format = arguments.value("format", "text");
    if (arguments.files().empty())
        return u"no file given"_s;
    if (format != "text" && format != "json" && format != "junit")
        return u"unknown format \"%1\": one of text, json, junit"_s.arg(
            QString::fromStdString(format));
    if (!jobCount(arguments))
        return u"--jobs takes a number from 1 to %1"_s.arg(maxJobs);
    return std::nullopt;
}

/// The captions of --captions, when it is given.
Result<std::optional<LoadedCaptions>> givenCaptions(const Arguments& arguments)
{
    if (!arguments.has("captions"))
        return std::nullopt;
    return TRY(loadCaptions(FileUrl::fromPath(arguments.value("captions", {}))));
}

ReportForm formOf(const Arguments& arguments, const OutputTarget& target)
{
    const std::string format = arguments.value("format", "text");
    if (format == "json")
        return CheckReports::json(arguments.has("media"));
    if (format == "junit")
        return CheckReports::junit();
    return CheckReports::text(target.name().empty() && Output::isColorTerminal());
}

/// Whether somebody reads along.
bool isReadAlong(const Arguments& arguments, const OutputTarget& target)
{
    return arguments.value("format", "text") == "text" && target.name().empty()
           && ::isatty(STDOUT_FILENO) == 1;
}

/// What the call reads.
std::vector<std::string> inputs(const Arguments& arguments)
{
    std::vector<std::string> names = arguments.files();
    for (const std::string& captions : arguments.values("captions"))
        names.push_back(captions);
    return names;
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
    const auto target = TRY(OutputTarget::of(arguments, inputs(arguments)));
    ExitStatus status = ExitStatus::passed;
    const auto profiles = TRY(profilesOf(arguments, status));
    const auto captions = TRY(givenCaptions(arguments));
    ReportWriter report(formOf(arguments, target), target);
    CheckRun run(arguments, *jobCount(arguments), profiles, captions, report);
    if (isReadAlong(arguments, target))
        run.tellAtOnce();
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

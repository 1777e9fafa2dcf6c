#include "Check/CaptionCheck.h"
#include "Tools/Trouble.h"
#include "VantroqueCLI/CheckCall.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/CheckRun.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/LineWriter.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/ProfileChoice.h"
#include "VantroqueCLI/ReportWriter.h"
#include "VantroqueCLI/ResultLine.h"
#include "VantroqueCLI/TextLanguages.h"
#include "VantroquePlatform/Spelling/EnchantSpeller.h"

#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// What is wrong with the call itself, if anything.
std::optional<QString> problemWith(const Arguments& arguments)
{
    const std::string format = arguments.value("format", "text");
    if (format != "text" && format != "json" && format != "jsonl" && format != "junit")
        return u"unknown format \"%1\": one of text, json, jsonl, junit"_s.arg(
            QString::fromStdString(format));
    if (arguments.has("summary") && format != "text")
        return u"--summary has the format text only"_s;
    if (!arguments.has("resume"))
        return std::nullopt;
    if (format != "jsonl")
        return u"--resume has the format jsonl only"_s;
    if (arguments.has("output") || arguments.has("overwrite"))
        return u"--resume names the file and goes on with it: leave out -o and --overwrite"_s;
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

/// The profiles of the call. Without any the files are still analysed, only not scored, and
/// `status` says so; not so where results stay, since they would stand for good.
Result<std::vector<Profile>> profilesOf(const Arguments& arguments, ExitStatus& status)
{
    const auto all = loadProfiles(arguments);
    if (all)
        return chooseProfiles(all->all, arguments);
    if (arguments.value("format", {}) == "jsonl")
        return tl::unexpected(all.error());
    Output::complain(all.error().description);
    status = ExitStatus::trouble;
    return std::vector<Profile>();
}

/// What is told of which files, and where.
struct Call {
    const Arguments& arguments;
    std::vector<std::string> files;
    std::size_t jobs;
    OutputTarget target;
    ExitStatus status = ExitStatus::passed; ///< Of what has happened so far.
    std::vector<Profile> profiles = {};
    std::optional<LoadedCaptions> captions = {};

    static Result<Call> of(const Arguments& arguments)
    {
        const std::size_t jobs = TRY(CheckCall::jobCount(arguments));
        auto files = TRY(CheckCall::files(arguments));
        const auto inputs = CheckCall::inputs(arguments, files);
        auto target = arguments.has("resume")
                          ? TRY(OutputTarget::toResume(arguments.value("resume", {}), inputs))
                          : TRY(OutputTarget::of(arguments, inputs));
        Call call{arguments, std::move(files), jobs, std::move(target)};
        call.profiles = TRY(profilesOf(arguments, call.status));
        call.captions = TRY(CheckCall::givenCaptions(arguments));
        return call;
    }

    /// Whether somebody reads along.
    bool isOnTerminal() const { return target.name().empty() && ::isatty(STDOUT_FILENO) == 1; }

    /// What `tell` makes of the files, with the section on the call's captions.
    CheckRun::Take withCaptions(EnchantSpeller& speller, CheckRun::Take tell) const
    {
        return [this, &speller, tell = std::move(tell)](std::size_t index, CheckedFile& file) {
            if (file.outcome && captions)
                CaptionCheck::add(*captions, file.outcome->media.url, file.outcome->report,
                                  speller);
            return tell(index, file);
        };
    }

    /// A report in a file must not hide that some file is missing from it.
    void complainOf(const std::map<std::size_t, QString>& problems) const
    {
        if (!target.name().empty())
            for (const auto& [index, problem] : problems)
                Output::complain(problem);
    }
};

/// One report on all files, in their order.
Result<ExitStatus> tellTogether(const Call& call)
{
    ReportWriter report(formOf(call.arguments, call.target, call.profiles), call.target);
    EnchantSpeller speller;
    const auto recognizers = startRecognizers(call.arguments, call.profiles);
    CheckRun run(call.arguments, call.files, call.jobs, call.profiles, *recognizers,
                 call.withCaptions(speller, [&](std::size_t index, const CheckedFile& file) {
                     return report.add(index, file);
                 }));
    if (call.isOnTerminal() && call.arguments.value("format", "text") == "text")
        report.tellAtOnce([&](const QByteArray& bytes) {
            return run.display().aside([&] { return Output::print(bytes); });
        });
    else
        TRY(report.open());
    const ExitStatus status = worse(call.status, TRY(run.run()));
    call.complainOf(run.problems());
    TRY(report.finish());
    return status;
}

/// Leaves out of the call what stands in its file, and takes over how it ended.
Result<void> resume(Call& call, LineWriter& lines)
{
    auto standing = TRY(lines.resume());
    if (standing.wasTorn)
        Output::complain(u"%1: cut off a torn last line"_s.arg(call.target.displayName()));
    if (!standing.names.empty())
        Output::complain(u"%1: goes on after the %2 files that stand there"_s.arg(
            call.target.displayName(), QString::number(standing.names.size())));
    std::erase_if(call.files,
                  [&](const std::string& name) { return !standing.names.insert(name).second; });
    call.status = worse(call.status, standing.status);
    return {};
}

/// Whether the line of a file may stand for good. Who ends a call may end its tools first.
bool isFinal(const CheckedFile& file)
{
    if (file.outcome || !Trouble::isOfOthers(file.outcome.error().description))
        return true;
    Output::complain(file.path() + u": its tool was ended by others; not done"_s);
    return false;
}

/// One line a file, as each is done.
Result<ExitStatus> tellInLines(Call call)
{
    LineWriter lines(call.target);
    if (call.arguments.has("resume"))
        TRY(resume(call, lines));
    else
        TRY(lines.begin(call.arguments.has("overwrite")));
    EnchantSpeller speller;
    const auto tell = [&](const CheckedFile& file) -> Result<void> {
        if (!isFinal(file))
            return {};
        return lines.add(
            ResultLine::of(TRY(CheckReports::jsonObject(file, call.arguments.has("media")))));
    };
    const auto recognizers = startRecognizers(call.arguments, call.profiles);
    CheckRun run(call.arguments, call.files, call.jobs, call.profiles, *recognizers,
                 call.withCaptions(speller, [&](std::size_t, const CheckedFile& file) {
                     if (!call.isOnTerminal())
                         return tell(file);
                     return run.display().aside([&] { return tell(file); });
                 }));
    const ExitStatus status = worse(call.status, TRY(run.run()));
    call.complainOf(run.problems());
    return status;
}

Result<ExitStatus> checkAll(const Arguments& arguments)
{
    if (const auto problem = problemWith(arguments))
        return failure(*problem);
    auto call = TRY(Call::of(arguments));
    if (arguments.value("format", {}) == "jsonl")
        return tellInLines(std::move(call));
    return tellTogether(call);
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

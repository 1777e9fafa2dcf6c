#include "Base/Numbers.h"
#include "VantroqueCLI/CaptionCheck.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/ProfileChoice.h"
#include "VantroqueCLI/TerminalProgress.h"
#include "VantroqueCLI/TextLanguages.h"
#include "VantroquePlatform/Spelling/EnchantSpeller.h"

#include <algorithm>
#include <atomic>
#include <thread>

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

/// Analyses the files, several at once if asked; the results stand in the order of the call.
std::vector<CheckedFile> analyseAll(const Arguments& arguments,
                                    const std::vector<Profile>& profiles)
{
    const std::vector<std::string>& names = arguments.files();
    const std::size_t jobs = *jobCount(arguments);
    RecognizerPool recognizers(recognizerStart(textLanguages(arguments)));
    const Analyzer::Options options{.skipSignalPass = arguments.has("skip-signal"),
                                    .includeDetail = arguments.has("detail"),
                                    .recognizers = &recognizers};
    if (!options.skipSignalPass)
        complainIfTextCannotBeRead(recognizers, profiles);
    std::vector<CheckedFile> files(names.size());
    TerminalProgress display(names.size(), arguments.has("verbose"));
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = 0; (i = next++) < names.size();) {
            const FileUrl url = FileUrl::fromPath(names[i]);
            files[i].path = QString::fromStdString(names[i]);
            AnalysisProgress progress([&](const AnalysisProgress::Snapshot& snapshot) {
                display.update(i, url.fileName(), snapshot);
            });
            files[i].outcome = Analyzer::analyze(url, profiles, options, &progress);
            display.finished(i);
        }
    };
    std::vector<std::jthread> helpers;
    for (std::size_t i = 1; i < std::min(jobs, names.size()); ++i)
        helpers.emplace_back(work);
    work();
    helpers.clear(); // joins them
    return files;
}

/// The captions of --captions, when it is given.
Result<std::optional<LoadedCaptions>> givenCaptions(const Arguments& arguments)
{
    if (!arguments.has("captions"))
        return std::nullopt;
    return TRY(loadCaptions(FileUrl::fromPath(arguments.value("captions", {}))));
}

void addCaptions(const LoadedCaptions& captions, std::vector<CheckedFile>& files)
{
    EnchantSpeller speller;
    for (CheckedFile& file : files)
        if (file.outcome)
            CaptionCheck::add(captions, file.outcome->media.url, file.outcome->report, speller);
}

ExitStatus judged(const std::vector<CheckedFile>& files)
{
    ExitStatus status = ExitStatus::passed;
    for (const CheckedFile& file : files)
        if (!file.outcome)
            status = ExitStatus::trouble;
        else if (!file.outcome->report.failingProfiles().empty())
            status = worse(status, ExitStatus::failed);
    return status;
}

Result<void> tell(const std::vector<CheckedFile>& files, const Arguments& arguments)
{
    const std::string format = arguments.value("format", "text");
    const std::string target = arguments.value("output", {});
    if (format == "json")
        return Output::write(target, TRY(CheckReports::json(files, arguments.has("media"))));
    if (format == "junit")
        return Output::write(target, CheckReports::junit(files));
    return Output::write(target,
                         CheckReports::text(files, target.empty() && Output::isColorTerminal()));
}

} // namespace

ExitStatus check(const Arguments& arguments)
{
    if (const auto problem = problemWith(arguments)) {
        Output::complain(*problem);
        return ExitStatus::trouble;
    }
    // Without profiles the files are still analysed, only not scored.
    ExitStatus status = ExitStatus::passed;
    std::vector<Profile> chosen;
    if (const auto all = loadProfiles(arguments)) {
        auto choice = chooseProfiles(*all, arguments);
        if (!choice) {
            Output::complain(choice.error().description);
            return ExitStatus::trouble;
        }
        chosen = *std::move(choice);
    } else {
        Output::complain(all.error().description);
        status = ExitStatus::trouble;
    }

    const auto captions = givenCaptions(arguments);
    if (!captions) {
        Output::complain(captions.error().description);
        return ExitStatus::trouble;
    }
    auto files = analyseAll(arguments, chosen);
    if (*captions)
        addCaptions(**captions, files);
    status = worse(status, judged(files));
    // A report in a file must not hide that some file is missing from it.
    if (arguments.has("output"))
        for (const CheckedFile& file : files)
            if (!file.outcome)
                Output::complain(file.path + u": "_s + file.outcome.error().description);
    if (const auto told = tell(files, arguments); !told) {
        Output::complain(told.error().description);
        status = ExitStatus::trouble;
    }
    return status;
}

} // namespace vantroque

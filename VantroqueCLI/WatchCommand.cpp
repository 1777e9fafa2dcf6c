#include "Base/Numbers.h"
#include "Tools/FFTool.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/FilmReport.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/ProfileChoice.h"
#include "VantroqueCLI/TextLanguages.h"
#include "VantroqueCLI/Watch.h"

#include <csignal>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

Result<Watch::Options> optionsOf(const Arguments& arguments)
{
    constexpr std::int64_t longest = 86'400; // a day
    const auto settle = Numbers::toInt(QString::fromStdString(arguments.value("settle", "10")));
    if (!settle || *settle < 0 || *settle > longest)
        return failure(u"--settle takes seconds from 0 to %1"_s.arg(longest));
    const std::string format = arguments.value("format", "json");
    if (!FilmReport::isFormat(format))
        return failure(u"unknown format \"%1\": one of text, json, junit"_s.arg(
            QString::fromStdString(format)));
    return Watch::Options{std::chrono::seconds(*settle), format, arguments.has("once")};
}

/// A film cannot be blamed for tools that are not there.
Result<void> findTools()
{
    for (const char* tool : {"ffprobe", "ffmpeg"})
        TRY(FFTool::find(tool));
    return {};
}

Result<ExitStatus> watchFolder(const Arguments& arguments)
{
    if (arguments.files().size() != 1 || !arguments.has("done") || !arguments.has("failed"))
        return failure(u"watch takes one folder, --done DIR and --failed DIR"_s);
    auto options = TRY(optionsOf(arguments));
    const auto folder = TRY(WatchedFolder::open(arguments.files()[0]));
    const auto filing = TRY(
        FilmFiling::between(folder, arguments.value("done", {}), arguments.value("failed", {})));
    const auto profiles = TRY(chooseProfiles(TRY(loadProfiles(arguments)).all, arguments));
    TRY(findTools());
    if (!folder.deafness().isEmpty())
        Output::complain(u"%1: looked at every few seconds only: %2"_s.arg(
            QString::fromStdString(folder.path()), folder.deafness()));
    // Who wants to write to a film that is held has the system tell us, which is of no use here.
    std::signal(SIGIO, SIG_IGN);
    const auto recognizers = startRecognizers(arguments, profiles);
    const bool isOnce = options.isOnce;
    Watch watch(arguments, folder, filing, profiles, *recognizers, std::move(options));
    return isOnce ? watch.once() : watch.forever();
}

} // namespace

ExitStatus watch(const Arguments& arguments)
{
    const auto status = watchFolder(arguments);
    if (status)
        return *status;
    Output::complain(status.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque

#include "Analysis/Analyzer.h"
#include "Export/MarkerExport.h"
#include "Review/ReviewStore.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/ProfileChoice.h"
#include "VantroqueCLI/TextLanguages.h"

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

Result<MarkerExport::Format> chosenFormat(const Arguments& arguments)
{
    static constexpr auto names = enumNames(MarkerExport::Format{});
    const auto found = std::ranges::find(names, arguments.value("format", {}));
    if (found == names.end())
        return failure(u"markers takes --format avid, premiere, resolve or csv"_s);
    return static_cast<MarkerExport::Format>(found - names.begin());
}

Result<Analyzer::Analysis> analysed(const FileUrl& url, const Arguments& arguments)
{
    const auto profiles = TRY(chooseProfiles(TRY(loadProfiles(arguments)).all, arguments));
    RecognizerPool recognizers(recognizerStart(textLanguages(arguments)));
    const bool skips = arguments.has("skip-signal");
    if (!skips)
        complainIfTextCannotBeRead(recognizers, profiles);
    auto analysis =
        Analyzer::analyze(url, profiles, {.skipSignalPass = skips, .recognizers = &recognizers});
    if (!analysis)
        return failure(url.displayPath() + u": "_s + analysis.error().description);
    return *std::move(analysis);
}

Result<void> writeMarkers(const Arguments& arguments)
{
    const auto format = TRY(chosenFormat(arguments));
    if (arguments.files().size() != 1)
        return failure(u"markers takes one file"_s);
    const auto target = TRY(OutputTarget::of(arguments, arguments.files()));
    const FileUrl url = FileUrl::fromPath(arguments.files().front());
    const auto analysis = TRY(analysed(url, arguments));
    const auto review = ReviewStore::load(url);
    const MarkerContext context = MarkerExport::context(analysis.media);
    const auto markers = MarkerExport::markers(
        {.review = review ? &*review : nullptr, .report = &analysis.report}, context.frameRate);
    if (markers.empty())
        Output::complain(u"this file has no notes or findings yet"_s);
    return target.write(MarkerExport::write(markers, format, context).toUtf8());
}

} // namespace

ExitStatus markers(const Arguments& arguments)
{
    const auto written = writeMarkers(arguments);
    if (written)
        return ExitStatus::passed;
    Output::complain(written.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque

#include "Base/Json.h"
#include "Captions/CaptionHealth.h"
#include "Captions/CaptionLoader.h"
#include "Probe/Prober.h"
#include "VantroqueCLI/CaptionCheck.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroquePlatform/EnchantSpeller.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// What is wrong with the call itself, if anything.
std::optional<QString> problemWith(const Arguments& arguments)
{
    const std::string format = arguments.value("format", "text");
    if (arguments.files().size() != 1)
        return u"captions takes one file"_s;
    if (format != "text" && format != "json")
        return u"unknown format \"%1\": one of text, json"_s.arg(QString::fromStdString(format));
    return std::nullopt;
}

struct Checked {
    CaptionCheck check;
    CaptionHealth health;
};

/// Over the picture of --media, of the media file that the captions came with, or over none.
Result<Checked> checked(const FileUrl& url, const Arguments& arguments)
{
    const LoadedCaptions captions = TRY(loadCaptions(url));
    std::optional<FileUrl> media;
    if (arguments.has("media"))
        media = FileUrl::fromPath(arguments.value("media", {}));
    else if (!CaptionLoader::isSidecar(url))
        media = url;
    const MediaInfo info = media ? TRY(Prober::probe(*media)) : MediaInfo();
    const double duration = info.video ? info.durationSeconds : 0;
    const double frameRate = info.video ? info.video->nominalFrameRate : 0;
    EnchantSpeller speller;
    const auto check =
        CaptionCheck::of(captions, media.value_or(url), duration, frameRate, speller);
    return Checked{check, CaptionHealth::of(check.track, duration)};
}

Result<QByteArray> json(const Checked& checked)
{
    const CaptionTrack& track = checked.check.track;
    const QJsonObject encodedTrack{
        {u"format"_s, RecordCoding::key(enumName(track.format()))},
        {u"shift"_s, track.shift()},
        {u"cues"_s, TRY(RecordCoding::encode(track.cues()))},
    };
    return Json::print(QJsonObject{
        {u"track"_s, encodedTrack},
        {u"health"_s, TRY(RecordCoding::encode(checked.health))},
        {u"report"_s, TRY(RecordCoding::encode(checked.check.section))},
    });
}

QByteArray text(const FileUrl& url, const Checked& checked)
{
    FileReport report;
    report.fileName = url.fileName();
    report.summaryLine = RecordCoding::key(enumName(checked.check.track.format()));
    report.sections = {checked.check.section};
    return CheckReports::text({{url.displayPath(), Analyzer::Analysis{{}, report}}},
                              Output::isColorTerminal());
}

Result<void> tell(const FileUrl& url, const Result<Checked>& checked, bool asJson)
{
    if (checked)
        return Output::write({}, asJson ? TRY(json(*checked)) : text(url, *checked));
    if (!asJson)
        return tl::unexpected(checked.error());
    return Output::write({}, Json::print(QJsonObject{{u"error"_s, checked.error().description}}));
}

} // namespace

ExitStatus captions(const Arguments& arguments)
{
    if (const auto problem = problemWith(arguments)) {
        Output::complain(*problem);
        return ExitStatus::trouble;
    }
    const FileUrl url = FileUrl::fromPath(arguments.files().front());
    const auto outcome = checked(url, arguments);
    const auto told = tell(url, outcome, arguments.value("format", "text") == "json");
    if (!told)
        Output::complain(told.error().description);
    return outcome && told ? ExitStatus::passed : ExitStatus::trouble;
}

} // namespace vantroque

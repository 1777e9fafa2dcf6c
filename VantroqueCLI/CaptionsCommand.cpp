#include "Base/Json.h"
#include "Base/PathText.h"
#include "Captions/CaptionLoader.h"
#include "Check/CaptionCheck.h"
#include "Probe/Prober.h"
#include "VantroqueCLI/CaptionSource.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroquePlatform/Spelling/EnchantSpeller.h"

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

/// Over the picture of --media, of the media file that the captions came with, or over none.
Result<CaptionCheck> checked(const FileUrl& url, const Arguments& arguments)
{
    std::optional<MediaInfo> media;
    if (!CaptionLoader::isSidecar(url))
        media = TRY(Prober::probe(url));
    const LoadedCaptions captions = TRY(media ? loadCaptions(*media) : loadCaptions(url));
    if (arguments.has("media"))
        media = TRY(Prober::probe(FileUrl::fromPath(arguments.value("media", {}))));
    const bool hasPicture = media && media->video;
    EnchantSpeller speller;
    return CaptionCheck::of(captions, media ? media->url : url,
                            hasPicture ? media->durationSeconds : 0,
                            hasPicture ? media->video->nominalFrameRate : 0, speller);
}

/// The object with what leads back to the file, when its name as text would not.
QByteArray printed(QJsonObject object, const FileUrl& url)
{
    if (const auto bytes = PathText::base64(url.path()))
        object.insert(u"pathBytes"_s, *bytes);
    return Json::print(object);
}

Result<QByteArray> json(const FileUrl& url, const CaptionCheck& check)
{
    const CaptionTrack& track = check.track;
    const QJsonObject encodedTrack{
        {u"format"_s, RecordCoding::key(enumName(track.format()))},
        {u"shift"_s, track.shift()},
        {u"cues"_s, TRY(RecordCoding::encode(track.cues()))},
    };
    return printed({{u"track"_s, encodedTrack},
                    {u"health"_s, TRY(RecordCoding::encode(check.health))},
                    {u"report"_s, TRY(RecordCoding::encode(check.section))}},
                   url);
}

Result<QByteArray> text(const FileUrl& url, const CaptionCheck& check)
{
    FileReport report;
    report.fileName = url.fileName();
    report.summaryLine = RecordCoding::key(enumName(check.track.format()));
    report.sections = {check.section};
    const ReportForm form = CheckReports::text(Output::isColorTerminal());
    return form.head + TRY(form.part({url.path(), Analyzer::Analysis{{}, report}})) + form.tail;
}

Result<void> tell(const FileUrl& url, const Result<CaptionCheck>& checked, bool asJson)
{
    if (checked)
        return Output::print(TRY(asJson ? json(url, *checked) : text(url, *checked)));
    if (!asJson)
        return tl::unexpected(checked.error());
    return Output::print(printed({{u"error"_s, checked.error().description}}, url));
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

#include "VantroqueCLI/CheckReports.h"

#include "Base/Json.h"
#include "Base/PathText.h"
#include "Base/Text.h"
#include "Check/ProblemsText.h"
#include "Check/TextRenderer.h"

namespace vantroque {

using namespace Qt::StringLiterals;

Verdict CheckedFile::verdict(const FileReport& report)
{
    if (!report.profiles.empty())
        return report.summaryVerdict();
    return report.sectionsWarn() ? Verdict::warn : Verdict::info;
}

QString CheckedFile::verdictLine() const
{
    if (!outcome)
        return u"error  %1: could not be analysed"_s.arg(path());
    const FileReport& report = outcome->report;
    return u"%1  %2: %3"_s.arg(Text::utf8(enumName(verdict(report))), path(),
                               report.summaryHeadline());
}

ExitStatus CheckedFile::status() const
{
    if (!outcome)
        return ExitStatus::trouble;
    return outcome->report.failingProfiles().empty() ? ExitStatus::passed : ExitStatus::failed;
}

namespace CheckReports {

namespace {

/// The report without what a terminal would act on. Names, tags, profiles and words in the picture
/// may hold it, and every text of a row may quote them.
FileReport displayable(FileReport report)
{
    report.fileName = Text::printable(report.fileName);
    report.summaryLine = Text::printable(report.summaryLine);
    const auto clean = [](std::vector<ProfileReport>& rows) {
        for (ProfileReport& profile : rows) {
            profile.profileName = Text::printable(profile.profileName);
            profile.profileShortName = Text::printable(profile.profileShortName);
            for (CheckResult& row : profile.checks) {
                row.title = Text::printable(row.title); // captions are titled by their file
                row.measured = Text::printable(row.measured);
                row.expected = Text::printable(row.expected);
                if (row.fix)
                    row.fix = Text::printable(*row.fix);
            }
        }
    };
    clean(report.profiles);
    if (report.sections)
        clean(*report.sections);
    return report;
}

/// An error with its line ends, under the name of its file.
QString lines(const QString& error)
{
    return Text::joined(error.trimmed().split(u'\n'), u"\n  "_s, Text::printable);
}

using Renderer = std::function<QString(const FileReport&)>;

QByteArray textOf(const CheckedFile& file, const Renderer& render)
{
    if (file.outcome)
        return render(displayable(file.outcome->report)).toUtf8();
    return u"%1    could not be analysed\n  %2\n"_s
        .arg(Text::printable(file.path()), lines(file.outcome.error().description))
        .toUtf8();
}

/// What Json::print gives an object that stands in a list of another one.
const QByteArray inList = "\n        ";

} // namespace

Result<QJsonObject> jsonObject(const CheckedFile& file, bool withMedia)
{
    QJsonObject object{{u"path"_s, file.path()},
                       {u"status"_s, file.outcome ? u"done"_s : u"failed"_s}};
    if (const auto bytes = PathText::base64(file.name))
        object.insert(u"pathBytes"_s, *bytes);
    if (file.outcome) {
        object.insert(u"report"_s, TRY(RecordCoding::encode(file.outcome->report)));
        if (withMedia)
            object.insert(u"media"_s, TRY(RecordCoding::encode(file.outcome->media)));
    } else {
        object.insert(u"error"_s, file.outcome.error().description);
    }
    return object;
}

QByteArray jsonPart(const QJsonObject& object)
{
    return Json::print(object).trimmed().replace("\n", inList);
}

ReportForm text(bool color)
{
    const Renderer render = [color](const FileReport& report) {
        return TextRenderer::render(report, color);
    };
    return {{}, TextRenderer::separator().toUtf8(), "\n", [render](const CheckedFile& file) {
                return textOf(file, render);
            }};
}

ReportForm summary(std::vector<Profile> profiles)
{
    const Renderer render = [profiles = std::move(profiles)](const FileReport& report) {
        return ProblemsText::render(report, profiles);
    };
    return {{}, "\n", {}, [render](const CheckedFile& file) { return textOf(file, render); }};
}

ReportForm json(bool withMedia)
{
    return {"{\n    \"files\": [" + inList, "," + inList,
            "\n    ],\n    \"version\": \"" VANTROQUE_VERSION "\"\n}\n",
            [withMedia](const CheckedFile& file) -> Result<QByteArray> {
                return jsonPart(TRY(jsonObject(file, withMedia)));
            }};
}

} // namespace CheckReports
} // namespace vantroque

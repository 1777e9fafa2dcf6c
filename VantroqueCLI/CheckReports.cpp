#include "VantroqueCLI/CheckReports.h"

#include "Base/Json.h"
#include "Base/Text.h"
#include "Check/TextRenderer.h"

namespace vantroque::CheckReports {

using namespace Qt::StringLiterals;

namespace {

/// The report without what a terminal would act on. Names, tags and words in the picture may hold
/// it, and every text of a row may quote them.
FileReport displayable(FileReport report)
{
    report.fileName = Text::printable(report.fileName);
    const auto clean = [](std::vector<ProfileReport>& rows) {
        for (ProfileReport& profile : rows)
            for (CheckResult& row : profile.checks) {
                row.title = Text::printable(row.title); // captions are titled by their file
                row.measured = Text::printable(row.measured);
                row.expected = Text::printable(row.expected);
                if (row.fix)
                    row.fix = Text::printable(*row.fix);
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

} // namespace

QByteArray text(const std::vector<CheckedFile>& files, bool color)
{
    QStringList texts;
    for (const CheckedFile& file : files)
        texts << (file.outcome
                      ? TextRenderer::render(displayable(file.outcome->report), color)
                      : u"%1    could not be analysed\n  %2\n"_s.arg(
                          Text::printable(file.path), lines(file.outcome.error().description)));
    return (texts.join(TextRenderer::separator()) + u'\n').toUtf8();
}

Result<QByteArray> json(const std::vector<CheckedFile>& files, bool withMedia)
{
    QJsonArray list;
    for (const CheckedFile& file : files) {
        QJsonObject object{{u"path"_s, file.path},
                           {u"status"_s, file.outcome ? u"done"_s : u"failed"_s}};
        if (file.outcome) {
            object.insert(u"report"_s, TRY(RecordCoding::encode(file.outcome->report)));
            if (withMedia)
                object.insert(u"media"_s, TRY(RecordCoding::encode(file.outcome->media)));
        } else {
            object.insert(u"error"_s, file.outcome.error().description);
        }
        list.append(object);
    }
    return Json::print(
        QJsonObject{{u"version"_s, QStringLiteral(VANTROQUE_VERSION)}, {u"files"_s, list}});
}

} // namespace vantroque::CheckReports

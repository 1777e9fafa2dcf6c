#include "Base/Csv.h"
#include "Base/Text.h"
#include "VantroqueCLI/CheckCall.h"
#include "VantroqueCLI/Collection.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/ReportWriter.h"

#include <limits>
#include <unordered_set>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> problemWith(const Arguments& arguments)
{
    const std::string format = arguments.value("format", "text");
    if (format != "text" && format != "json" && format != "junit" && format != "table")
        return u"unknown format \"%1\": one of text, json, junit, table"_s.arg(
            QString::fromStdString(format));
    if (arguments.files().empty())
        return u"no file with results given"_s;
    return std::nullopt;
}

/// How a file of the collection is told, and what stands around all.
struct Form {
    ReportForm frame;
    std::function<Result<QByteArray>(const WrittenResult&)> part;
};

/// An object tells its version where it is not that of the document.
QByteArray jsonPart(const WrittenResult& result)
{
    QJsonObject object = result.object;
    if (result.version != QStringLiteral(VANTROQUE_VERSION))
        object.insert(u"version"_s, result.version);
    return CheckReports::jsonPart(object);
}

QByteArray tableLine(const CheckedFile& file)
{
    QStringList fields{Csv::text(file.path())};
    if (file.outcome) {
        const FileReport& report = file.outcome->report;
        fields << u"done"_s << Text::utf8(enumName(CheckedFile::verdict(report)))
               << QString::number(report.failingProfiles().size()) << QString();
    } else {
        fields << u"failed"_s << QString() << QString()
               << Csv::text(file.outcome.error().description);
    }
    return Csv::line(fields).toUtf8() + '\n';
}

Form formOf(const std::string& format)
{
    const auto ofFile = [](const ReportForm& form) {
        return Form{form,
                    [part = form.part](const WrittenResult& result) { return part(result.file); }};
    };
    if (format == "json")
        return {CheckReports::json(false), jsonPart};
    if (format == "junit")
        return ofFile(CheckReports::junit());
    if (format == "table")
        return ofFile({"path,status,verdict,failing_profiles,error\n", {}, {}, tableLine});
    // Of those that were analysed, only how many.
    return ofFile({{}, {}, {}, [text = CheckReports::text(false).part](const CheckedFile& file) {
                       return file.outcome ? Result<QByteArray>(QByteArray()) : text(file);
                   }});
}

/// The list, and which of its names are missing.
struct Wanted {
    std::vector<std::string> names;
    QStringList missing = {};
    QStringList unasked = {}; ///< Results of files that are not in it.

    void compare(const Collection& collection)
    {
        if (names.empty())
            return;
        std::unordered_set<std::string_view> different;
        for (const std::string& name : names)
            if (different.insert(name).second && !collection.has(name))
                missing.append(QString::fromStdString(name));
        collection.eachName([&](const std::string& name) {
            if (!different.contains(name))
                unasked.append(QString::fromStdString(name));
        });
        unasked.sort();
    }
};

/// A heading with its lines below it, `most` at most; nothing without lines.
QString section(const QString& heading, const QStringList& lines, qsizetype most)
{
    if (lines.isEmpty())
        return {};
    QString text = u"%1: %2\n"_s.arg(heading, QString::number(lines.size()));
    for (const QString& line : lines.first(qMin(most, lines.size())))
        text += u"  "_s + Text::printable(line) + u'\n';
    if (lines.size() > most)
        text += u"  and %1 more, which --format text lists\n"_s.arg(lines.size() - most);
    return text;
}

/// What is not as it should be.
QString flaws(const Collection& collection, const Wanted& wanted, qsizetype most)
{
    QStringList twice;
    for (const std::string& name : collection.twice())
        twice.append(QString::fromStdString(name));
    QStringList versions;
    for (const auto& [version, count] : collection.versions())
        if (version != QStringLiteral(VANTROQUE_VERSION))
            versions.append(
                u"%1: %2 file%3"_s.arg(version, QString::number(count), Text::plural(count)));
    return section(u"missing"_s, wanted.missing, most)
           + section(u"not in the list"_s, wanted.unasked, most)
           + section(u"there more than once, and kept once"_s, twice, most)
           + section(u"cannot be read"_s, collection.unreadable(), most)
           + section(u"torn, as a check that was killed leaves it"_s, collection.torn(), most)
           + section(u"checked by other versions of the program"_s, versions, most);
}

/// How many files there are of each kind.
QString summary(const Collection& collection, const Wanted& wanted)
{
    const auto count = static_cast<qint64>(collection.fileCount());
    QStringList kinds;
    for (const auto& [verdict, files] : collection.verdicts())
        kinds.append(u"%1 %2"_s.arg(QString::number(files), Text::utf8(enumName(verdict))));
    if (collection.failedCount() > 0)
        kinds.append(u"%1 could not be analysed"_s.arg(collection.failedCount()));
    QString text = u"%1 file%2"_s.arg(QString::number(count), Text::plural(count));
    if (!kinds.isEmpty())
        text += u": "_s + kinds.join(u", "_s);
    if (!wanted.names.empty())
        text += u"; %1 missing"_s.arg(wanted.missing.size());
    return text + u'\n';
}

Result<ExitStatus> collectAll(const Arguments& arguments)
{
    if (const auto problem = problemWith(arguments))
        return failure(*problem);
    const std::string format = arguments.value("format", "text");
    const auto parts = TRY(Parts::files(arguments.files()));
    Wanted wanted{TRY(CheckCall::listed(arguments))};
    const auto target = TRY(OutputTarget::of(arguments, CheckCall::inputs(arguments, parts)));

    const Form form = formOf(format);
    ReportWriter report(form.frame, target);
    if (target.name().empty())
        report.tellAtOnce([](const QByteArray& bytes) { return Output::print(bytes); });
    else
        TRY(report.open());
    std::size_t next = 0;
    Collection collection([&](const WrittenResult& result) -> Result<void> {
        return report.add(next++, TRY(form.part(result)));
    });
    for (const std::string& part : parts)
        TRY(collection.add(part));
    TRY(collection.finish());
    wanted.compare(collection);

    const bool isText = format == "text";
    const QString rest =
        flaws(collection, wanted, isText ? std::numeric_limits<qsizetype>::max() : qsizetype{20});
    if (isText)
        TRY(report.add(next, (rest + summary(collection, wanted)).toUtf8()));
    else if (!rest.isEmpty())
        Output::complain(rest);
    if (collection.fileCount() == 0 && !isText)
        return failure(u"there are no results in what was named"_s);
    TRY(report.finish());
    const bool isWhole = wanted.missing.isEmpty() && collection.fileCount() > 0;
    return isWhole ? collection.status() : ExitStatus::trouble;
}

} // namespace

ExitStatus collect(const Arguments& arguments)
{
    const auto status = collectAll(arguments);
    if (status)
        return *status;
    Output::complain(status.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque

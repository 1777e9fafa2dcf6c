#include "VantroqueApp/Views/Files/FileRow.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "VantroqueApp/Views/Style/Icons.h"

#include <QStringList>

namespace vantroque::FileRow {

using namespace Qt::StringLiterals;

namespace {

QString runningLine(const Snapshot* progress)
{
    if (progress == nullptr || progress->fraction <= 0)
        return u"Analyzing"_s;
    return u"Analyzing %1%"_s.arg(Numbers::roundedToInt(progress->fraction * 100));
}

} // namespace

QString statusLine(const FileAnalysis& file, const Snapshot* progress)
{
    if (const FileReport* report = file.report()) {
        constexpr std::size_t maxNamed = 2;
        const QString line = report->summarySubhead(maxNamed);
        return line.isEmpty() ? report->summaryHeadline() : line;
    }
    if (file.is<FileAnalysis::Failed>())
        return u"Could not analyze"_s;
    if (file.is<FileAnalysis::Running>())
        return runningLine(progress);
    return file.is<FileAnalysis::Missing>() ? u"File moved or deleted"_s : u"Waiting"_s;
}

QString badge(const FileAnalysis& file)
{
    return file.signOff ? ReviewSignOff::label(file.signOff->decision) : QString();
}

QString help(const FileAnalysis& file, const Snapshot* progress)
{
    constexpr qsizetype longest = 120; // a line under the pointer is not broken
    QStringList lines{file.url.displayPath(), statusLine(file, progress)};
    if (const auto* failed = std::get_if<FileAnalysis::Failed>(&file.status))
        lines << Text::firstCharacters(failed->reason.section(u'\n', 0, 0), longest);
    return lines.join(u'\n');
}

QString accessibleText(const FileAnalysis& file, const Snapshot* progress)
{
    QStringList parts{file.url.fileName()};
    if (const FileReport* report = file.report())
        parts << Icons::word(Icons::signOf(*report));
    parts << statusLine(file, progress);
    if (file.signOff)
        parts << badge(file);
    return parts.join(u", "_s);
}

} // namespace vantroque::FileRow

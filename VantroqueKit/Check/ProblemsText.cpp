#include "Check/ProblemsText.h"

#include "Base/Text.h"
#include "Base/Timecode.h"

#include <QStringList>

namespace vantroque::ProblemsText {

using namespace Qt::StringLiterals;

namespace {

QString mark(Verdict verdict)
{
    return verdict == Verdict::fail ? u"XX"_s : u"!!"_s;
}

void append(QStringList& lines, const Problem& problem, double frameRate)
{
    constexpr qsizetype titleWidth = 22;
    const QString where =
        problem.moment ? u" at "_s + Timecode(problem.moment->frame, frameRate).text() : QString();
    lines << u"    %1 %2 %3%4"_s.arg(mark(problem.verdict), Text::fitted(problem.title, titleWidth),
                                     problem.whose(), where);
    std::optional<QString> lastFix;
    for (const Problem::Limit& limit : problem.limits) {
        const auto name = [](const Problem::Platform& platform) { return platform.name; };
        const QString who = limit.platforms.empty()
                                ? QString()
                                : u": "_s + Text::joined(limit.platforms, u", "_s, name);
        lines << u"       %1 -> %2%3"_s.arg(limit.measured, limit.expected, who);
        if (limit.fix && limit.fix != lastFix)
            lines << u"       fix: "_s + *limit.fix;
        lastFix = limit.fix;
    }
}

} // namespace

QString render(const Problem& problem, double frameRate)
{
    QStringList lines;
    append(lines, problem, frameRate);
    return lines.join(u'\n') + u'\n';
}

QString render(const FileReport& report, const std::vector<Profile>& profiles)
{
    const auto problems = Problems::of(report);
    QStringList lines{u"%1    %2"_s.arg(report.fileName, report.summaryLine),
                      u"  "_s + report.summaryHeadline()};
    lines << u"  "_s + (problems.empty() ? u"No problems"_s : Problems::headline(problems));
    if (const auto conflict = Problems::conflict(profiles))
        lines << u"  "_s + *conflict;
    lines << QString();
    const double rate = report.video ? report.video->frameRate : 0;
    for (const Problem& problem : problems)
        append(lines, problem, rate);
    return lines.join(u'\n') + u'\n';
}

} // namespace vantroque::ProblemsText

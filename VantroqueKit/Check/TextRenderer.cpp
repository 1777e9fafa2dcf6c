#include "Check/TextRenderer.h"

#include "Base/Text.h"
#include "Check/ReportWords.h"

#include <QStringList>

namespace vantroque::TextRenderer {

using namespace Qt::StringLiterals;

namespace {

/// Codes of ECMA-48's "select graphic rendition".
enum class Style { plain = 0, bold = 1, red = 31, green = 32, yellow = 33 };

struct Piece {
    QString text;
    Style style = Style::plain;
};

QString styled(const Piece& piece, bool color)
{
    if (!color || piece.style == Style::plain)
        return piece.text;
    return u"\u001b[%1m%2\u001b[0m"_s.arg(QString::number(static_cast<int>(piece.style)),
                                          piece.text);
}

Style styleOf(Verdict verdict)
{
    switch (verdict) {
    case Verdict::pass: return Style::green;
    case Verdict::warn: return Style::yellow;
    case Verdict::fail: return Style::red;
    case Verdict::info: break;
    }
    return Style::plain;
}

Piece headingWord(const ProfileReport& report)
{
    const ReportWords::Word word = ReportWords::of(report);
    return {word.text, styleOf(word.verdict)};
}

Piece mark(Verdict verdict, bool advisory)
{
    const Verdict shown = ProfileReport::displayVerdict(verdict, advisory);
    switch (shown) {
    case Verdict::pass: return {u"ok"_s, styleOf(shown)};
    case Verdict::warn: return {u"!!"_s, styleOf(shown)};
    case Verdict::fail: return {u"XX"_s, styleOf(shown)};
    case Verdict::info: break;
    }
    return {u"--"_s};
}

void appendRow(QStringList& lines, const CheckResult& row, bool advisory, bool color)
{
    constexpr qsizetype titleWidth = 22;
    lines << u"    %1 %2 %3"_s.arg(styled(mark(row.verdict, advisory), color),
                                   Text::fitted(row.title, titleWidth), row.measured);
    if (row.verdict != Verdict::warn && row.verdict != Verdict::fail)
        return;
    lines << u"       expected: "_s + row.expected;
    if (row.fix)
        lines << u"       fix: "_s + *row.fix;
}

void appendReport(QStringList& lines, const ProfileReport& report, bool color)
{
    const QString name =
        report.profileName.toUpper() + (report.inferred ? u" (spec inferred)"_s : QString());
    lines << u"  %1  %2"_s.arg(styled({name, Style::bold}, color),
                               styled(headingWord(report), color));
    for (const CheckResult& row : report.checks)
        appendRow(lines, row, report.isAdvisory(), color);
    lines << QString();
}

} // namespace

QString render(const FileReport& report, bool color)
{
    QStringList lines{
        u"%1    %2"_s.arg(styled({report.fileName, Style::bold}, color), report.summaryLine)};
    if (report.measurements)
        if (const auto figures = ReportWords::measurements(*report.measurements);
            !figures.isEmpty())
            lines << u"  "_s + figures;
    lines << QString();
    for (const ProfileReport& row : report.allRows())
        appendReport(lines, row, color);
    return lines.join(u'\n');
}

QString render(const ProfileReport& report)
{
    QStringList lines;
    appendReport(lines, report, false);
    return lines.join(u'\n');
}

QString render(const CheckResult& row, bool advisory)
{
    QStringList lines;
    appendRow(lines, row, advisory, false);
    return lines.join(u'\n') + u'\n';
}

QString separator()
{
    return u'\n' + QString(72, u'-') + u"\n\n"_s;
}

} // namespace vantroque::TextRenderer

#include "Check/TextRenderer.h"

#include "Base/Numbers.h"
#include "Base/Text.h"

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

Piece headingWord(const ProfileReport& report)
{
    const bool passed = report.verdict() == Verdict::pass;
    if (report.profileID == u"signal"_s)
        return passed ? Piece{u"OK"_s, Style::green} : Piece{u"REVIEW"_s, Style::yellow};
    if (report.isAdvisory())
        return passed ? Piece{u"MEETS"_s, Style::green} : Piece{u"BELOW"_s, Style::yellow};
    switch (report.verdict()) {
    case Verdict::pass: return {u"PASS"_s, Style::green};
    case Verdict::warn: return {u"PASS*"_s, Style::yellow};
    case Verdict::fail: return {u"FAIL"_s, Style::red};
    case Verdict::info: break;
    }
    return {u"··"_s};
}

Piece mark(Verdict verdict, bool advisory)
{
    switch (ProfileReport::displayVerdict(verdict, advisory)) {
    case Verdict::pass: return {u"ok"_s, Style::green};
    case Verdict::warn: return {u"!!"_s, Style::yellow};
    case Verdict::fail: return {u"XX"_s, Style::red};
    case Verdict::info: break;
    }
    return {u"--"_s};
}

QStringList measurementParts(const Measurements& measurements)
{
    QStringList parts;
    if (measurements.integratedLKFS)
        parts << u"loudness %1 LKFS"_s.arg(Numbers::fixed(*measurements.integratedLKFS, 1));
    if (measurements.truePeakDb)
        parts << u"true peak %1 dBTP"_s.arg(Numbers::fixed(*measurements.truePeakDb, 1));
    if (measurements.loudnessRangeLU)
        parts << u"LRA %1 LU"_s.arg(Numbers::fixed(*measurements.loudnessRangeLU, 1));
    if (measurements.phaseMean)
        parts << u"correlation "_s + Numbers::signedFixed(*measurements.phaseMean, 2);
    if (measurements.levelsYMinPercent && measurements.levelsYMaxPercent)
        parts << u"luma %1–%2%"_s.arg(Numbers::fixed(*measurements.levelsYMinPercent, 0),
                                      Numbers::fixed(*measurements.levelsYMaxPercent, 0));
    return parts;
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
        if (const auto parts = measurementParts(*report.measurements); !parts.isEmpty())
            lines << u"  "_s + parts.join(u" · "_s);
    lines << QString();
    for (const ProfileReport& row : report.allRows())
        appendReport(lines, row, color);
    return lines.join(u'\n');
}

QString separator()
{
    return u'\n' + QString(72, u'-') + u"\n\n"_s;
}

} // namespace vantroque::TextRenderer

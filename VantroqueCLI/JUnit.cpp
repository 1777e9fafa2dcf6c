#include "VantroqueCLI/CheckReports.h"

#include "Base/PlainText.h"
#include "Base/Text.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace vantroque::CheckReports {

using namespace Qt::StringLiterals;

namespace {

/// Without the characters that XML 1.0 cannot hold or that a terminal acts on, which file names,
/// tags and profiles may.
QString xmlText(QString text)
{
    for (QChar& c : text)
        if ((PlainText::steersTerminals(c) && c != u'\t' && c != u'\n' && c != u'\r')
            || c.unicode() >= 0xFFFE)
            c = QChar::ReplacementCharacter;
    return text;
}

bool isFailure(const ProfileReport& report, const CheckResult& row)
{
    return row.verdict == Verdict::fail && !report.isAdvisory();
}

QString details(const CheckResult& row)
{
    QString text = u"%1: measured %2, expected %3"_s.arg(Text::utf8(enumName(row.verdict)),
                                                         row.measured, row.expected);
    if (row.fix)
        text += u"\nfix: "_s + *row.fix;
    return xmlText(text);
}

void writeCase(QXmlStreamWriter& xml, const ProfileReport& report, const CheckResult& row)
{
    xml.writeStartElement(u"testcase"_s);
    xml.writeAttribute(u"classname"_s, xmlText(report.profileName));
    xml.writeAttribute(u"name"_s, xmlText(row.title));
    xml.writeAttribute(u"time"_s, u"0"_s);
    if (isFailure(report, row)) {
        xml.writeStartElement(u"failure"_s);
        xml.writeAttribute(u"message"_s, xmlText(row.measured));
        xml.writeAttribute(u"type"_s, xmlText(row.id));
        xml.writeCharacters(details(row));
        xml.writeEndElement();
    } else if (row.verdict != Verdict::pass) {
        xml.writeTextElement(u"system-out"_s, details(row));
    }
    xml.writeEndElement();
}

void writeSuite(QXmlStreamWriter& xml, const CheckedFile& file)
{
    qsizetype cases = 0;
    qsizetype failures = 0;
    const auto rows = file.outcome ? file.outcome->report.allRows() : std::vector<ProfileReport>();
    for (const ProfileReport& report : rows) {
        cases += static_cast<qsizetype>(report.checks.size());
        failures += std::ranges::count_if(
            report.checks, [&](const CheckResult& row) { return isFailure(report, row); });
    }
    xml.writeStartElement(u"testsuite"_s);
    xml.writeAttribute(u"name"_s, xmlText(file.path()));
    xml.writeAttribute(u"tests"_s, QString::number(file.outcome ? cases : 1));
    xml.writeAttribute(u"failures"_s, QString::number(failures));
    xml.writeAttribute(u"errors"_s, file.outcome ? u"0"_s : u"1"_s);
    xml.writeAttribute(u"skipped"_s, u"0"_s);
    xml.writeAttribute(u"time"_s, u"0"_s);
    for (const ProfileReport& report : rows)
        for (const CheckResult& row : report.checks)
            writeCase(xml, report, row);
    if (!file.outcome) {
        xml.writeStartElement(u"testcase"_s);
        xml.writeAttribute(u"classname"_s, u"analysis"_s);
        xml.writeAttribute(u"name"_s, u"Analysis"_s);
        xml.writeAttribute(u"time"_s, u"0"_s);
        xml.writeStartElement(u"error"_s);
        xml.writeAttribute(u"message"_s, xmlText(file.outcome.error().description.trimmed()));
        xml.writeAttribute(u"type"_s, u"analysis"_s);
        xml.writeEndElement();
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

/// A document of suites. The head and the tail of all such are the same.
template<typename WriteSuites>
QByteArray document(WriteSuites writeSuites)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
    xml.writeStartElement(u"testsuites"_s);
    xml.writeAttribute(u"name"_s, u"vantroque"_s);
    writeSuites(xml);
    xml.writeEndElement();
    xml.writeEndDocument();
    return bytes;
}

} // namespace

ReportForm junit()
{
    // An element that would hold a suite, cut in two where the suite stands.
    const QByteArray empty = document([](QXmlStreamWriter& xml) { xml.writeCharacters(u"|"_s); });
    const QByteArray head = empty.first(empty.indexOf('|'));
    const QByteArray tail = "\n" + empty.sliced(empty.indexOf('|') + 1);
    return {head, {}, tail, [head, tail](const CheckedFile& file) -> Result<QByteArray> {
                const QByteArray whole =
                    document([&](QXmlStreamWriter& xml) { writeSuite(xml, file); });
                return whole.sliced(head.size(), whole.size() - head.size() - tail.size());
            }};
}

} // namespace vantroque::CheckReports

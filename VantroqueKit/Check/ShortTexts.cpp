#include "Check/ShortTexts.h"

#include <QRegularExpression>

namespace vantroque::ShortTexts {

using namespace Qt::StringLiterals;

namespace {

/// Where the bracket ends that `text` begins in.
qsizetype closingBracket(const QString& text)
{
    int depth = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'(')
            ++depth;
        else if (text[i] == u')' && --depth < 0)
            return i;
    }
    return text.size();
}

} // namespace

QString ofMeasured(const QString& measured)
{
    static const QRegularExpression bracket(u"(?<=\\S) \\([^()]*\\)$"_s);
    static const QRegularExpression past(u" at \\d\\d:\\d\\d:\\d\\d[:;]\\d\\d, past .*$"_s);
    QString text = measured;
    text.remove(past);
    text.remove(bracket);
    return text;
}

QString ofExpected(const QString& expected)
{
    static const QRegularExpression limit(u"^([≥≤]) (.+?)(?=,| for | recommended|$)"_s);
    const auto match = limit.match(expected);
    if (!match.hasMatch())
        return expected;
    const QString words = match.captured(1) == u"≥"_s ? u" or more"_s : u" or less"_s;
    return match.captured(2) + words + expected.mid(match.capturedEnd());
}

QString arguments(const QString& fix)
{
    // "-shortest or a short bed is the usual cause" names an option and gives none.
    static const QRegularExpression given(u"(?:: |with )(-[a-z])"_s);
    const auto match = given.match(fix);
    if (!match.hasMatch())
        return {};
    const auto start = match.capturedStart(1);
    const QStringView before = QStringView(fix).first(start);
    const QString rest = fix.mid(start);
    if (before.count(u'(') > before.count(u')'))
        return rest.first(closingBracket(rest));
    const auto sentence = rest.indexOf(u". "_s);
    if (sentence >= 0)
        return rest.first(sentence);
    return rest.endsWith(u'.') ? rest.chopped(1) : rest;
}

QString toCopy(const QString& fix)
{
    const QString given = arguments(fix);
    return given.isEmpty() ? fix : given;
}

} // namespace vantroque::ShortTexts

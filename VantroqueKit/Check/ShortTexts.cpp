#include "Check/ShortTexts.h"

#include <QRegularExpression>

namespace vantroque::ShortTexts {

using namespace Qt::StringLiterals;

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
    for (const auto& [sign, words] :
         {std::pair(u"≥ "_s, u" or more"_s), std::pair(u"≤ "_s, u" or less"_s)})
        if (expected.startsWith(sign))
            return expected.mid(sign.size()) + words;
    return expected;
}

QString toCopy(const QString& fix)
{
    static const QRegularExpression option(u" -[a-z]"_s);
    const auto start = fix.indexOf(option);
    if (start < 0)
        return fix;
    QString arguments = fix.mid(start + 1);
    if (const auto sentence = arguments.indexOf(u". "_s); sentence >= 0)
        arguments.truncate(sentence);
    while (arguments.endsWith(u'.') || arguments.endsWith(u')'))
        arguments.chop(1);
    return arguments;
}

} // namespace vantroque::ShortTexts

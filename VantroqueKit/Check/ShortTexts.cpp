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

} // namespace vantroque::ShortTexts

#include "Check/CheckTexts.h"

#include "Base/Numbers.h"
#include "Base/Text.h"

#include <cmath>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

/// Whole when `value` is less than `tolerance` from a whole number, else with decimals.
QString wholeOrFixed(double value, double tolerance, int decimals)
{
    const bool whole = std::abs(value - std::round(value)) < tolerance;
    return Numbers::fixed(value, whole ? 0 : decimals);
}

} // namespace

QString trimRate(double value)
{
    return wholeOrFixed(value, 0.001, 2);
}

QString fmtMbps(std::int64_t kbps)
{
    return wholeOrFixed(static_cast<double>(kbps) / 1000.0, 0.05, 1) + u" Mbps"_s;
}

QString fmtKHz(int hertz)
{
    return Numbers::fixed(hertz / 1000.0, hertz % 1000 == 0 ? 0 : 1) + u" kHz"_s;
}

QString channelName(int count)
{
    switch (count) {
    case 1: return u"mono (1 ch)"_s;
    case 2: return u"stereo (2 ch)"_s;
    case 6: return u"5.1 (6 ch)"_s;
    default: return QString::number(count) + u" ch"_s;
    }
}

QString pct(double fraction)
{
    return wholeOrFixed(fraction * 100, 0.05, 1) + u'%';
}

QString frameSize(int width, int height)
{
    return u"%1x%2"_s.arg(QString::number(width), QString::number(height));
}

QString quoted(const QString& text)
{
    constexpr qsizetype longest = 40;
    constexpr qsizetype kept = 38;
    const QString whole = text.trimmed();
    if (Text::characterCount(whole) <= longest)
        return u'"' + whole + u'"';
    return u'"' + Text::firstCharacters(whole, kept) + u"..\""_s;
}

QString joinedWithOr(const std::vector<QString>& list)
{
    return Text::joined(list, u" or "_s);
}

} // namespace vantroque::Checker

#include "Review/MarkerFormats.h"

#include <QLocale>
#include <QRegularExpression>

namespace vantroque::MarkerExport {

using namespace Qt::StringLiterals;

Color color(const Marker& marker)
{
    if (marker.kind == Marker::Kind::note)
        return Color::green;
    switch (marker.verdict) {
    case Verdict::fail: return Color::red;
    case Verdict::warn: return Color::yellow;
    case Verdict::pass:
    case Verdict::info: break;
    }
    return Color::cyan;
}

QString oneLine(const QString& text)
{
    // Control characters, Unicode's separators of lines and paragraphs, halves of characters and
    // the two code points that XML forbids.
    static const QRegularExpression breaks(
        u"\\r\\n|[\\x{0}-\\x{1F}\\x{7F}-\\x{9F}\\x{2028}\\x{2029}\\x{FFFE}\\x{FFFF}]"_s);
    return QString::fromUtf8(text.toUtf8()).replace(breaks, u" "_s).trimmed();
}

QString xml(const QString& text)
{
    return oneLine(text)
        .replace(u"&"_s, u"&amp;"_s)
        .replace(u"<"_s, u"&lt;"_s)
        .replace(u">"_s, u"&gt;"_s)
        .replace(u"\""_s, u"&quot;"_s);
}

QString dateText(const QDateTime& date)
{
    return QLocale::c().toString(date.toLocalTime(), u"MMM dd yy hh:mmAP"_s);
}

} // namespace vantroque::MarkerExport

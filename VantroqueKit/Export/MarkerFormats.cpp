#include "Export/MarkerFormats.h"

#include "Base/PlainText.h"

#include <QLocale>

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

QString xml(const QString& text)
{
    return PlainText::oneLine(text)
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

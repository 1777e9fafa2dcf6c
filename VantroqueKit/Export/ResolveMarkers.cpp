#include "Base/Numbers.h"
#include "Base/PlainText.h"
#include "Export/MarkerFormats.h"

// Edit decision lists of the CMX 3600 kind with the comments by which Resolve tells markers.

namespace vantroque::MarkerExport {

using namespace Qt::StringLiterals;

namespace {

QString colorName(Color color)
{
    switch (color) {
    case Color::green: return u"ResolveColorGreen"_s;
    case Color::red: return u"ResolveColorRed"_s;
    case Color::yellow: return u"ResolveColorYellow"_s;
    case Color::cyan: break;
    }
    return u"ResolveColorCyan"_s;
}

QString event(qsizetype number, const Marker& marker, const MarkerContext& context)
{
    const QString span = context.timecode(marker.frame) + u"  "_s + context.timecode(marker.end());
    const QString name = PlainText::oneLine(marker.name);
    return Numbers::zeroPadded(number, 3) + u"  001  C  V  "_s + span + u"  "_s + span + u"\n@"_s
           + name + u", "_s + dateText(marker.date).toLower() + u'\n'
           + PlainText::oneLine(marker.comment) + u" |C:"_s + colorName(color(marker)) + u" |M:"_s
           + name + u" |D:"_s + QString::number(marker.duration) + u"\n\n"_s;
}

} // namespace

QString resolveEDL(const std::vector<Marker>& markers, const MarkerContext& context)
{
    QString text =
        u"TITLE: "_s + PlainText::oneLine(context.fileName) + u"\nFCM: NON DROP FRAME\n\n"_s;
    qsizetype number = 0;
    for (const Marker& marker : markers)
        text += event(++number, marker, context);
    return text;
}

} // namespace vantroque::MarkerExport

#include "Base/Text.h"
#include "Export/MarkerFormats.h"

// Avid's own form of markers, a dump of attribute lists.

namespace vantroque::MarkerExport {

using namespace Qt::StringLiterals;

namespace {

/// As Media Composer's own exports begin.
const QString head = uR"(<?xml version="1.0" encoding="UTF-8" standalone="no" ?>
<!DOCTYPE Avid:StreamItems SYSTEM "AvidSettingsFile.dtd">
<Avid:StreamItems xmlns:Avid="http://www.avid.com">
<Avid:XMLFileData>
<AvProp name="DomainMagic" type="string">Domain</AvProp>
<AvProp name="DomainKey" type="char4">58424a44</AvProp>
)"_s;

QString element(int kind, const QString& name, const QString& value)
{
    return uR"(    <ListElem>
      <AvProp id="ATTR" name="OMFI:ATTB:Kind" type="int32">%1</AvProp>
      <AvProp id="ATTR" name="OMFI:ATTB:Name" type="string">%2</AvProp>
      %3
    </ListElem>
)"_s.arg(QString::number(kind), name, value);
}

QString integer(const QString& name, qint64 value)
{
    return element(
        1, name,
        uR"(<AvProp id="ATTR" name="OMFI:ATTB:IntAttribute" type="int32">%1</AvProp>)"_s.arg(
            value));
}

QString string(const QString& name, const QString& value)
{
    return element(
        2, name,
        uR"(<AvProp id="ATTR" name="OMFI:ATTB:StringAttribute" type="string">%1</AvProp>)"_s.arg(
            xml(value)));
}

QString colorName(Color color)
{
    switch (color) {
    case Color::green: return u"Green"_s;
    case Color::red: return u"Red"_s;
    case Color::yellow: return u"Yellow"_s;
    case Color::cyan: break;
    }
    return u"Cyan"_s;
}

/// Whole seconds since 1970, cut down also before it.
qint64 secondsOf(const QDateTime& date)
{
    const qint64 milliseconds = date.toMSecsSinceEpoch();
    return milliseconds / 1000 - (milliseconds % 1000 < 0 ? 1 : 0);
}

QString block(const Marker& marker)
{
    return uR"(<AvClass id="ATTR">
  <AvProp id="ATTR" name="__OMFI:ATTR:NumItems" type="int32">7</AvProp>
  <List id="OMFI:ATTR:AttrRefs">
)"_s + integer(u"_ATN_CRM_LONG_CREATE_DATE"_s, secondsOf(marker.date))
           + string(u"_ATN_CRM_COLOR"_s, colorName(color(marker)))
           + string(u"_ATN_CRM_USER"_s, marker.name)
           + string(u"_ATN_CRM_COM"_s, u"["_s + marker.name + u"] "_s + marker.comment)
           + string(u"_ATN_CRM_TC"_s, QString::number(marker.frame))
           + string(u"_ATN_CRM_TRK"_s, u"V1"_s) + integer(u"_ATN_CRM_LENGTH"_s, marker.duration)
           + uR"(
    <ListElem/>
  </List>
</AvClass>
)"_s;
}

} // namespace

QString avidXML(const std::vector<Marker>& markers)
{
    return head + Text::joined(markers, QString(), block)
           + u"</Avid:XMLFileData></Avid:StreamItems>\n"_s;
}

} // namespace vantroque::MarkerExport

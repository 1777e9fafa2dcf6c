#include "Base/Text.h"
#include "Export/MarkerFormats.h"
#include "Records/Palette.h"

// The XML that Final Cut Pro 7 made common. Premiere imports it as a sequence with one clip that
// is fully transparent, so that only its markers appear.

namespace vantroque::MarkerExport {

using namespace Qt::StringLiterals;

namespace {

/// Of the fields in braces; a field's value is not looked at again.
QString filled(const QString& form, const std::vector<std::pair<QString, QString>>& values)
{
    QString text;
    for (qsizetype at = 0; at < form.size();) {
        const qsizetype open = form.indexOf(u'{', at);
        const qsizetype close = form.indexOf(u'}', open);
        if (open < 0)
            return text + form.mid(at);
        text += form.mid(at, open - at);
        const QString field = form.mid(open + 1, close - open - 1);
        for (const auto& [name, value] : values)
            if (name == field)
                text += value;
        at = close + 1;
    }
    return text;
}

/// Opaque, in the way of the report's own colours.
QString colorNumber(Color color)
{
    switch (color) {
    case Color::green: return QString::number(Palette::green.argb());
    case Color::red: return QString::number(Palette::red.argb());
    case Color::yellow: return QString::number(Palette::amber.argb());
    case Color::cyan: break;
    }
    return QString::number(Palette::cyan.argb());
}

QString element(const Marker& marker)
{
    return filled(uR"(  <marker>
    <comment>{comment}</comment>
    <name>{name}</name>
    <in>{in}</in>
    <out>{out}</out>
    <pproColor>{color}</pproColor>
  </marker>)"_s,
                  {{u"comment"_s, xml(marker.comment)},
                   {u"name"_s, xml(marker.name)},
                   {u"in"_s, QString::number(marker.frame)},
                   {u"out"_s, QString::number(marker.end())},
                   {u"color"_s, colorNumber(color(marker))}});
}

const QString document = uR"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE xmeml>
<xmeml version="4">
  <sequence id="sequence" explodedTracks="true">
    <uuid>{id}</uuid>
    <duration>{frames}</duration>
    <rate>
      <timebase>{timebase}</timebase>
      <ntsc>{ntsc}</ntsc>
    </rate>
    <name>{title}</name>
    <media>
      <video>
        <format>
          <samplecharacteristics>
            <rate>
              <timebase>{timebase}</timebase>
              <ntsc>{ntsc}</ntsc>
            </rate>
            <width>{width}</width>
            <height>{height}</height>
            <anamorphic>FALSE</anamorphic>
            <pixelaspectratio>square</pixelaspectratio>
            <fielddominance>none</fielddominance>
            <colordepth>24</colordepth>
          </samplecharacteristics>
        </format>
        <track>
          <enabled>TRUE</enabled>
          <locked>FALSE</locked>
          <generatoritem id="clipitem-1">
            <name>{title}</name>
            <enabled>TRUE</enabled>
            <duration>{frames}</duration>
            <rate>
              <timebase>{timebase}</timebase>
              <ntsc>{ntsc}</ntsc>
            </rate>
            <start>0</start>
            <end>{frames}</end>
            <in>0</in>
            <out>{frames}</out>
            <alphatype>none</alphatype>
            <effect>
              <name>Color</name>
              <effectid>Color</effectid>
              <effectcategory>Matte</effectcategory>
              <effecttype>generator</effecttype>
              <mediatype>video</mediatype>
              <parameter authoringApp="PremierePro">
                <parameterid>fillcolor</parameterid>
                <name>Color</name>
                <value>
                  <alpha>0</alpha>
                  <red>0</red>
                  <green>0</green>
                  <blue>0</blue>
                </value>
              </parameter>
            </effect>
            <filter>
              <effect>
                <name>Opacity</name>
                <effectid>opacity</effectid>
                <effectcategory>motion</effectcategory>
                <effecttype>motion</effecttype>
                <mediatype>video</mediatype>
                <pproBypass>false</pproBypass>
                <parameter authoringApp="PremierePro">
                  <parameterid>opacity</parameterid>
                  <name>opacity</name>
                  <valuemin>0</valuemin>
                  <valuemax>100</valuemax>
                  <value>0</value>
                </parameter>
              </effect>
            </filter>
{markers}
          </generatoritem>
        </track>
      </video>
    </media>
    <timecode>
      <rate>
        <timebase>{timebase}</timebase>
        <ntsc>{ntsc}</ntsc>
      </rate>
      <string>{timecode}</string>
      <frame>{start}</frame>
      <displayformat>NDF</displayformat>
    </timecode>
{markers}
  </sequence>
</xmeml>
)"_s;

} // namespace

QString premiereXML(const std::vector<Marker>& markers, const MarkerContext& context,
                    const QUuid& id)
{
    return filled(document, {{u"id"_s, id.toString(QUuid::WithoutBraces).toLower()},
                             {u"frames"_s, QString::number(context.frameCount)},
                             {u"timebase"_s, QString::number(context.timebase())},
                             {u"ntsc"_s, context.isNTSC() ? u"TRUE"_s : u"FALSE"_s},
                             {u"title"_s, xml(context.fileName + u" notes"_s)},
                             {u"width"_s, QString::number(context.width)},
                             {u"height"_s, QString::number(context.height)},
                             {u"markers"_s, Text::joined(markers, u"\n"_s, element)},
                             {u"timecode"_s, context.timecode(0)},
                             {u"start"_s, QString::number(context.startFrame)}});
}

} // namespace vantroque::MarkerExport

#include "Base/Csv.h"
#include "Base/RecordCoding.h"
#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Export/MarkerFormats.h"

// Markers for spreadsheets.

namespace vantroque::MarkerExport {

using namespace Qt::StringLiterals;

namespace {

QString line(const QStringList& fields)
{
    QStringList guarded;
    for (const QString& field : fields)
        guarded << Csv::text(field);
    return Csv::line(guarded) + u'\n';
}

QString line(const Marker& marker, const MarkerContext& context)
{
    const auto timecode = [&](std::int64_t frame) {
        return Timecode(frame, context.frameRate).text();
    };
    const auto caseName = [](auto value) { return RecordCoding::key(enumName(value)); };
    return line({context.fileName, caseName(marker.kind), caseName(marker.verdict), marker.name,
                 marker.comment, QString::number(marker.frame), QString::number(marker.duration),
                 timecode(marker.frame), timecode(marker.end()), context.timecode(marker.frame),
                 context.timecode(marker.end()), dateText(marker.date)});
}

} // namespace

QString csv(const std::vector<Marker>& markers, const MarkerContext& context)
{
    const QString header = line({u"File"_s, u"Kind"_s, u"Verdict"_s, u"Name"_s, u"Comment"_s,
                                 u"Frame"_s, u"Duration"_s, u"Timecode In"_s, u"Timecode Out"_s,
                                 u"Source Timecode In"_s, u"Source Timecode Out"_s, u"Created"_s});
    return QChar(QChar::ByteOrderMark) + header
           + Text::joined(markers, QString(),
                          [&](const Marker& marker) { return line(marker, context); });
}

} // namespace vantroque::MarkerExport

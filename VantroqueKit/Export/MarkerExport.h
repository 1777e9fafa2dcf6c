#pragma once

#include "Export/Marker.h"
#include "Records/FileReview.h"
#include "Records/MediaInfo.h"
#include "Records/Report.h"

#include <QUuid>

#include <vector>

/// Findings and notes as a file that an editing system or a spreadsheet imports.
namespace vantroque::MarkerExport {

enum class Format { avid, premiere, resolve, csv };
VANTROQUE_ENUM_NAMES(Format, avid, premiere, resolve, csv)

QString displayName(Format format);
QString fileExtension(Format format);
/// What a file's name gets after it, before the extension.
QString fileSuffix(Format format);

/// Runs ffprobe, and so blocks, when the record has no start time code.
MarkerContext context(const MediaInfo& media);

/// Where markers come from. A null review has no notes, a null report no findings.
struct Sources {
    const FileReview* review = nullptr;
    const FileReport* report = nullptr;
    std::vector<SignalEvent> extraEvents = {}; ///< Findings beside those of the report.
    bool includeFindings = true;
    bool includeNotes = true;
};

/// By frame. A rate not above 0 becomes 25; a note made at another rate keeps its time. `now` is
/// the date of the findings.
std::vector<Marker> markers(const Sources& sources, double frameRate,
                            const QDateTime& now = QDateTime::currentDateTimeUtc());

/// What a note says, drawings included.
QString text(const ReviewComment& comment);

/// The whole text of the file; dates are in local time. `id` is the identity of the sequence that
/// Premiere makes. Cannot fail.
QString write(const std::vector<Marker>& markers, Format format, const MarkerContext& context,
              const QUuid& id = QUuid::createUuid());

} // namespace vantroque::MarkerExport

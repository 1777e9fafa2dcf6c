#pragma once

#include "Captions/CaptionTrack.h"
#include "Records/TimeSpan.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

/// SubRip and WebVTT, told apart by content. Forgiving: a block that cannot be read is skipped. A
/// line of blanks parts two cues as an empty one does, and is nothing inside of one.
/// Pure, callable from any thread, in linear time whatever the bytes.
namespace vantroque::CaptionParser {

/// Text of a caption file: UTF-8, UTF-16 with a byte order mark, or else Latin-1.
QString decode(const QByteArray& bytes);

/// Whether override tags such as "{\an8}" move a cue to the top.
enum class PlacementTags { honoured, ignored };

/// The track that a text holds, of the claimed format unless it turns out to be WebVTT. Nothing
/// when no cue can be read.
std::optional<CaptionTrack> parse(QString text, CaptionTrack::Format claimed,
                                  PlacementTags placementTags);

/// The text of one cue without its tags.
struct StyledText {
    std::vector<CaptionCue::Run> runs;
    CaptionCue::Placement placement = CaptionCue::Placement::bottom;
};
StyledText styledRuns(QStringView text);

/// The six entities that captions use; others stay as they are.
QString decodeEntities(QStringView text);

/// "start --> end", and possibly settings after it. The start may lie after the end.
std::optional<TimeSpan> timing(QStringView line);
/// Whether these lines begin with the times of a cue, with or without its number or name.
bool beginsCue(QStringView lines);

/// "MM:SS.mmm" or "HH:MM:SS.mmm" with a point or comma and any number of digits.
std::optional<double> seconds(QStringView stamp);

} // namespace vantroque::CaptionParser

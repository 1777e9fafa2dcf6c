#pragma once

#include "Records/TimeSpan.h"

#include <QStringView>

#include <optional>
#include <vector>

/// How W3C's "WebVTT: The Web Video Text Tracks Format" (section 6, parsing) cuts a file into cues.
/// Pure, in linear time whatever the text.
namespace vantroque::WebVtt {

struct Cue {
    TimeSpan times;
    std::vector<QStringView> lines; ///< Of its text, into the file's.
};

/// The text begins with a header, which may go on up to the first cue, as any other block may. What
/// is no cue, such as a note, is left out.
std::vector<Cue> cues(QStringView text);

/// "start --> end", and whatever else after it.
std::optional<TimeSpan> timing(QStringView line);

} // namespace vantroque::WebVtt

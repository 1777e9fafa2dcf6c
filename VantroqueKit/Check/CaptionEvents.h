#pragma once

#include "Base/FileUrl.h"
#include "Captions/CaptionSpelling.h"
#include "Captions/CaptionTrack.h"
#include "Captions/SpellChecker.h"
#include "Records/FileReview.h"
#include "Records/Report.h"

#include <optional>
#include <vector>

/// The places on the timeline where a caption holds a word to look at.
namespace vantroque::CaptionEvents {

/// In frames at `frameRate`, which counts as 24 when it is not above 0. None lies after the end of
/// a picture of `duration` seconds; 0 stands for no picture. Pure, callable from any thread.
std::vector<SignalEvent> events(const CaptionSpelling& spelling, const CaptionTrack& track,
                                double frameRate, double duration = 0);

/// Those of the captions that belong to a file, without the words of its name. Empty when it has
/// none, or when no dictionary can check them. Blocks as long as ffmpeg takes; any thread.
std::vector<SignalEvent> events(const std::optional<FileReview>& review, const FileUrl& media,
                                const std::optional<VideoSummary>& video, double frameRate,
                                SpellChecker& checker);

} // namespace vantroque::CaptionEvents

#pragma once

#include "Base/FileUrl.h"
#include "Captions/CaptionTrack.h"
#include "Records/FileReview.h"
#include "Records/Report.h"

#include <QString>

#include <optional>

namespace vantroque {

/// Captions, and what their source says of them.
struct LoadedCaptions {
    CaptionTrack track;
    QString title;
    std::optional<QString> language; ///< Bare code; nothing when the source does not say.

    /// Those that stand for a file when nobody has chosen any in a player, shifted to its picture:
    /// of the operator's caption file, if it can still be read, or else the first that came with
    /// the media. Blocks as long as ffmpeg takes; any thread.
    static std::optional<LoadedCaptions> forReview(const std::optional<FileReview>& review,
                                                   const FileUrl& media,
                                                   const std::optional<VideoSummary>& video);
};

} // namespace vantroque

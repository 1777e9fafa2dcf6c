#pragma once

#include "Base/FileUrl.h"
#include "Base/Result.h"
#include "Captions/CaptionTrack.h"

/// Caption files that lie beside the media.
namespace vantroque::CaptionLoader {

enum class Problem {
    unreadable, ///< The file cannot be read, or ffmpeg cannot convert it.
    noCues      ///< There is nothing usable in it.
};

/// The name is that of a SubRip, WebVTT or Scenarist file.
bool isSidecar(const FileUrl& url);

/// Reads a caption file of at most 100 MB. Blocks, for Scenarist files as long as ffmpeg takes; any
/// thread.
Result<CaptionTrack, Problem> load(const FileUrl& url);

} // namespace vantroque::CaptionLoader

#pragma once

#include "Base/Result.h"
#include "Captions/LoadedCaptions.h"
#include "Records/MediaInfo.h"

namespace vantroque {

/// The captions of a caption file, or the first that came with a media file, at their own times.
/// Blocks as long as ffprobe and ffmpeg take; any thread. Fails with words for the operator when
/// the file cannot be read or holds no captions.
Result<LoadedCaptions> loadCaptions(const FileUrl& url);
/// The first captions that came with a media file, at their own times, and as above.
Result<LoadedCaptions> loadCaptions(const MediaInfo& media);

} // namespace vantroque

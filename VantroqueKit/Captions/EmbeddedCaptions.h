#pragma once

#include "Base/FileUrl.h"
#include "Captions/CaptionTrack.h"
#include "Records/EmbeddedCaptionSource.h"
#include "Records/MediaInfo.h"
#include "Tools/FFTool.h"

#include <optional>
#include <string>
#include <vector>

/// Captions that came with the media file.
namespace vantroque::EmbeddedCaptions {

/// The subtitle streams that are text, in stream order, then the captions inside the picture.
std::vector<EmbeddedCaptionSource> sources(const MediaInfo& media);

/// The source's name for people, such as "German track (mov_text)".
QString title(const EmbeddedCaptionSource& source);

/// The source's language as a bare code, unless it is absent or undetermined.
std::optional<QString> language(const EmbeddedCaptionSource& source);

/// Reads one source. Blocks as long as ffmpeg takes; any thread. Nothing when there are no captions
/// in it.
std::optional<CaptionTrack> extract(const EmbeddedCaptionSource& source, const FileUrl& media);

/// What ffmpeg makes of its input `arguments` as SubRip. Blocks for up to `timeout` seconds; any
/// thread. Nothing when it makes no cue.
std::optional<QString> srtText(const std::vector<std::string>& arguments,
                               double timeout = FFTool::defaultTimeout);

} // namespace vantroque::EmbeddedCaptions

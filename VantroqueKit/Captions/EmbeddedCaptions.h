#pragma once

#include "Base/FileUrl.h"
#include "Captions/CaptionTrack.h"
#include "Records/EmbeddedCaptionSource.h"
#include "Records/MediaInfo.h"
#include "Tools/FFTool.h"

#include <optional>
#include <string>
#include <vector>

/// Captions that came with the media file. Any thread; only `extract` and `srtText` block.
namespace vantroque::EmbeddedCaptions {

/// The subtitle streams that are text, in stream order, then the captions inside the picture.
std::vector<EmbeddedCaptionSource> sources(const MediaInfo& media);

/// The source's name for people, such as "German track (mov_text)". The language is named in the
/// user's own; a track is "Embedded" when its language is not known or has no name.
QString title(const EmbeddedCaptionSource& source);

/// The source's language as a bare code, unless it is absent or undetermined.
std::optional<QString> language(const EmbeddedCaptionSource& source);

/// Reads one source. Blocks as long as ffmpeg takes, up to 600 seconds. Nothing when there are no
/// captions in it or ffmpeg is missing, fails without a cue, or takes too long.
std::optional<CaptionTrack> extract(const EmbeddedCaptionSource& source, const FileUrl& media);

/// What ffmpeg makes of its input `arguments`, which are about `media`, as SubRip. Blocks for up to
/// `timeout` seconds. Nothing when it makes no cue, is missing, or has not ended by then.
std::optional<QString> srtText(const FileUrl& media, const std::vector<std::string>& arguments,
                               double timeout = FFTool::defaultTimeout);

} // namespace vantroque::EmbeddedCaptions

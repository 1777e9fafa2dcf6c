#pragma once

#include "Records/EmbeddedCaptionSource.h"
#include "Records/MediaInfo.h"

#include <vector>

/// Captions that came with the media file.
namespace vantroque::EmbeddedCaptions {

/// The subtitle streams that are text, in stream order, then the captions inside the picture.
std::vector<EmbeddedCaptionSource> sources(const MediaInfo& media);

} // namespace vantroque::EmbeddedCaptions

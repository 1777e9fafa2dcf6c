#include "Captions/EmbeddedCaptions.h"

namespace vantroque::EmbeddedCaptions {

std::vector<EmbeddedCaptionSource> sources(const MediaInfo& media)
{
    using Kind = EmbeddedCaptionSource::Kind;
    std::vector<EmbeddedCaptionSource> found;
    for (const auto& stream : media.subtitleStreams.value_or(std::vector<SubtitleStreamInfo>()))
        if (stream.isText())
            found.push_back({Kind::track, stream.index, stream.codec, stream.language});
    if (media.video && media.video->closedCaptions.value_or(false))
        found.push_back({Kind::cea608, {}, {}, {}});
    return found;
}

} // namespace vantroque::EmbeddedCaptions

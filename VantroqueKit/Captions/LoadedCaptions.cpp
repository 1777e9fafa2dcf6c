#include "Captions/LoadedCaptions.h"

#include "Base/PathText.h"
#include "Captions/CaptionLoader.h"
#include "Captions/EmbeddedCaptions.h"

namespace vantroque {

namespace {

std::optional<LoadedCaptions> ofSidecar(const FileUrl& url, double duration)
{
    const auto track = CaptionLoader::load(url);
    if (!track)
        return std::nullopt;
    return LoadedCaptions{track->autoShifted(duration), url.fileName(), {}};
}

std::optional<LoadedCaptions> ofSource(const EmbeddedCaptionSource& source, const FileUrl& media,
                                       double duration)
{
    const auto track = EmbeddedCaptions::extract(source, media);
    if (!track)
        return std::nullopt;
    return LoadedCaptions{track->autoShifted(duration), EmbeddedCaptions::title(source),
                          EmbeddedCaptions::language(source)};
}

} // namespace

std::optional<LoadedCaptions> LoadedCaptions::forReview(const std::optional<FileReview>& review,
                                                        const FileUrl& media,
                                                        const std::optional<VideoSummary>& video)
{
    const double duration = video ? video->durationSeconds : 0;
    if (review && review->captionsPath)
        if (auto captions = ofSidecar(PathText::url(*review->captionsPath), duration))
            return captions;
    if (video && video->embeddedCaptions && !video->embeddedCaptions->empty())
        return ofSource(video->embeddedCaptions->front(), media, duration);
    return std::nullopt;
}

} // namespace vantroque

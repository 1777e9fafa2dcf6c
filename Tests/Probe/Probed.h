#pragma once

#include "Probe/Prober.h"
#include "Support/Clips.h"
#include "Support/TestFolder.h"

#include <stdexcept>

namespace vantroque {

/// What the probe finds out about a file; throws its words when it fails.
inline MediaInfo probed(const std::filesystem::path& file)
{
    auto media = Prober::probe(FileUrl::fromPath(file));
    if (!media)
        throw std::runtime_error(media.error().description.toStdString());
    return *std::move(media);
}

inline VideoStreamInfo probedVideo(const std::filesystem::path& file)
{
    return probed(file).video.value();
}

inline AudioStreamInfo probedAudio(const std::filesystem::path& file)
{
    return probed(file).audio.value();
}

} // namespace vantroque

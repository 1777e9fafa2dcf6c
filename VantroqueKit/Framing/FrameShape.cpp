#include "Framing/FrameShape.h"

#include "Base/Numbers.h"

#include <algorithm>

namespace vantroque {

FrameShape FrameShape::of(const VideoStreamInfo& video)
{
    return {video.shownWidth(), video.shownHeight(), video.shownPixelAspect()};
}

FrameShape FrameShape::of(const VideoSummary& video)
{
    return {video.width, video.height, video.pixelAspect.value_or(1)};
}

int FrameShape::squareWidth() const
{
    // What a file claims of its pixels can be anything.
    constexpr std::int64_t widest = 32767; // of what can be drawn on
    return static_cast<int>(
        std::clamp<std::int64_t>(Numbers::roundedToInt(width * pixelAspect), 1, widest));
}

AspectFamily FrameShape::family() const
{
    constexpr double tolerance = 0.02;
    return isEmpty() ? AspectFamily::other : classify(squareWidth(), height, tolerance);
}

} // namespace vantroque

#pragma once

#include "Builders.h"

namespace vantroque {

/// Text at that place; the reach is told by its left edge.
inline TextRegion textAt(const NormalizedRect& rect, double start = 10, double end = 12,
                         const QString& text = QStringLiteral("SALE"))
{
    return {start, end, rect.x, rect.y, rect.width, rect.height, text};
}

/// Text in the middle of the height that reaches so far to the left.
inline TextRegion reaching(double reach, double start = 10,
                           const QString& text = QStringLiteral("SALE"))
{
    return textAt({0.5 - reach / 2, 0.5, 0.2, 0.05}, start, start + 2, text);
}

/// An HD spot in which that text was found.
inline MediaInfo spotWith(const std::vector<TextRegion>& regions)
{
    MediaInfo media = measuredSpot();
    media.signal->textScanAttempted = true;
    media.signal->textRegions = regions;
    return media;
}

/// The same, upright: 1080x1920.
inline MediaInfo uprightWith(const std::vector<TextRegion>& regions)
{
    MediaInfo media = spotWith(regions);
    std::swap(media.video->width, media.video->height);
    return media;
}

inline Profile withPlacement(std::optional<double> safe, std::optional<double> reject,
                             const std::optional<std::vector<QString>>& zones = {})
{
    Profile profile = bareProfile();
    profile.content = ContentRule();
    profile.content->textSafeFraction = safe;
    profile.content->textRejectFraction = reject;
    profile.content->textClearOfZones = zones;
    return profile;
}

/// A leader of five seconds of slate and two of black.
inline void addLeader(Profile& profile, MediaInfo& media)
{
    profile.content->slateSeconds = 5;
    profile.content->slateBlackSeconds = 2;
    media.signal->blackRuns = {{5, 7}};
}

} // namespace vantroque

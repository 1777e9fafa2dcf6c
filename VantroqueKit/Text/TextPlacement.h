#pragma once

#include "Profiles/PlatformZones.h"
#include "Records/TextRegion.h"
#include "Text/TextSample.h"

#include <functional>
#include <vector>

/// From noisy readings of single frames to "this text stood here from then to then": geometry and
/// counting, without any recognizer. Pure.
namespace vantroque::TextPlacement {

/// Text that is held shorter is no text to judge, in seconds.
constexpr double minimumSeconds = 1.0;
/// How far a line may move from one sample to the next, as a fraction of the picture.
constexpr double maximumDrift = 0.015;

/// The regions of text that is held for `shortest` seconds at least, folded and sorted by start.
std::vector<TextRegion> track(std::vector<TextSample> samples, double shortest = minimumSeconds);

/// Joins the pieces of a line, from left to right.
std::vector<TextSample::Box> mergeLines(std::vector<TextSample::Box> boxes);
/// The rectangle that stands for a track: the medians of its edges, of one or two their union.
NormalizedRect typical(const std::vector<NormalizedRect>& rects);
/// The most frequent reading; of equals the longest, then the first.
QString commonest(const std::vector<QString>& texts);
/// Joins regions that overlap in time and are one line, or one place.
std::vector<TextRegion> fold(const std::vector<TextRegion>& regions);

/// Moves the start of a region to the first time of `before` at which the text is present, and its
/// end to the last of `after`, both ascending. Text stays once it has come and stays away once it
/// has gone, so a few times are asked only.
TextRegion narrowed(TextRegion region, const std::vector<double>& before,
                    const std::vector<double>& after, const std::function<bool(double)>& present);

/// How far a rectangle goes from the picture's centre in the worst direction, as a fraction of the
/// half frame: 0.9 just touches the 90 % safe area.
double reach(const NormalizedRect& rect);
/// The share of a rectangle that a zone's controls cover, at most 1.
double coverage(const NormalizedRect& rect, const PlatformZone& zone);

} // namespace vantroque::TextPlacement

#pragma once

#include "Flashes/FlashAnalyzer.h"
#include "Records/MediaInfo.h"

#include <optional>
#include <string>
#include <vector>

/// The part of the filter graph that makes the small pictures in which flashes are looked for, and
/// how they are to be read. Pure.
namespace vantroque::FlashBranch {

/// From `[vflash]` to `[flash]`: pictures in the shape of the screen, fields one by one where there
/// are some, and under each two rows that say when it is shown: a raw dump carries no times, and
/// frames need not come at an even rate.
std::string chains(const VideoStreamInfo& video);

/// Each light of those once; a picture in HDR has its own.
std::vector<FlashAnalyzer::Source> sources(const VideoStreamInfo& video,
                                           const std::vector<FlashLight>& asked);

/// The light of a picture: its own in HDR, otherwise that which is asked for.
FlashLight lightOf(const VideoStreamInfo& video, FlashLight asked);

/// The bytes of one picture with its time.
std::size_t frameBytes(const FlashPicture& picture);
/// Reads the time out of a picture of that many bytes.
Microseconds time(const FlashPicture& picture, FlashSamples samples);
/// Its own samples, without those of the time.
std::vector<std::uint16_t> withoutTime(const FlashPicture& picture, FlashSamples samples);

} // namespace vantroque::FlashBranch

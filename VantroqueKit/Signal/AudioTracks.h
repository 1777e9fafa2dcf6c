#pragma once

#include "Records/MediaInfo.h"

#include <string>
#include <vector>

/// A file's audio streams in ffmpeg's filter graphs. Pure.
namespace vantroque::AudioTracks {

/// Where the sound of a group comes from, up to the first filter: "[0:a:0]", or the join of two
/// single channels.
std::string source(const AudioStreamInfo& audio, const TrackGroup& group);
/// The groups that are measured beside the one that is graded.
std::vector<TrackGroup> further(const AudioStreamInfo& audio);
/// What the loudness filter of a group is called in the log: "track3".
std::string filterId(const TrackGroup& group);

} // namespace vantroque::AudioTracks

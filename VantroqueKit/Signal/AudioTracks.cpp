#include "Signal/AudioTracks.h"

#include "Base/Numbers.h"

#include <algorithm>

namespace vantroque::AudioTracks {

namespace {

std::string specifier(int track)
{
    return "[0:a:" + Numbers::wholeText(track) + "]";
}

/// The join ends with the shorter track, so that one is filled up with silence.
std::string filledUp(const AudioStreamInfo& audio, int track, int other)
{
    constexpr double alike = 0.02; // seconds, less than a frame
    const auto own = audio.tracks->at(static_cast<std::size_t>(track)).durationSeconds;
    const auto wanted = audio.tracks->at(static_cast<std::size_t>(other)).durationSeconds;
    if (!own || !wanted || *wanted - *own < alike)
        return {};
    return "apad=whole_dur=" + Numbers::fixed(*wanted, 6).toStdString();
}

/// Loudness is defined for layouts. ffmpeg has one for each of these counts.
bool hasLoudness(const AudioTrackInfo& track)
{
    return (track.channels >= 1 && track.channels <= 8) || track.channels == 16;
}

} // namespace

std::string source(const AudioStreamInfo& audio, const TrackGroup& group)
{
    if (group.count < 2)
        return specifier(group.first);
    std::string padding;
    std::string inputs;
    for (const int track : {group.first, group.first + 1}) {
        const int other = 2 * group.first + 1 - track;
        const std::string fill = filledUp(audio, track, other);
        const std::string label = "[filled" + Numbers::wholeText(track) + "]";
        if (!fill.empty())
            padding += specifier(track) + fill + label + ";";
        inputs += fill.empty() ? specifier(track) : label;
    }
    return padding + inputs + "join=inputs=2:channel_layout=stereo:map=0.0-FL|1.0-FR,";
}

std::vector<TrackGroup> further(const AudioStreamInfo& audio)
{
    constexpr std::size_t most = 64; // each is a decoder of its own
    auto groups = audio.trackGroups();
    groups.erase(groups.begin());
    std::erase_if(groups, [&](const TrackGroup& group) {
        const AudioTrackInfo& track = audio.tracks->at(static_cast<std::size_t>(group.first));
        return !hasLoudness(track) || track.codec == QLatin1String("unknown");
    });
    groups.resize(std::min(groups.size(), most));
    return groups;
}

std::string filterId(const TrackGroup& group)
{
    return "track" + Numbers::wholeText(group.first + 1);
}

} // namespace vantroque::AudioTracks

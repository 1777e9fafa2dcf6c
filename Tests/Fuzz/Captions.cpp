// Caption files: SubRip, WebVTT, and what ffmpeg makes of Scenarist.

#include "Captions/CaptionHealth.h"
#include "Captions/CaptionParser.h"
#include "Captions/CaptionReport.h"
#include "Fuzz/Target.h"

#include <algorithm>
#include <cmath>
#include <tuple>

using namespace vantroque;

namespace {

void holdTrack(const CaptionTrack& track)
{
    Fuzz::hold(!track.isEmpty(), "a track has cues");
    Fuzz::hold(
        std::ranges::is_sorted(track.cues(), {},
                               [](const CaptionCue& cue) { return std::tuple(cue.start, cue.id); }),
        "cues stand by their start");
    for (const CaptionCue& cue : track.cues())
        Fuzz::hold(std::isfinite(cue.start) && std::isfinite(cue.end) && cue.start >= 0,
                   "times are finite");
    const CaptionTrack moved = track.autoShifted(30);
    for (const double time : {0.0, 1.5, 1e9})
        Fuzz::hold(moved.cues(time).size() <= moved.cues().size(), "no more show than there are");
    const CaptionHealth health = CaptionHealth::of(track, 30);
    CaptionReport::section(health, QStringLiteral("Fuzz"), 25, {});
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using CaptionParser::PlacementTags;
    const QString text = CaptionParser::decode(Fuzz::bytesOf(data, size));
    for (const auto format :
         {CaptionTrack::Format::srt, CaptionTrack::Format::vtt, CaptionTrack::Format::scc})
        for (const auto tags : {PlacementTags::honoured, PlacementTags::ignored})
            if (const auto track = CaptionParser::parse(text, format, tags))
                holdTrack(*track);
    return 0;
}

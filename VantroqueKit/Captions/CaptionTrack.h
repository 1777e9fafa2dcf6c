#pragma once

#include "Base/Record.h"
#include "Records/CaptionCue.h"

#include <optional>
#include <vector>

namespace vantroque {

/// Timed captions from one source, sorted by start and, where starts are equal, by id. All times
/// are seconds from the start of the picture. A plain value.
class CaptionTrack {
public:
    enum class Format { srt, vtt, scc, embedded };

    CaptionTrack(Format format, std::vector<CaptionCue> cues, double shift = 0);

    Format format() const { return m_format; }
    const std::vector<CaptionCue>& cues() const { return m_cues; }
    /// Seconds that have been taken off the times of the source.
    double shift() const { return m_shift; }
    bool isEmpty() const { return m_cues.empty(); }

    /// All cues that show at `time`, in order.
    std::vector<CaptionCue> cues(double time) const;
    /// `seconds` earlier, but not before 0.
    CaptionTrack shifted(double seconds) const;
    /// For a track that was timed to a picture starting at a full hour: the hours, in seconds, that
    /// bring its first cue into a picture of `duration` seconds. Nothing when the first cue is in
    /// the picture as it is, when no hour up to the 23rd brings it there, without cues, and without
    /// a picture, whose duration is not above 0.
    std::optional<double> suggestedShift(double duration) const;
    /// Shifted as suggested, or as it is.
    CaptionTrack autoShifted(double duration) const;

    bool operator==(const CaptionTrack&) const = default;

private:
    Format m_format;
    std::vector<CaptionCue> m_cues;
    double m_shift;
};
VANTROQUE_ENUM_NAMES(CaptionTrack::Format, srt, vtt, scc, embedded)

} // namespace vantroque

#include "Captions/CaptionTrack.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace vantroque {

CaptionTrack::CaptionTrack(Format format, std::vector<CaptionCue> cues, double shift)
    : m_format(format), m_cues(std::move(cues)), m_shift(shift)
{
    std::ranges::stable_sort(m_cues, {},
                             [](const CaptionCue& cue) { return std::tuple(cue.start, cue.id); });
}

std::vector<CaptionCue> CaptionTrack::cues(double time) const
{
    std::vector<CaptionCue> showing;
    std::ranges::copy_if(m_cues, std::back_inserter(showing),
                         [&](const CaptionCue& cue) { return cue.isShowing(time); });
    return showing;
}

CaptionTrack CaptionTrack::shifted(double seconds) const
{
    std::vector<CaptionCue> cues = m_cues;
    for (CaptionCue& cue : cues) {
        cue.start = std::max(cue.start - seconds, 0.0);
        cue.end = std::max(cue.end - seconds, cue.start);
    }
    return CaptionTrack(m_format, std::move(cues), m_shift + seconds);
}

std::optional<double> CaptionTrack::suggestedShift(double duration) const
{
    // A first cue that shows within the picture is where it belongs.
    if (isEmpty() || !(duration > 0) || Numbers::above(duration, m_cues.front().start))
        return std::nullopt;
    constexpr double slack = 0.5; // a first cue may sit just before the hour
    for (int hour = 1; hour <= 23; ++hour) {
        const double shift = hour * 3600.0;
        const double start = m_cues.front().start - shift;
        if (!Numbers::below(start, -slack) && Numbers::below(start, duration))
            return shift;
    }
    return std::nullopt;
}

CaptionTrack CaptionTrack::autoShifted(double duration) const
{
    const auto shift = suggestedShift(duration);
    return shift ? shifted(*shift) : *this;
}

} // namespace vantroque

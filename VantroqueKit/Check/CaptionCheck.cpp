#include "Check/CaptionCheck.h"

#include "Captions/CaptionReport.h"
#include "Check/CaptionEvents.h"
#include "Check/EventOrder.h"
#include "Check/RowMoments.h"

namespace vantroque {

CaptionCheck CaptionCheck::of(const LoadedCaptions& captions, const FileUrl& name, double duration,
                              double frameRate, SpellChecker& checker)
{
    const CaptionTrack track = captions.track.autoShifted(duration);
    const auto spelling =
        CaptionSpelling::of(track, checker, captions.language, CaptionSpelling::nameWords(name));
    const auto health = CaptionHealth::of(track, duration);
    ProfileReport section = CaptionReport::section(health, captions.title, frameRate, spelling);
    if (spelling && frameRate > 0)
        RowMoments::mark(section, nullptr,
                         CaptionEvents::events(*spelling, track, frameRate, duration));
    return {track, spelling, health, std::move(section)};
}

void CaptionCheck::add(const LoadedCaptions& captions, const FileUrl& media, FileReport& report,
                       SpellChecker& checker)
{
    const VideoSummary picture = report.video.value_or(VideoSummary());
    const CaptionCheck check =
        of(captions, media, picture.durationSeconds, picture.frameRate, checker);
    if (!report.sections)
        report.sections.emplace();
    report.sections->push_back(check.section);
    if (!check.spelling)
        return;
    auto events = report.events.value_or(std::vector<SignalEvent>());
    for (SignalEvent& event : CaptionEvents::events(*check.spelling, check.track, picture.frameRate,
                                                    picture.durationSeconds))
        events.push_back(std::move(event));
    report.events = EventOrder::byFrame(std::move(events));
}

} // namespace vantroque

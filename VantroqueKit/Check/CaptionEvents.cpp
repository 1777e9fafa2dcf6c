#include "Check/CaptionEvents.h"

#include "Base/Numbers.h"
#include "Base/Timecode.h"
#include "Captions/CaptionReport.h"
#include "Captions/LoadedCaptions.h"
#include "Check/EventOrder.h"

#include <QHash>

#include <algorithm>

namespace vantroque::CaptionEvents {

using namespace Qt::StringLiterals;
using Finding = CaptionSpelling::Finding;
using Kind = SignalEvent::Kind;

std::vector<SignalEvent> events(const CaptionSpelling& spelling, const CaptionTrack& track,
                                double frameRate, double duration)
{
    const FrameRate rate = FrameRate::of(frameRate).value_or(FrameRate::film());
    const auto lastFrame = duration > 0 ? std::max<std::int64_t>(rate.frameAt(duration) - 1, 0)
                                        : Timecode::frameCeiling;
    QHash<int, std::int64_t> endFrames;
    for (const CaptionCue& cue : track.cues())
        endFrames.insert(cue.id, std::min(rate.frameAt(cue.end), lastFrame));
    std::vector<SignalEvent> list;
    const auto add = [&](Kind kind, const Finding& finding, const QString& text) {
        SignalEvent made;
        made.kind = kind;
        made.frame = rate.frameAt(finding.seconds);
        if (const auto end = endFrames.find(finding.cueID); end != endFrames.end())
            made.endFrame = *end;
        made.verdict = Verdict::warn;
        made.text = text;
        if (made.frame <= lastFrame)
            list.push_back(std::move(made));
    };

    const QString dictionary = CaptionReport::dictionaryName(spelling);
    for (const Finding& finding : spelling.unknownWords)
        add(Kind::captionSpelling, finding,
            u"\"%1\" is not a word %2 knows."_s.arg(finding.word, dictionary));
    for (const Finding& finding : spelling.doubledWords)
        add(Kind::captionDoubled, finding,
            u"\"%1\": the same word twice running."_s.arg(finding.word));
    return EventOrder::byFrame(std::move(list));
}

std::vector<SignalEvent> events(const std::optional<FileReview>& review, const FileUrl& media,
                                const std::optional<VideoSummary>& video, double frameRate,
                                SpellChecker& checker)
{
    const auto captions = LoadedCaptions::forReview(review, media, video);
    if (!captions)
        return {};
    const auto spelling = CaptionSpelling::of(captions->track, checker, captions->language,
                                              CaptionSpelling::nameWords(media));
    if (!spelling)
        return {};
    return events(*spelling, captions->track, frameRate, video ? video->durationSeconds : 0);
}

} // namespace vantroque::CaptionEvents
